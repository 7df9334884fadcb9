#include "Steps.h"

#include "CallHooks.h"
#include "ProcessMemory.h"

#include "display/Histgram.h"
#include "support/ChildProcess.h"
#include "support/DropInput.h"
#include "support/PanelTools.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fstream>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr qint64 mebibyte = 1024 * 1024;

/// Paths come to the program as the toolkit makes text of their bytes.
QString pathIn(const QByteArray& bytes)
{
    return QFile::decodeName(bytes);
}

/// The lines of the debug log since the last step. They go on to standard error.
QStringList logLines;
QtMessageHandler previousHandler = nullptr;

void collect(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    logLines.append(text);
    previousHandler(type, context, text);
}

QByteArray stateOf(const QList<Histgram*>& histograms)
{
    QByteArray state;
    for (const Histgram* histogram : histograms) {
        state += histogram->fileText();
    }
    return state;
}

QByteArray stateOf(const A2DData& map)
{
    QByteArray state = QByteArray::number(map.xNum) + ' ' + QByteArray::number(map.yNum) +
                       map.headerLines.join(u'\n').toUtf8();
    for (const A2DRow& row : map.rows) {
        for (const double value : QList<double>{row.x, row.y, row.intensity, row.i0} + row.values) {
            state += QByteArray::number(value, 'g', 17) + ' ';
        }
    }
    return state;
}

/// What happens to a file in the middle of a step.
int change(const QByteArray& what, const QByteArray& path, const QByteArray& argument)
{
    if (what == "fails") {
        return argument == "EIO" ? EIO : ENOSPC;
    }
    if (what == "shrinks") {
        return ::truncate(path.constData(), argument.toLong()) == 0 ? 0 : EIO;
    }
    if (what == "grows") {
        std::ofstream(path.toStdString(), std::ios::app) << argument.toStdString();
    } else if (what == "isRemoved") {
        ::unlink(path.constData());
    } else if (what == "isReplaced") {
        ::rename(argument.constData(), path.constData());
    } else if (what == "isRewritten") {
        std::ofstream(path.toStdString()) << std::ifstream(argument.toStdString()).rdbuf();
    }
    return 0;
}

} // namespace

struct Steps::Kind {
    QByteArray name;
    qsizetype arguments;
    QJsonObject (Steps::*step)(const Arguments&);
};

const QList<Steps::Kind>& Steps::kinds()
{
    static const QList<Kind> all{
        {"map", 1, &Steps::map},
        {"spectrum", 1, &Steps::spectrum},
        {"drop", 1, &Steps::drop},
        {"folder", 1, &Steps::folder},
        {"panelMap", 2, &Steps::panelMap},
        {"calculate", 2, &Steps::calculate},
        {"bins", 2, &Steps::bins},
        {"write", 1, &Steps::write},
        {"file", 1, &Steps::file},
        {"make", 2, &Steps::make},
        {"littleMemory", 1, &Steps::littleMemory},
        {"fileSize", 1, &Steps::fileSize},
        {"nobody", 0, &Steps::nobody},
        {"remark", 1, &Steps::remark},
        {"happens", 5, &Steps::happens},
    };
    return all;
}

Steps::Steps()
{
    previousHandler = qInstallMessageHandler(collect);
    QObject::connect(&m_row, &AEPoint::newData, [this] { ++m_newData; });
    QObject::connect(&m_row, &AEPoint::newEnergy,
                     [this] { m_energies.append(m_row.Energy->text()); });
    QObject::connect(&m_spectrumRow, &AXafsFileSelect::foundNewEdge, [this] { ++m_newEdges; });
}

Steps::~Steps()
{
    qInstallMessageHandler(previousHandler);
}

bool Steps::run(QList<QByteArray> words)
{
    while (!words.isEmpty()) {
        const QByteArray name = words.takeFirst();
        const auto kind = std::find_if(kinds().begin(), kinds().end(),
                                       [&](const Kind& known) { return known.name == name; });
        if (kind == kinds().end() || words.size() < kind->arguments) {
            return false;
        }
        const Arguments arguments = words.first(kind->arguments);
        words.remove(0, kind->arguments);
        logLines.clear();
        QJsonObject left = (this->*kind->step)(arguments);
        left["step"] = QString::fromLatin1(name);
        left["log"] = QJsonArray::fromStringList(logLines);
        std::printf("%s\n", QJsonDocument(left).toJson(QJsonDocument::Compact).constData());
        std::fflush(stdout);
    }
    return true;
}

