#include "random/WrittenFiles.h"

#include "display/Histgram.h"
#include "panel/FourPs.h"
#include "rows/ARefFile.h"
#include "support/PanelTools.h"
#include "support/PlainResultWriter.h"
#include "support/TestFiles.h"

#include <QBuffer>
#include <QFileInfo>
#include <QTextEdit>

namespace tests
{

namespace
{

PlainValences valencesOf(const FourPs& panel)
{
    PlainValences valences;
    QStringList used;
    for (const ARefFile* row : panel.Refs.RefRows) {
        if (row->UseCB->isChecked()) {
            used.append(row->Valence->text());
            valences.validReferences += row->XafsFS->valid ? 1 : 0;
        }
    }
    valences.first = used.value(0);
    valences.second = used.value(1);
    if (used.size() < 2) {
        valences.validReferences = 0;
    }
    return valences;
}

/// The data lines of a written result map, one line per pixel.
QList<QByteArray> numberLines(const QByteArray& written, const A2DData& map)
{
    QList<QByteArray> lines = written.split('\n');
    const qsizetype heading = 2 + map.headerLines.join(u'\n').count(u'\n') +
                              (map.headerLines.isEmpty() ? 0 : 1) + (map.extended ? 1 : 0);
    lines.remove(0, std::min(heading, lines.size()));
    // Removes the blank line after each image line, and the empty end of split().
    lines.removeAll(QByteArray());
    return lines;
}

/// The numbers of a pixel in the order of its line in the file. The simple layout has four
/// numbers (the valence in the file is not included); the extended layout has x, y and the
/// columns that are true in @p wanted.
QList<double> numbersOf(const A2DRow& row, bool isExtended, const std::array<bool, 13>& wanted)
{
    if (!isExtended) {
        return {row.x, row.y, row.intensity, row.i0};
    }
    QList<double> numbers{row.x, row.y};
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (wanted.at(i)) {
            numbers.append(row.values.value(static_cast<qsizetype>(i), 0.0));
        }
    }
    return numbers;
}

/// The numbers in a line of the file, each formatted with six significant digits; "not a
/// number" for any other word. Omits the valence of the simple layout.
QStringList readNumbers(const QByteArray& line, bool isExtended)
{
    QStringList read;
    const QStringList words = QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts);
    for (const QString& word : words) {
        bool isNumber = false;
        // toDouble() also accepts nan and inf.
        const double number = word.toDouble(&isNumber);
        read.append(isNumber ? sixDigits(number) : QStringLiteral("not a number"));
    }
    if (!isExtended && read.size() > 3) {
        read.removeAt(3); // the valence; the map does not store it
    }
    return read;
}

/// Whether the numbers of a written result map, parsed again, are the numbers of @p map.
bool hasSameNumbers(const QByteArray& written, const A2DData& map,
                    const std::array<bool, 13>& wanted)
{
    const QList<QByteArray> lines = numberLines(written, map);
    if (lines.size() != qsizetype{map.xNum} * map.yNum) {
        return false;
    }
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QStringList expected;
        const QList<double> numbers = numbersOf(map.rows.value(i), map.extended, wanted);
        for (const double number : numbers) {
            expected.append(sixDigits(number));
        }
        if (readNumbers(lines.at(i), map.extended) != expected) {
            return false;
        }
    }
    return true;
}

/// The expected text of a histogram file.
QByteArray histogramText(const analysis::HistogramCounts& counts)
{
    QString text;
    const auto line = [&](int i, int count) {
        text += QStringLiteral("%1 %2 %3  %4\n")
                    .arg(counts.step * i + counts.minV)
                    .arg(counts.step * (i + 0.5) + counts.minV)
                    .arg(counts.step * (i + 1) + counts.minV)
                    .arg(count);
    };
    line(-1, counts.under);
    for (int i = 0; i < counts.boxes; ++i) {
        line(i, counts.bins.at(i));
    }
    line(counts.boxes, counts.over);
    return text.toUtf8();
}

} // namespace

void WrittenFiles::ignoreOldMessages()
{
    m_messagesBefore = m_panel.ui.Message->toPlainText().size();
}

QString WrittenFiles::check()
{
    const QString path = m_panel.ui.SaveFSelect->fileText();
    const QString refusal = QStringLiteral("Can't open the file [%1]").arg(path).simplified();
    const QString messages = m_panel.ui.Message->toPlainText().mid(m_messagesBefore);
    const bool isRefused = messages.split(u'\n').contains(refusal);
    ignoreOldMessages();
    const QFileInfo file(path);
    if (isRefused) {
        const bool isPossible = !path.isEmpty() && file.isFile() && file.isWritable();
        return isPossible ? QStringLiteral("a write to a writable file was refused") : QString();
    }
    if (!file.exists()) {
        return QStringLiteral("no file was written, and no error was reported");
    }
    if (!file.isFile()) {
        return {}; // a device or pipe cannot be read again
    }
    const QByteArray written = readFile(path);
    if (written != expectedMap()) {
        return QStringLiteral("the written file differs from the result");
    }
    constexpr qint64 fewPixels = 10000; // only small maps, because parsing is slower than writing
    const A2DData& map = m_panel.BaseData;
    if (qint64{map.xNum} * map.yNum <= fewPixels &&
        !hasSameNumbers(written, map, wantedColumns())) {
        return QStringLiteral("the numbers of the written file differ from the result");
    }
    const QString first = checkHistogram(path, 0);
    return first.isEmpty() ? checkHistogram(path, 1) : first;
}

std::array<bool, 13> WrittenFiles::wantedColumns() const
{
    const auto& ui = m_panel.ui;
    const std::array<const QAbstractButton*, 13> boxes{
        ui.RecRatio1, ui.RecRatio2,  ui.RecRatio3, ui.RecRatio4, ui.RecDMut1,
        ui.RecDMut2,  ui.RecDMut3,   ui.RecDMut4,  ui.RecMut0,   ui.RecC1,
        ui.RecC2,     ui.RecValence, ui.RecAmount};
    std::array<bool, 13> wanted{};
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        wanted.at(i) = boxes.at(i)->isChecked();
    }
    return wanted;
}

QByteArray WrittenFiles::expectedMap() const
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    writePlainResultMap(buffer, m_panel.BaseData, valencesOf(m_panel), wantedColumns());
    return buffer.data();
}

// The program only overwrites existing histogram files; a missing file stays missing.
QString WrittenFiles::checkHistogram(const QString& path, int which) const
{
    const QFileInfo result(path);
    const QString name = which == 0 ? QStringLiteral("HGAlpha") : QStringLiteral("HGThick");
    const QFileInfo file(QFileInfo(path).canonicalPath() + u'/' + result.completeBaseName() + u'_' +
                         name + u'.' + result.suffix());
    if (!file.isFile() || !file.isWritable()) {
        return {};
    }
    const analysis::HistogramCounts& counts = which == 0 ? *m_panel.HistV : *m_panel.HistT;
    return readFile(file.filePath()) == histogramText(counts)
               ? QString()
               : QStringLiteral("the written file differs from the histogram: ") + name;
}

} // namespace tests
