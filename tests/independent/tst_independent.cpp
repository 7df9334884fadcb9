// Replays the cases of the independent model on a real panel. Every text, state and
// written file must be equal to the model's. The README in this folder describes the
// cases.

#include "display/Histgram.h"
#include "panel/FourPs.h"
#include "rows/AEPoint.h"
#include "rows/AFileSelect.h"
#include "rows/ARefFile.h"
#include "rows/AXafsFileSelect.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>
#include <QMap>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>

#include <bit>
#include <cmath>
#include <functional>
#include <memory>

using data::VictoreenLine;

namespace
{

using State = QMap<QString, QString>;

/// The folder of the cases: the environment variable AELK_CASES or, if it is not set, the
/// folder of the committed cases.
QString caseFolder()
{
    return qEnvironmentVariable("AELK_CASES", QStringLiteral(AELK_CASES));
}

QJsonObject readJson(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    return QJsonDocument::fromJson(file.readAll()).object();
}

/// The content of a file in a case. A case stores the content as a text or as hexadecimal
/// digits.
QByteArray contentOf(const QJsonValue& value)
{
    return value.isString()
               ? value.toString().toUtf8()
               : QByteArray::fromHex(value.toObject().value("hex").toString().toLatin1());
}

/// FNV-1a hash (Fowler, Noll and Vo) over 64-bit words. The cases contain the first 8
/// hexadecimal digits of a hash.
class Hash
{
public:
    void add(quint64 word) { m_state = (m_state ^ word) * 0x100000001b3U; }
    void add(double value)
    {
        add(std::isnan(value) ? quint64{0x7ff8000000000000U} : std::bit_cast<quint64>(value));
    }
    QString text() const
    {
        return QStringLiteral("%1").arg(m_state, 16, 16, QLatin1Char('0')).left(8);
    }

private:
    quint64 m_state = 0xcbf29ce484222325U;
};

QString hashOf(std::initializer_list<double> values)
{
    Hash hash;
    for (const double value : values) {
        hash.add(value);
    }
    return hash.text();
}

QString hashOf(const QString& text)
{
    Hash hash;
    for (const char byte : text.toUtf8()) {
        hash.add(quint64{static_cast<unsigned char>(byte)});
    }
    return hash.text();
}

/// The limits and counts of all histograms in one list.
QList<double> numbersOf(const QList<Histgram*>& histograms)
{
    QList<double> numbers;
    for (const Histgram* h : histograms) {
        numbers << h->minV << h->maxV << h->step << h->under << h->over << h->total;
        for (const int count : h->bins) {
            numbers << count;
        }
    }
    return numbers;
}

QString countAndHash(const QList<double>& numbers)
{
    Hash hash;
    for (const double number : numbers) {
        hash.add(number);
    }
    return QStringLiteral("%1 %2").arg(numbers.size()).arg(hash.text());
}

/// Formats a number with 17 significant digits, for messages about differences.
QString allDigits(double value)
{
    return QString::number(value, 'g', 17);
}

/// A panel with its own temporary folder that performs the actions of a case.
class Replay
{
public:
    explicit Replay(const QJsonObject& caseObject);
    ~Replay();

    /// Runs the case. Returns a description of the first difference between the panel and
    /// the model; empty if there is none.
    QString run();

private:
    using Operation = std::function<void(const QJsonArray&)>;

    QString local(const QString& text) const;
    QStringList localList(const QJsonValue& list) const;
    void writeFile(const QString& path, const QByteArray& content);
    QMap<QString, Operation> operations();

    QWidget* widget(const QString& field) const;
    QWidget* findWidget(const QString& field) const;
    AFileSelect* fileRow(const QString& name) const;
    QLineEdit* edit(const QString& field) const;
    QAbstractButton* button(const QString& name) const;
    AEPoint* energyRow(const QString& field) const;

    void newFile(const QJsonArray& action);
    void callSlot(QObject* object, const QString& name, const QJsonValue& value);
    void setBase(const QJsonObject& values);

    State state() const;
    void addTexts(State& s) const;
    void addButtons(State& s) const;
    void addSpectra(State& s) const;
    void addMap(State& s, const QString& name, const A2DData& map) const;
    void addResults(State& s) const;
    void addFit(State& s) const;
    QString details(const QString& field) const;