/// Runs @p read with as much memory as is allowed, and tells how much of it was
/// taken at most and how much was not given back.
template <typename Read>
QJsonObject Steps::measured(Read read)
{
    m_newData = 0;
    m_newEdges = 0;
    m_energies.clear();
    if (!tests::isUnderAddressSanitizer()) {
        memory::forgetPeak(); // takes long among terabytes of addresses
    }
    const qint64 before = memory::resident();
    {
        const memory::Limit limit(m_addressSpaceLeft);
        read();
    }
    return {{"peak", memory::peakResident() - before}, {"left", memory::resident() - before}};
}

QJsonObject Steps::map(const Arguments& path)
{
    const QString name = pathIn(path.first());
    const QJsonObject use = measured([&] { m_row.FileSelect->newFile(name); });
    QJsonObject left = mapState();
    left["peak"] = use["peak"];
    left["left"] = use["left"];
    return left;
}

QJsonObject Steps::spectrum(const Arguments& path)
{
    const QString name = pathIn(path.first());
    const QJsonObject use = measured([&] { m_spectrumRow.AFileSelect::newFile(name); });
    QJsonObject left = spectrumState();
    left["peak"] = use["peak"];
    left["left"] = use["left"];
    return left;
}

/// Drops a URL, given as bytes, on the energy row.
QJsonObject Steps::drop(const Arguments& url)
{
    measured([&] { tests::dropUrls(m_row.FileSelect, url.first() + "\r\n"); });
    return mapState();
}

/// Hands on all files of a folder as its list gives them.
QJsonObject Steps::folder(const Arguments& path)
{
    const QDir list(pathIn(path.first()));
    QJsonArray names;
    measured([&] {
        const auto entries = list.entryInfoList(QDir::AllEntries | QDir::System | QDir::Hidden |
                                                QDir::NoDotAndDotDot);
        for (const QFileInfo& entry : entries) {
            names.append(entry.fileName());
            m_row.FileSelect->newFile(entry.filePath());
            m_spectrumRow.AFileSelect::newFile(entry.filePath());
        }
    });
    QJsonObject left = mapState();
    left["names"] = names;
    left["valid"] = m_spectrumRow.valid;
    return left;
}

QJsonObject Steps::panelMap(const Arguments& rowAndPath)
{
    AEPoint* row = panel().EPoints.at(rowAndPath.first().toInt());
    QJsonObject left = measured([&] { row->FileSelect->newFile(pathIn(rowAndPath.last())); });
    left["loaded"] = row->loaded;
    left["xNum"] = row->xNum;
    left["yNum"] = row->yNum;
    left["rows"] = row->rows.size();
    return left;
}

/// A result of three points, all pixels different.
QJsonObject Steps::calculate(const Arguments& widthAndHeight)
{
    tests::prepareThreePoints(panel());
    const int width = widthAndHeight.first().toInt();
    const int height = widthAndHeight.last().toInt();
    for (int row = 0; row < 3; ++row) {
        QList<double> muts;
        for (int pixel = 0; pixel < width * height; ++pixel) {
            muts.append(1.0 + row + (row == 1 ? 0.001 * pixel : 0.0));
        }
        tests::setMap(panel(), row, muts);
        panel().EPoints.at(row)->xNum = width;
        panel().EPoints.at(row)->yNum = height;
    }
    panel().calcMap();
    return {{"rows", panel().BaseData.rows.size()},
            {"messages", QJsonArray::fromStringList(newMessages())}};
}

QJsonObject Steps::bins(const Arguments& alphaAndThickness)
{
    panel().ui.HgABoxes->setText(QString::fromLatin1(alphaAndThickness.first()));
    panel().ui.HgTBoxes->setText(QString::fromLatin1(alphaAndThickness.last()));
    panel().calcMap();
    return {{"alpha", panel().HistV->boxes}, {"thickness", panel().HistT->boxes}};
}

QJsonObject Steps::write(const Arguments& path)
{
    panel().ui.SaveFSelect->FileName->setText(pathIn(path.first()));
    const QByteArray before = panelState();
    QJsonObject left = measured([&] { panel().ui.WriteB->click(); });
    left["messages"] = QJsonArray::fromStringList(newMessages());
    left["isPanelUnchanged"] = panelState() == before;
    return left;
}

/// What is on the disk, which may be the child's own.
QJsonObject Steps::file(const Arguments& path)
{
    QFile there(pathIn(path.first()));
    if (!there.open(QIODevice::ReadOnly)) {
        return {{"exists", false}};
    }
    const QByteArray content = there.readAll();
    return {{"exists", true},
            {"size", content.size()},
            {"begin", QString::fromLatin1(content.first(std::min<qsizetype>(content.size(), 22)))},
            {"isWholeLines", content.endsWith('\n')},
            {"checksum", QString::fromLatin1(
                             QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex())}};
}

