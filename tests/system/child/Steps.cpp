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

/// Decodes a path from its bytes as Qt does.
QString decodedPath(const QByteArray& bytes)
{
    return QFile::decodeName(bytes);
}

/// The lines of the debug log since the start of the current step. They are also printed to
/// standard error.
QStringList logLines;
QtMessageHandler previousHandler = nullptr;

void collectLogLine(QtMsgType type, const QMessageLogContext& context, const QString& text)
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

/// The action of a hook: makes the change @p what with @p argument to the file @p path.
/// Returns 0 if the hooked call may proceed, or the errno with which it fails.
int change(const QByteArray& what, const QByteArray& path, const QByteArray& argument)
{
    if (what == "fail") {
        return argument == "EIO" ? EIO : ENOSPC;
    }
    if (what == "shrink") {
        return ::truncate(path.constData(), argument.toLong()) == 0 ? 0 : EIO;
    }
    if (what == "grow") {
        std::ofstream(path.toStdString(), std::ios::app) << argument.toStdString();
    } else if (what == "remove") {
        ::unlink(path.constData());
    } else if (what == "replace") {
        ::rename(argument.constData(), path.constData());
    } else if (what == "rewrite") {
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
        {"limitMemory", 1, &Steps::limitMemory},
        {"limitFileSize", 1, &Steps::limitFileSize},
        {"dropRoot", 0, &Steps::dropRoot},
        {"logText", 1, &Steps::logText},
        {"hook", 5, &Steps::hook},
    };
    return all;
}

Steps::Steps()
{
    previousHandler = qInstallMessageHandler(collectLogLine);
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
        QJsonObject result = (this->*kind->step)(arguments);
        result["step"] = QString::fromLatin1(name);
        result["log"] = QJsonArray::fromStringList(logLines);
        std::printf("%s\n", QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
        std::fflush(stdout);
    }
    return true;
}

/// Runs @p read under the memory limit. Returns its peak memory use and the memory that is
/// still in use after it, both in bytes more than before the read.
template <typename Read>
QJsonObject Steps::measured(Read read)
{
    m_newData = 0;
    m_newEdges = 0;
    m_energies.clear();
    if (!tests::isUnderAddressSanitizer()) {
        memory::resetPeak(); // too slow under AddressSanitizer, which maps terabytes
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
    const QString name = decodedPath(path.first());
    const QJsonObject use = measured([&] { m_row.FileSelect->newFile(name); });
    QJsonObject result = mapState();
    result["peak"] = use["peak"];
    result["left"] = use["left"];
    return result;
}

QJsonObject Steps::spectrum(const Arguments& path)
{
    const QString name = decodedPath(path.first());
    const QJsonObject use = measured([&] { m_spectrumRow.AFileSelect::newFile(name); });
    QJsonObject result = spectrumState();
    result["peak"] = use["peak"];
    result["left"] = use["left"];
    return result;
}

/// Drops a URL, given as bytes, onto the energy row.
QJsonObject Steps::drop(const Arguments& url)
{
    measured([&] { tests::dropUrls(m_row.FileSelect, url.first() + "\r\n"); });
    return mapState();
}

/// Passes every entry of a folder, as QDir lists it, to the energy row and the spectrum row.
QJsonObject Steps::folder(const Arguments& path)
{
    const QDir list(decodedPath(path.first()));
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
    QJsonObject result = mapState();
    result["names"] = names;
    result["valid"] = m_spectrumRow.valid;
    return result;
}

QJsonObject Steps::panelMap(const Arguments& rowAndPath)
{
    AEPoint* row = panel().EPoints.at(rowAndPath.first().toInt());
    QJsonObject result =
        measured([&] { row->FileSelect->newFile(decodedPath(rowAndPath.last())); });
    result["loaded"] = row->loaded;
    result["xNum"] = row->xNum;
    result["yNum"] = row->yNum;
    result["rows"] = row->rows.size();
    return result;
}

/// Calculates a result with the three-point method. No two pixels of the result are equal.
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
    panel().ui.SaveFSelect->FileName->setText(decodedPath(path.first()));
    const QByteArray before = panelState();
    QJsonObject result = measured([&] { panel().ui.WriteB->click(); });
    result["messages"] = QJsonArray::fromStringList(newMessages());
    result["isPanelUnchanged"] = panelState() == before;
    return result;
}

/// Describes the contents of a file. The child does this because the test cannot read a file
/// on a disk that is mounted only for the child.
QJsonObject Steps::file(const Arguments& path)
{
    QFile file(decodedPath(path.first()));
    if (!file.open(QIODevice::ReadOnly)) {
        return {{"exists", false}};
    }
    const QByteArray content = file.readAll();
    return {{"exists", true},
            {"size", content.size()},
            {"begin", QString::fromLatin1(content.first(std::min<qsizetype>(content.size(), 22)))},
            {"isWholeLines", content.endsWith('\n')},
            {"checksum", QString::fromLatin1(
                             QCryptographicHash::hash(content, QCryptographicHash::Sha1).toHex())}};
}

/// Makes a file of the given size in bytes.
QJsonObject Steps::make(const Arguments& pathAndSize)
{
    QFile file(decodedPath(pathAndSize.first()));
    const QByteArray content(pathAndSize.last().toInt(), 'm');
    return {{"isMade", file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
                           file.flush()}};
}

QJsonObject Steps::limitMemory(const Arguments& mebibytes)
{
    m_addressSpaceLeft = mebibytes.first().toLongLong() * mebibyte;
    return {};
}

QJsonObject Steps::limitFileSize(const Arguments& bytes)
{
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = bytes.first() == "any" ? limit.rlim_max : bytes.first().toULong();
    ::setrlimit(RLIMIT_FSIZE, &limit);
    return {};
}

/// Drops root's permissions for the rest of the process.
QJsonObject Steps::dropRoot(const Arguments&)
{
    constexpr uid_t user = 65534;
    if (::geteuid() == 0 && ::setresuid(user, user, user) != 0) {
        return {{"isRoot", true}};
    }
    return {{"isRoot", ::geteuid() == 0}};
}

QJsonObject Steps::logText(const Arguments& text)
{
    qDebug().noquote() << QString::fromLatin1(text.first());
    return {};
}

/// Sets a hook. @p words are the call, its number (a "+" after the number repeats the change
/// at every later call), the path, the change and the argument of the change.
QJsonObject Steps::hook(const Arguments& words)
{
    const QHash<QByteArray, hooks::Call> calls{{"atOpen", hooks::Call::Open},
                                               {"atRead", hooks::Call::Read},
                                               {"atWrite", hooks::Call::Write},
                                               {"atClose", hooks::Call::Close}};
    const bool isRepeated = words.at(1).endsWith('+');
    const int number = (isRepeated ? words.at(1).chopped(1) : words.at(1)).toInt();
    const QByteArray path = words.at(2);
    hooks::at(calls.value(words.at(0)), path.toStdString(), number, isRepeated,
              [path, what = words.at(3), argument = words.at(4)] {
                  return change(what, path, argument);
              });
    return {{"isKnown", calls.contains(words.at(0))}};
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

/// A hash of the result, the histograms, the energy rows and the fields of the panel. A failed
/// write must not change them.
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