    QString check(const QJsonObject& expected);
    QString compareState() const;
    QString compareMessages(const QStringList& expected);
    QString compareFiles() const;
    QStringList messages() const;

    QJsonObject m_case;
    QTemporaryDir m_dir;
    QString m_oldCurrent;
    std::unique_ptr<FourPs> m_panel;
    State m_expected;
    QMap<QString, QByteArray> m_files; // expected files, by path
    QStringList m_messageTable;
    qsizetype m_said = 0;
    QString m_trouble;
    mutable QHash<QString, QWidget*> m_found; // by field name
};

Replay::Replay(const QJsonObject& caseObject)
    : m_case(caseObject)
    , m_oldCurrent(QDir::currentPath())
{
    for (const QJsonValue& folder : m_case.value("folders").toArray()) {
        QDir().mkpath(local(folder.toString()));
    }
    const QJsonObject files = m_case.value("files").toObject();
    for (auto it = files.begin(); it != files.end(); ++it) {
        writeFile(local(it.key()), contentOf(it.value()));
    }
    for (const QJsonValue& text : m_case.value("messages").toArray()) {
        m_messageTable.append(local(text.toString()));
    }
    QDir::setCurrent(local("@/cwd"));
    m_panel = std::make_unique<FourPs>();
}

Replay::~Replay()
{
    qDeleteAll(m_panel->DispMuts); // the program deletes them only in removeAFile()
    delete m_panel->LCFMut;        // the program deletes it only in the next fit
    m_panel.reset();
    QDir::setCurrent(m_oldCurrent);
}

/// Replaces "@" by the path of the temporary folder.
QString Replay::local(const QString& text) const
{
    QString result = text;
    return result.replace(QLatin1Char('@'), m_dir.path());
}

QStringList Replay::localList(const QJsonValue& list) const
{
    QStringList result;
    for (const QJsonValue& text : list.toArray()) {
        result.append(local(text.toString()));
    }
    return result;
}

void Replay::writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    QDir().mkpath(QFileInfo(path).path());
    if (file.open(QIODevice::WriteOnly)) {
        file.write(content);
    }
    m_files[path] = content;
}

QString Replay::run()
{
    const QJsonObject start = readJson(caseFolder() + "/start.json");
    const QJsonObject startState = start.value("state").toObject();
    for (auto it = startState.begin(); it != startState.end(); ++it) {
        m_expected[it.key()] = it.value().toString();
    }
    QString difference = compareState() + compareMessages(localList(start.value("messages")));
    if (!difference.isEmpty()) {
        return "at the start\n" + difference;
    }
    const QMap<QString, Operation> known = operations();
    int number = 0;
    for (const QJsonValue& step : m_case.value("steps").toArray()) {
        ++number;
        const QJsonObject object = step.toObject();
        const QJsonArray action = object.value("do").toArray();
        const Operation operation = known.value(action.at(0).toString());
        const QString title =
            QStringLiteral("action %1: %2\n")
                .arg(number)
                .arg(QString::fromUtf8(
                    QJsonDocument(action).toJson(QJsonDocument::Compact).left(300)));
        if (!operation) {
            return title + "  unknown action\n";
        }
        operation(action);
        difference = check(object);
        if (!difference.isEmpty()) {
            return title + difference;
        }
    }
    return {};
}