/// Makes a file of so many bytes.
QJsonObject Steps::make(const Arguments& pathAndSize)
{
    QFile file(pathIn(pathAndSize.first()));
    const QByteArray content(pathAndSize.last().toInt(), 'm');
    return {{"isMade", file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
                           file.flush()}};
}

QJsonObject Steps::littleMemory(const Arguments& mebibytes)
{
    m_addressSpaceLeft = mebibytes.first().toLongLong() * mebibyte;
    return {};
}

QJsonObject Steps::fileSize(const Arguments& bytes)
{
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = bytes.first() == "any" ? limit.rlim_max : bytes.first().toULong();
    ::setrlimit(RLIMIT_FSIZE, &limit);
    return {};
}

/// From here on the process has no rights of root.
QJsonObject Steps::nobody(const Arguments&)
{
    constexpr uid_t user = 65534;
    if (::geteuid() == 0 && ::setresuid(user, user, user) != 0) {
        return {{"isRoot", true}};
    }
    return {{"isRoot", ::geteuid() == 0}};
}

QJsonObject Steps::remark(const Arguments& text)
{
    qDebug().noquote() << QString::fromLatin1(text.first());
    return {};
}

/// Arranges what will happen: the call, its number with a "+" if it happens at
/// all later ones too, the path, the change and its argument.
QJsonObject Steps::happens(const Arguments& hook)
{
    const QHash<QByteArray, hooks::Call> calls{{"atOpen", hooks::Call::Open},
                                               {"atRead", hooks::Call::Read},
                                               {"atWrite", hooks::Call::Write},
                                               {"atClose", hooks::Call::Close}};
    const bool isRepeated = hook.at(1).endsWith('+');
    const int number = (isRepeated ? hook.at(1).chopped(1) : hook.at(1)).toInt();
    const QByteArray path = hook.at(2);
    hooks::at(
        calls.value(hook.at(0)), path.toStdString(), number, isRepeated,
        [path, what = hook.at(3), argument = hook.at(4)] { return change(what, path, argument); });
    return {{"isKnown", calls.contains(hook.at(0))}};
}

QJsonObject Steps::mapState() const
{
    qsizetype characters = 0;
    for (const QString& line : m_row.headerLines) {
        characters += line.size();
    }
    double sum = 0.0;
    for (const A2DRow& row : m_row.rows) {
        sum += row.intensity;
    }
    constexpr qint64 perLine = 64;
    const qint64 kept = m_row.rows.size() * qint64{sizeof(A2DRow)} + 2 * characters +
                        perLine * m_row.headerLines.size();
    return {{"loaded", m_row.loaded},
            {"newData", m_newData},
            {"energies", QJsonArray::fromStringList(m_energies)},
            {"xNum", m_row.xNum},
            {"yNum", m_row.yNum},
            {"rows", m_row.rows.size()},
            {"headerLines", m_row.headerLines.size()},
            {"kept", kept},
            {"sum", sum}};
}

QJsonObject Steps::spectrumState() const
{
    const QList<MutPoint>& points = m_spectrumRow.points;
    return {{"valid", m_spectrumRow.valid},
            {"newEdges", m_newEdges},
            {"fileName", m_spectrumRow.AMutE::fileName},
            {"points", points.size()},
            {"kept", points.size() * qint64{sizeof(MutPoint)}},
            {"firstEnergy", points.isEmpty() ? 0.0 : points.first().energy},
            {"lastMut", points.isEmpty() ? 0.0 : points.last().mut}};
}

/// All that a failed write must leave alone: result, histograms, rows, fields.
QByteArray Steps::panelState()
{
    QByteArray state = stateOf(panel().BaseData) + stateOf({panel().HistV, panel().HistT}) +
                       stateOf(panel().HistRatio) + stateOf(panel().HistDMut);
    for (const AEPoint* row : std::as_const(panel().EPoints)) {
        state += (row->loaded ? "loaded " : "empty ") + stateOf(*row);
    }
    const auto edits = panel().findChildren<QLineEdit*>();
    for (const QLineEdit* edit : edits) {
        state += edit->text().toUtf8() + '\n';
    }
    return QCryptographicHash::hash(state, QCryptographicHash::Sha1);
}

QStringList Steps::newMessages()
{
    const QStringList all = tests::messages(panel());
    const QStringList added = all.mid(std::min(m_messagesSeen, all.size()));
    m_messagesSeen = all.size();
    return added;
}

FourPs& Steps::panel()
{
    if (!m_panel) {
        m_panel = std::make_unique<FourPs>();
        tests::clearMessages(*m_panel);
    }
    return *m_panel;
}
