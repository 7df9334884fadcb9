#include "support/PlainSpectrumReader.h"

#include <QIODevice>
#include <QRegularExpression>
#include <QStringList>
#include <QTextStream>

#include <cmath>

namespace tests
{
namespace
{

QList<QStringList> tokensOfLines(QIODevice& device)
{
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    QList<QStringList> lines;
    QTextStream stream(&device);
    while (!stream.atEnd()) {
        const QString line = stream.readLine().simplified();
        // After simplified() the only white space is the space character, so splitting at
        // this character returns the same tokens as the regular expression and is faster.
        // Exception: in a line with an unpaired surrogate the regular expression matches
        // nothing, so the line is not split.
        lines.append(line.isValidUtf16() ? line.split(u' ') : line.split(blanks));
    }
    return lines;
}

QList<MutPoint> plainPoints(const QList<QStringList>& lines)
{
    QList<MutPoint> points;
    for (const QStringList& tokens : lines) {
        if (tokens.at(0).startsWith('#') || tokens.size() < 2) {
            continue;
        }
        MutPoint point;
        point.energy = tokens.at(0).toDouble();
        point.mut = tokens.at(1).toDouble();
        const double sine = (12398.424360387684 / point.energy) / 6.2710632;
        point.angle = std::asin(sine) / 3.1415926535 * 180.0;
        points.append(point);
    }
    return points;
}

struct Detectors {
    QList<int> modes;
    int kind = -1;
    qsizetype i0Column = -1;
    double d = 3.1355316;
};

double plainMut(const QStringList& tokens, const Detectors& detectors)
{
    const double i0 = tokens.at(detectors.i0Column).toDouble();
    double mut = 0.0;
    for (qsizetype i = 0; i + 3 < tokens.size() && i < detectors.modes.size(); ++i) {
        const double count = tokens.at(i + 3).toDouble();
        if (detectors.kind == 2 && detectors.modes.at(i) == 2) {
            return std::log(i0 / count);
        }
        if (detectors.kind == 3 && detectors.modes.at(i) == 3) {
            mut += count / i0;
        }
    }
    return mut;
}

void takeModes(const QStringList& tokens, Detectors& detectors)
{
    detectors.modes.clear();
    for (qsizetype t = 3; t < tokens.size(); ++t) {
        const int mode = tokens.at(t).toInt();
        detectors.modes.append(mode);
        if (mode == 1) {
            detectors.i0Column = t;
        } else if (detectors.kind < 0 && mode >= 2) {
            detectors.kind = mode;
        }
    }
}

QList<MutPoint> beamlinePoints(const QList<QStringList>& lines)
{
    QList<MutPoint> points;
    Detectors detectors;
    bool isStarted = false;
    for (const QStringList& tokens : lines) {
        // A row without an I0 value is skipped.
        if (isStarted && tokens.size() > 4 && detectors.i0Column >= 0 &&
            detectors.i0Column < tokens.size()) {
            MutPoint point;
            point.angle = tokens.at(1).toDouble();
            const double sine = std::sin((point.angle / 180.0) * 3.1415926535);
            point.energy = (12.398424360387684 / ((detectors.d + detectors.d) * sine)) * 1000.0;
            point.mut = plainMut(tokens, detectors);
            points.append(point);
        }
        if (tokens.contains(QStringLiteral("Mode"))) {
            takeModes(tokens, detectors);
        }
        isStarted = isStarted || tokens.contains(QStringLiteral("Offset"));
        const qsizetype spacing = tokens.indexOf(QStringLiteral("D="));
        if (spacing >= 0 && spacing + 1 < tokens.size()) {
            detectors.d = tokens.at(spacing + 1).toDouble();
        }
    }
    return points;
}

} // namespace

QList<MutPoint> readPlainSpectrum(QIODevice& device)
{
    const QList<QStringList> lines = tokensOfLines(device);
    const bool isBeamline = !lines.isEmpty() && lines.first().first().startsWith("9809");
    return isBeamline ? beamlinePoints(lines) : plainPoints(lines);
}

} // namespace tests