QMap<QString, Replay::Operation> Replay::operations()
{
    return {
        {"load", [this](const QJsonArray& a) { newFile(a); }},
        {"loads",
         [this](const QJsonArray& a) {
             fileRow(a.at(1).toString())->newFiles(localList(a.at(2)));
         }},
        {"clear", [this](const QJsonArray& a) { fileRow(a.at(1).toString())->ClearB->click(); }},
        {"type",
         [this](const QJsonArray& a) {
             QLineEdit* field = edit(a.at(1).toString());
             field->setText(local(a.at(2).toString()));
             Q_EMIT field->editingFinished();
         }},
        {"text",
         [this](const QJsonArray& a) {
             edit(a.at(1).toString())->setText(local(a.at(2).toString()));
         }},
        {"click", [this](const QJsonArray& a) { button(a.at(1).toString())->click(); }},
        {"check",
         [this](const QJsonArray& a) { button(a.at(1).toString())->setChecked(a.at(2).toBool()); }},
        {"setUse",
         [this](const QJsonArray& a) {
             m_panel->Refs.RefRows.at(a.at(1).toInt() - 1)->setUse(a.at(2).toBool());
         }},
        {"slot",
         [this](const QJsonArray& a) { callSlot(m_panel.get(), a.at(1).toString(), a.at(2)); }},
        {"rowslot",
         [this](const QJsonArray& a) {
             callSlot(m_panel->EPoints.at(a.at(1).toInt() - 1), a.at(2).toString(), a.at(3));
         }},
        {"combo",
         [this](const QJsonArray& a) {
             m_panel->findChild<QComboBox*>("SelectedFs")->setCurrentIndex(a.at(1).toInt());
         }},
        {"base", [this](const QJsonArray& a) { setBase(a.at(1).toObject()); }},
        {"file",
         [this](const QJsonArray& a) { writeFile(local(a.at(1).toString()), contentOf(a.at(2))); }},
        {"remove",
         [this](const QJsonArray& a) {
             const QString path = local(a.at(1).toString());
             QFile::remove(path);
             m_files.remove(path);
         }},
        {"mkdir", [this](const QJsonArray& a) { QDir().mkpath(local(a.at(1).toString())); }},
    };
}

/// Calls the slot of the base class explicitly, because spectrum rows have a slot with the
/// same name.
void Replay::newFile(const QJsonArray& action)
{
    fileRow(action.at(1).toString())->AFileSelect::newFile(local(action.at(2).toString()));
}

/// Calls a slot by name. A MouseC* argument is a null pointer. Any other argument is
/// @p value, converted to the argument's type.
void Replay::callSlot(QObject* object, const QString& name, const QJsonValue& value)
{
    const QByteArray slot = name.toLatin1();
    const char* member = slot.constData();
    bool done = false;
    if (object->metaObject()->indexOfSlot(slot + "(MouseC*)") >= 0) {
        MouseC* nowhere = nullptr;
        done = QMetaObject::invokeMethod(object, member, Q_ARG(MouseC*, nowhere));
    } else if (value.isUndefined()) {
        done = QMetaObject::invokeMethod(object, member);
    } else if (value.isBool()) {
        done = QMetaObject::invokeMethod(object, member, Q_ARG(bool, value.toBool()));
    } else if (value.isArray()) {
        done = QMetaObject::invokeMethod(object, member, Q_ARG(QStringList, localList(value)));
    } else if (value.isString()) {
        done = QMetaObject::invokeMethod(object, member, Q_ARG(QString, local(value.toString())));
    } else if (object->metaObject()->indexOfSlot(slot + "(int)") >= 0) {
        done = QMetaObject::invokeMethod(object, member, Q_ARG(int, value.toInt()));
    } else {
        done = QMetaObject::invokeMethod(object, member, Q_ARG(double, value.toDouble()));
    }
    if (!done) {
        m_trouble = "  no such slot: " + name + "\n";
    }
}

void Replay::setBase(const QJsonObject& values)
{
    A2DData& base = m_panel->BaseData;
    base.clear();
    base.extended = values.value("extended").toBool();
    base.xNum = values.value("size").toArray().at(0).toInt();
    base.yNum = values.value("size").toArray().at(1).toInt();
    base.headerLines = localList(values.value("comments"));
    for (const QJsonValue& numbers : values.value("rows").toArray()) {
        const QJsonArray list = numbers.toArray();
        A2DRow row{list.at(0).toDouble(),
                   list.at(1).toDouble(),
                   list.at(2).toDouble(),
                   list.at(3).toDouble(),
                   {}};
        for (qsizetype i = 4; i < list.size(); ++i) {
            row.values.append(list.at(i).toDouble());
        }
        base.rows.append(row);
    }
}

// Field names: "Energy.3" is a widget of the third energy row; "Row3.file", "Ref2.dE" and
// "Target.dE" are widgets of a file row; "Ref1.RatioDisp" is a widget of a reference row. A
// name without a dot is the object name of the widget.

AEPoint* Replay::energyRow(const QString& field) const
{
    return m_panel->EPoints.at(field.section(QLatin1Char('.'), 1).toInt() - 1);
}

