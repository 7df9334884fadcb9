#include "support/PlainMapReader.h"

#include "data/A2DData.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringList>
#include <QTextStream>

namespace tests
{
namespace
{

struct PlainState {
    int kind = 2;
    int i0Column = 0;
    int iColumn = 0;
};

void takeComment(const QString& line, const QStringList& tokens, PlainState& state, A2DData& map,
                 const data::EnergyHandler& energyFound)
{
    map.headerLines.append(line);
    const QString keyword = tokens.value(1).toUpper();
    if (keyword == "AXIS" && tokens.size() > 7) {
        const qint64 n = qMin(qint64{tokens.at(7).toInt()} + 1, qint64{2147483647});
        const int a = tokens.at(2).toInt();
        if (a == 0) {
            map.xNum = static_cast<int>(n);
        }
        if (a == 1) {
            map.yNum = static_cast<int>(n);
        }
    } else if (keyword == "X-NUM" && tokens.size() > 2) {
        map.xNum = tokens.at(2).toInt();
    } else if (keyword == "Y-NUM" && tokens.size() > 2) {
        map.yNum = tokens.at(2).toInt();
    } else if (keyword == "ENERGY" && tokens.size() > 3) {
        energyFound(tokens.at(3));
    } else if (keyword == "I0" && tokens.size() > 2) {
        state.i0Column = line.mid(line.indexOf(':') + 1).toInt();
    } else if (keyword == "I" && tokens.size() > 2) {
        state.iColumn = line.mid(line.indexOf(':') + 1).toInt();
    }
}

void appendRow(A2DData& map, const QStringList& tokens, qint64 intensity, qint64 i0)
{
    A2DRow row;
    row.x = tokens.at(0).toDouble();
    row.y = tokens.at(1).toDouble();
    row.intensity = tokens.at(intensity).toDouble();
    row.i0 = i0 < 0 ? 1.0 : tokens.at(i0).toDouble();
    map.rows.append(row);
}

void takeData(const QStringList& tokens, const PlainState& state, A2DData& map)
{
    const qint64 count = tokens.size();
    if (state.kind == 1) {
        const qint64 intensity = qint64{state.iColumn} + 2;
        const qint64 i0 = qint64{state.i0Column} + 2;
        if (count > 1 && intensity >= 0 && i0 >= 0 && intensity < count && i0 < count) {
            appendRow(map, tokens, intensity, i0);
        }
    } else if (count == 3) {
        appendRow(map, tokens, 2, -1);
    } else if (count > 3) {
        appendRow(map, tokens, 2, 3);
    }
}

void takeAllLines(QTextStream& stream, PlainState& state, A2DData& map,
                  const data::EnergyHandler& energyFound)
{
    const QRegularExpression blanks(QStringLiteral("\\s+"));
    int lineNumber = -1;
    while (!stream.atEnd()) {
        const QString line = stream.readLine();
        const QStringList tokens = line.simplified().split(blanks);
        ++lineNumber;
        if (lineNumber == 0 && line.startsWith("# 1306")) {
            state.kind = 0;
        }
        if (lineNumber == 0 && line.startsWith("# 2003901")) {
            state.kind = 1;
        }
        if (tokens.first().startsWith('#')) {
            takeComment(line, tokens, state, map, energyFound);
        } else {
            takeData(tokens, state, map);
        }
    }
}

/// Derives the size from the coordinates. The width is the number of pixels with the same y
/// as the first pixel; the height is the number of pixels with the same x as the first
/// pixel. The first pixel always counts, even if its x or y is NaN.
void countSize(A2DData& map)
{
    map.xNum = map.yNum = 0;
    for (qsizetype i = 0; i < map.rows.size(); ++i) {
        if (i == 0 || map.rows.at(i).y == map.rows.at(0).y) {
            ++map.xNum;
        }
        if (i == 0 || map.rows.at(i).x == map.rows.at(0).x) {
            ++map.yNum;
        }
    }
}

/// Whether the stated size exceeds the limits of the reader. The limits are repeated here
/// as literals, so that a test fails if the product's limits change.
bool isClaimTooLarge(const A2DData& map)
{
    const qint64 columns = map.xNum < 1 ? 1 : map.xNum;
    const qint64 lines = map.yNum < 1 ? 1 : map.yNum;
    const qint64 pixels = columns * lines; // no overflow: the product of two ints fits in 64 bits
    if (pixels > 1048576 && pixels > 64 * map.rows.size()) {
        return true;
    }
    return pixels > 33554432;
}

} // namespace

bool readPlainMap(const QString& path, A2DData& map, const data::EnergyHandler& energyFound)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly | QIODevice::Text) && readPlainMap(file, map, energyFound);
}

bool readPlainMap(QIODevice& device, A2DData& map, const data::EnergyHandler& energyFound)
{
    map.clear();
    PlainState state;
    QTextStream stream(&device);
    takeAllLines(stream, state, map, energyFound);
    if (state.kind == 1) {
        countSize(map);
    }
    if (isClaimTooLarge(map)) {
        map.xNum = map.yNum = 0;
    }
    return map.xNum > 0 && map.yNum > 0 && !map.rows.isEmpty();
}

} // namespace tests
