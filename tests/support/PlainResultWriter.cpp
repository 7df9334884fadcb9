#include "support/PlainResultWriter.h"

#include "data/A2DData.h"

#include <QTextStream>

namespace tests
{

namespace
{

QString columnName(int i)
{
    static const QStringList names = {"alpha1", "alpha2",  "alpha3",    "alpha4", "dMut1",
                                      "dMut2",  "dMut3",   "dMut4",     "Mut0",   "C1",
                                      "C2",     "Valence", "Total-dMut"};
    return names.value(i, QStringLiteral("UnKnown"));
}

double valenceMix(const PlainValences& valences, double a)
{
    if (valences.validReferences < 2) {
        return 0.0;
    }
    const double v1 = valences.first.toDouble();
    const double v2 = valences.second.toDouble();
    return (1 - a) * v2 + v1 * a;
}

QString withNumber(const QString& format, double value)
{
    return format.arg(value, 10, 'g', -1, QLatin1Char(' '));
}

void writeSimpleLine(QTextStream& out, const A2DRow& row, const PlainValences& valences)
{
    QString line = QStringLiteral(" %1 %2    %3 %4 %5\n");
    for (const double value :
         {row.x, row.y, row.intensity, valenceMix(valences, row.intensity), row.i0}) {
        line = withNumber(line, value);
    }
    out << line;
}

void writeExtendedLine(QTextStream& out, const A2DRow& row, const std::array<bool, 13>& wanted)
{
    out << withNumber(withNumber(QStringLiteral(" %1 %2"), row.x), row.y);
    for (int i = 0; i < 13; ++i) {
        if (wanted.at(static_cast<std::size_t>(i))) {
            out << withNumber(QStringLiteral(" %1"), row.values.value(i, 0.0));
        }
    }
    out << "\n";
}

void writeHeading(QTextStream& out, const std::array<bool, 13>& wanted)
{
    out << "# y x";
    for (int i = 0; i < 13; ++i) {
        if (wanted.at(static_cast<std::size_t>(i))) {
            out << " " << columnName(i);
        }
    }
    out << "\n";
}

} // namespace

bool writePlainResultMap(QIODevice& device, const A2DData& map, const PlainValences& valences,
                         const std::array<bool, 13>& wanted)
{
    QTextStream out(&device);
    out << "# qelk result map V1.0\n";
    for (const QString& line : map.headerLines) {
        out << line << "\n";
    }
    out << "\n";
    if (map.extended) {
        writeHeading(out, wanted);
    }
    for (int y = 0; y < map.yNum; ++y) {
        for (int x = 0; x < map.xNum; ++x) {
            const qint64 i = qint64{y} * map.xNum + x;
            const A2DRow row = map.rows.value(i);
            if (map.extended) {
                writeExtendedLine(out, row, wanted);
            } else {
                writeSimpleLine(out, row, valences);
            }
        }
        out << "\n";
    }
    out.flush();
    return out.status() == QTextStream::Ok;
}

} // namespace tests