AFileSelect* Replay::fileRow(const QString& name) const
{
    const int n = name.right(1).toInt() - 1;
    if (name.startsWith("Row")) {
        return m_panel->EPoints.at(n)->FileSelect;
    }
    if (name.startsWith("Ref")) {
        return m_panel->Refs.RefRows.at(n)->XafsFS;
    }
    const QMap<QString, QString> names{{"Target", "TargetFile"},
                                       {"Save", "SaveFSelect"},
                                       {"Disp", "DispFSelect"},
                                       {"Multi", "MultiFiles"}};
    return m_panel->findChild<AFileSelect*>(names.value(name));
}

QWidget* Replay::widget(const QString& field) const
{
    QWidget*& found = m_found[field];
    if (!found) {
        found = findWidget(field);
    }
    return found;
}

QWidget* Replay::findWidget(const QString& field) const
{
    const QString first = field.section(QLatin1Char('.'), 0, 0);
    const QString second = field.section(QLatin1Char('.'), 1);
    if (second == "file") {
        return fileRow(first)->FileName;
    }
    if (second == "dE") {
        return fileRow(first)->dE;
    }
    if (first.startsWith("Ref") && !second.isEmpty()) {
        ARefFile* row = m_panel->Refs.RefRows.at(first.right(1).toInt() - 1);
        const QMap<QString, QWidget*> widgets{{"Valence", row->Valence},
                                              {"UseCB", row->UseCB},
                                              {"RatioDisp", row->RatioDisp},
                                              {"AmountDisp", row->AmountDisp}};
        return widgets.value(second);
    }
    if (second.isEmpty()) {
        return m_panel->findChild<QWidget*>(first);
    }
    AEPoint* row = energyRow(field);
    const QMap<QString, QWidget*> widgets{{"Energy", row->Energy}, {"Mut1", row->Mut1},
                                          {"Mut2", row->Mut2},     {"Mut3", row->Mut3},
                                          {"Mut4", row->Mut4},     {"MutT", row->MutT},
                                          {"UseCB", row->UseCB},   {"VPointCB", row->VPointCB},
                                          {"LCFCB", row->LCFCB},   {"ShowMapB", row->ShowMapB}};
    return widgets.value(first);
}

QLineEdit* Replay::edit(const QString& field) const
{
    return qobject_cast<QLineEdit*>(widget(field));
}

QAbstractButton* Replay::button(const QString& name) const
{
    return qobject_cast<QAbstractButton*>(widget(name));
}

// The state of the panel in the format of the cases. Fields with an empty text are omitted.

State Replay::state() const
{
    State s;
    addTexts(s);
    addButtons(s);
    addSpectra(s);
    addResults(s);
    for (int row = 1; row <= m_panel->EPoints.size(); ++row) {
        const QString name = QStringLiteral("Row%1").arg(row);
        const AEPoint* point = m_panel->EPoints.at(row - 1);
        s[name + ".loaded"] = point->loaded ? "yes" : "";
        addMap(s, name, *point);
    }
    s.removeIf([](const auto& entry) { return entry.value().isEmpty(); });
    return s;
}

void Replay::addTexts(State& s) const
{
    QStringList fields{"EdgeE",        "PreEEndDE", "PostEStartDE", "HgAFrom",
                       "HgATo",        "HgABoxes",  "HgTFrom",      "HgTTo",
                       "HgTBoxes",     "CalcRes",   "LCFRes",       "TargetDMut",
                       "MultiEnergys", "Save.file", "Disp.file",    "Multi.file"};
    for (const char* name : {"Ref1", "Ref2", "Ref3", "Ref4", "Target"}) {
        fields << QString(name) + ".file" << QString(name) + ".dE";
    }
    for (int n = 1; n <= 4; ++n) {
        for (const char* name : {"Valence", "RatioDisp", "AmountDisp"}) {
            fields << QStringLiteral("Ref%1.%2").arg(n).arg(name);
        }
    }
    for (int n = 1; n <= 8; ++n) {
        fields << QStringLiteral("Row%1.file").arg(n);
        for (const char* cell : {"Energy", "Mut1", "Mut2", "Mut3", "Mut4", "MutT"}) {
            fields << QStringLiteral("%1.%2").arg(cell).arg(n);
        }
    }
    for (const QString& field : fields) {
        s[field] = edit(field)->text();
    }
    const auto* selected = m_panel->findChild<QComboBox*>("SelectedFs");
    QStringList items;
    for (int i = 0; i < selected->count(); ++i) {
        items << selected->itemText(i);
    }
    s["SelectedFs"] = items.join(QLatin1Char('\n'));
    s["SelectedFs.current"] =
        selected->currentIndex() < 0 ? QString() : QString::number(selected->currentIndex());
}

void Replay::addButtons(State& s) const
{
    QStringList names{"radioButton",
                      "TypeNonEquiv",
                      "TypeTMKisExact",
                      "TypeTMKisLS",
                      "SubPreEforRef",
                      "SubPostEforRef",
                      "SubPreEforTarget",
                      "SubPostEforTarget",
                      "NonEquivBGLinear",
                      "NonEquivBGVic",
                      "HgAAuto",
                      "HgTAuto",
                      "RecValence",
                      "RecAmount",
                      "RecMut0",
                      "RecC1",
                      "RecC2"};
    for (int n = 1; n <= 4; ++n) {
        names << QStringLiteral("RecRatio%1").arg(n) << QStringLiteral("RecDMut%1").arg(n)
              << QStringLiteral("Ref%1.UseCB").arg(n);
    }
    for (int n = 1; n <= 8; ++n) {
        for (const char* box : {"UseCB", "VPointCB", "LCFCB"}) {
            names << QStringLiteral("%1.%2").arg(box).arg(n);
        }
    }
    for (const QString& name : names) {
        s[name] = button(name)->isChecked() ? "on" : "";
    }
}

void Replay::addSpectra(State& s) const
{
    for (int n = 0; n < m_panel->XafsFiles.size(); ++n) {
        const AMutE& spectrum = *m_panel->XafsFiles.at(n);
        const QString name = n == 4 ? QStringLiteral("Target") : QStringLiteral("Ref%1").arg(n + 1);
        s[name + ".valid"] = spectrum.valid ? "yes" : "";
        if (spectrum.points.isEmpty()) {
            continue;
        }
        Hash points;
        for (const MutPoint& point : spectrum.points) {
            points.add(point.angle);
            points.add(point.energy);
            points.add(point.mut);
        }
        s[name + ".points"] =
            QStringLiteral("%1 %2").arg(spectrum.points.size()).arg(points.text());
        s[name + ".extremes"] = hashOf({spectrum.minAngle, spectrum.maxAngle, spectrum.minEnergy,
                                        spectrum.maxEnergy, spectrum.minMut, spectrum.maxMut});
        const VictoreenLine& pre = spectrum.preLine;
        const VictoreenLine& post = spectrum.postLine;
        s[name + ".lines"] = hashOf({pre.c, pre.a, pre.b, post.c, post.a, post.b});
    }
}

void Replay::addMap(State& s, const QString& name, const A2DData& map) const
{
    if (map.xNum != 0 || map.yNum != 0) {
        s[name + ".size"] = QStringLiteral("%1 x %2").arg(map.xNum).arg(map.yNum);
    }
    if (!map.rows.isEmpty()) {
        Hash rows;
        Hash lists;
        bool hasLists = false;
        for (const A2DRow& row : map.rows) {
            rows.add(row.x);
            rows.add(row.y);
            rows.add(row.intensity);
            rows.add(row.i0);
            hasLists = hasLists || !row.values.isEmpty();
            lists.add(static_cast<double>(row.values.size()));
            for (const double value : row.values) {
                lists.add(value);
            }
        }
        if (hasLists) {
            s[name + ".values"] = QStringLiteral("%1 %2").arg(map.rows.size()).arg(lists.text());
        }
        s[name + ".rows"] = QStringLiteral("%1 %2").arg(map.rows.size()).arg(rows.text());
    }
    if (!map.headerLines.isEmpty()) {
        QString lines = map.headerLines.join(QLatin1Char('\n'));
        s[name + ".comments"] = hashOf(lines.replace(m_dir.path(), QStringLiteral("@")));
    }
}

void Replay::addResults(State& s) const
{
    addMap(s, "BaseData", m_panel->BaseData);
    s["BaseData.extended"] = m_panel->BaseData.extended ? "yes" : "";
    s["TargetV"] = m_panel->TargetV == 0.0 ? QString() : hashOf({m_panel->TargetV});
    s["TargetT"] = m_panel->TargetT == 0.0 ? QString() : hashOf({m_panel->TargetT});
    const QMap<QString, Histgram*> histograms{{"HistV", m_panel->HistV}, {"HistT", m_panel->HistT}};
    for (auto it = histograms.begin(); it != histograms.end(); ++it) {
        const Histgram& h = *it.value();
        if (!h.bins.isEmpty() || h.under != 0 || h.over != 0) {
            s[it.key()] = QStringLiteral("%1 %2 < %3 > %4 highest %5")
                              .arg(hashOf({h.minV, h.maxV, h.step}))
                              .arg(h.bins.size())
                              .arg(h.under)
                              .arg(h.over)
                              .arg(h.total);
        }
    }
    const QMap<QString, QList<Histgram*>> perReference{{"HistRatio", m_panel->HistRatio},
                                                       {"HistDMut", m_panel->HistDMut}};
    for (auto it = perReference.begin(); it != perReference.end(); ++it) {
        bool used = false;
        for (const Histgram* h : it.value()) {
            used = used || !h->bins.isEmpty() || h->under != 0 || h->over != 0;
        }
        if (used) {
            s[it.key()] = countAndHash(numbersOf(it.value()));
        }
    }
    addFit(s);
}

void Replay::addFit(State& s) const
{
    if (m_panel->LCFMut) {
        const AMutE& fit = *m_panel->LCFMut;
        Hash points;
        for (const MutPoint& point : fit.points) {
            points.add(point.angle);
            points.add(point.energy);
            points.add(point.mut);
        }
        s["LCFMut"] = QStringLiteral("%1 %2").arg(fit.points.size()).arg(points.text());
        s["LCFMut.valid"] = fit.valid ? "yes" : "";
        s["LCFMut.fields"] =
            hashOf({fit.minAngle, fit.maxAngle, fit.minEnergy, fit.maxEnergy, fit.minMut,
                    fit.maxMut, fit.preEdgeEnd, fit.postEdgeStart, fit.dE, fit.preLine.c,
                    fit.preLine.a, fit.preLine.b, fit.postLine.c, fit.postLine.a, fit.postLine.b});
    }
    if (!m_panel->LCFvs4PS.isEmpty()) {
        Hash points;
        for (const LCFPoint& point : m_panel->LCFvs4PS) {
            points.add(point.fourPsA);
            points.add(point.fourPsValence);
            points.add(point.lcfA);
            points.add(point.lcfValence);
            points.add(static_cast<double>(point.color));
        }
        s["LCFvs4PS"] = QStringLiteral("%1 %2").arg(m_panel->LCFvs4PS.size()).arg(points.text());
    }
    s["LCFColor"] = m_panel->LCFColor == 0 ? QString() : QString::number(m_panel->LCFColor);
}

/// Numbers with 17 significant digits each, in one line of text.
QString lineOf(const QList<double>& numbers)
{
    QStringList texts;
    for (const double number : numbers) {
        texts << allDigits(number);
    }
    return texts.join(QLatin1Char(' '));
}

QStringList linesOf(const AMutE& spectrum)
{
    QStringList lines;
    for (const MutPoint& point : spectrum.points) {
        lines << lineOf({point.angle, point.energy, point.mut});
    }
    for (const VictoreenLine& line : {spectrum.preLine, spectrum.postLine}) {
        lines << "line " + lineOf({line.c, line.a, line.b});
    }
    return lines;
}

/// The numbers from which the hash of a field was calculated, for messages about
/// differences.
QString Replay::details(const QString& field) const
{
    const QString name = field.section(QLatin1Char('.'), 0, 0);
    QStringList lines;
    if (field.endsWith(".rows") || field.endsWith(".values")) {
        const A2DData& map = name == "BaseData" ? m_panel->BaseData
                                                : *m_panel->EPoints.at(name.right(1).toInt() - 1);
        for (const A2DRow& row : map.rows.first(std::min<qsizetype>(map.rows.size(), 40))) {
            lines << lineOf(field.endsWith(".values")
                                ? row.values
                                : QList<double>{row.x, row.y, row.intensity, row.i0});
        }
    } else if (field.endsWith(".points") || field.endsWith(".lines")) {
        lines = linesOf(*m_panel->XafsFiles.at(name == "Target" ? 4 : name.right(1).toInt() - 1));
    } else if (name == "LCFMut" && m_panel->LCFMut) {
        lines = linesOf(*m_panel->LCFMut);
    } else if (name == "LCFvs4PS") {
        for (const LCFPoint& point : m_panel->LCFvs4PS) {
            lines << lineOf({point.fourPsA, point.fourPsValence, point.lcfA, point.lcfValence,
                             static_cast<double>(point.color)});
        }
    } else if (name == "HistRatio" || name == "HistDMut") {
        const bool ratios = name == "HistRatio";
        for (Histgram* h : ratios ? m_panel->HistRatio : m_panel->HistDMut) {
            lines << lineOf(numbersOf({h}));
        }
    }
    return lines.isEmpty() ? QString() : "      " + lines.join("\n      ") + "\n";
}

QString Replay::check(const QJsonObject& expected)
{
    const QJsonObject changes = expected.value("set").toObject();
    for (auto it = changes.begin(); it != changes.end(); ++it) {
        if (it.value().toString().isEmpty()) {
            m_expected.remove(it.key());
        } else {
            m_expected[it.key()] = local(it.value().toString());
        }
    }
    const QJsonObject files = expected.value("files").toObject();
    for (auto it = files.begin(); it != files.end(); ++it) {
        m_files[local(it.key())] = contentOf(it.value());
    }
    QStringList said;
    for (const QJsonValue& index : expected.value("say").toArray()) {
        said << m_messageTable.at(index.toInt());
    }
    return m_trouble + compareState() + compareMessages(said) + compareFiles();
}

QString Replay::compareState() const
{
    const State found = state();
    QStringList fields = m_expected.keys() + found.keys();
    fields.removeDuplicates();
    fields.sort();
    QString difference;
    for (const QString& field : fields) {
        const QString expected = m_expected.value(field);
        const QString got = found.value(field);
        if (expected != got) {
            difference +=
                QStringLiteral("  %1: expected \"%2\", got \"%3\"\n").arg(field, expected, got) +
                details(field);
        }
    }
    return difference;
}

QStringList Replay::messages() const
{
    const QString text = m_panel->findChild<QTextEdit*>("Message")->toPlainText();
    QStringList lines = text.split(QLatin1Char('\n'));
    lines.removeLast(); // the empty text after the last line feed
    return lines;
}

QString Replay::compareMessages(const QStringList& expected)
{
    const QStringList all = messages();
    const QStringList said = all.mid(m_said);
    m_said = all.size();
    if (said == expected) {
        return {};
    }
    return QStringLiteral("  messages: expected %1\n      %2\n    got %3\n      %4\n")
        .arg(QString::number(expected.size()), expected.join("\n      "),
             QString::number(said.size()), said.join("\n      "));
}

QString Replay::compareFiles() const
{
    QString difference;
    QStringList found;
    QDirIterator entries(m_dir.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = entries.next();
        found << path;
        if (!m_files.contains(path)) {
            difference += "  unexpected file " + path + "\n";
            continue;
        }
        QFile file(path);
        const QByteArray content = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        if (content != m_files.value(path)) {
            difference += QStringLiteral("  file %1: expected\n%2\n  got\n%3\n")
                              .arg(path, QString::fromUtf8(m_files.value(path).left(4000)),
                                   QString::fromUtf8(content.left(4000)));
        }
    }
    if (found.size() < m_files.size()) {
        difference += "  missing files\n";
    }
    return difference;
}

} // namespace

class tst_independent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void panelMatchesModel_data();
    void panelMatchesModel();
};

void tst_independent::panelMatchesModel_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(caseFolder());
    const QStringList names = folder.entryList({"*.json"}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        if (name != "start.json") {
            QTest::newRow(qPrintable(name)) << folder.filePath(name);
        }
    }
}

void tst_independent::panelMatchesModel()
{
    QFETCH(QString, path);
    const QJsonObject caseObject = readJson(path);
    QVERIFY2(!caseObject.value("steps").toArray().isEmpty(), "not a case");
    const QString difference = Replay(caseObject).run();
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
}

QTEST_MAIN(tst_independent)
#include "tst_independent.moc"
