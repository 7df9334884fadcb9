// Tests the text of a result map against the reference implementation.

#include "support/ByteReader.h"
#include "support/FuzzTarget.h"
#include "support/PlainResultWriter.h"

#include "analysis/ResultText.h"
#include "data/A2DData.h"

#include <QBuffer>

#include <cmath>
#include <limits>

namespace
{

using Wanted = std::array<bool, analysis::columnCount>;

/// A device that fails after a number of bytes, like a full disk.
class SmallDevice : public QIODevice
{
public:
    /// @param capacity    number of bytes after which a write fails
    /// @param writesPart  whether the failing write still stores the bytes that fit
    SmallDevice(qint64 capacity, bool writesPart)
        : m_capacity(capacity)
        , m_writesPart(writesPart)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

    const QByteArray& written() const { return m_written; }

protected:
    qint64 readData(char* /*data*/, qint64 /*most*/) override { return -1; }

    qint64 writeData(const char* data, qint64 size) override
    {
        const qint64 fits = m_capacity - m_written.size();
        if (size > fits && !m_writesPart) {
            return -1;
        }
        const qint64 taken = std::min(size, fits);
        m_written.append(data, taken);
        return taken;
    }

private:
    qint64 m_capacity;
    bool m_writesPart;
    QByteArray m_written;
};

A2DRow nextRow(fuzz::ByteReader& in)
{
    A2DRow row{in.anyDouble(), in.anyDouble(), in.anyDouble(), in.anyDouble(), {}};
    const int count = in.oneOf(QList<int>{0, 13, 13, 12, 15, 1});
    for (int i = 0; i < count; ++i) {
        row.values.append(in.anyDouble());
    }
    return row;
}

A2DData nextMap(fuzz::ByteReader& in)
{
    A2DData map;
    map.extended = in.number(0, 1) == 1;
    const int form = in.number(0, 31);
    if (form == 0) {
        // A map without pixels, whose height can be above 0.
        map.xNum = in.oneOf(QList<int>{0, -1, std::numeric_limits<int>::min()});
        map.yNum = in.number(-2, 300);
    } else if (form == 1) {
        map.xNum = in.oneOf(QList<int>{7, std::numeric_limits<int>::max()});
        map.yNum = in.oneOf(QList<int>{0, -1, std::numeric_limits<int>::min()});
    } else {
        map.xNum = in.number(-1, 6);
        map.yNum = in.number(-1, 6);
    }
    for (int lines = in.number(0, 4); lines > 0; --lines) {
        const QString line = in.text(24);
        map.headerLines.append(in.number(0, 63) == 63 ? line.repeated(in.number(0, 20000)) : line);
    }
    for (int rows = in.number(0, 40); rows > 0 && !in.atEnd(); --rows) {
        map.rows.append(nextRow(in));
    }
    return map;
}

QString nextNumberText(fuzz::ByteReader& in)
{
    return in.number(0, 3) == 0 ? in.text(6) : QString::number(in.anyDouble(), 'g', 17);
}

/// Whether @p text is a number within 5e-6 * |value| of @p value, the largest error of
/// rounding to six significant digits. NaN and infinities must be spelled "nan", "inf" and
/// "-inf".
bool isToSixDigits(const QByteArray& text, double value)
{
    if (!std::isfinite(value)) {
        return text == (std::isnan(value) ? "nan" : value < 0.0 ? "-inf" : "inf");
    }
    bool isNumber = false;
    const double read = text.toDouble(&isNumber);
    const double unit = std::numeric_limits<double>::denorm_min();
    return isNumber && std::abs(read - value) <= 5.0000001e-6 * std::abs(value) + unit;
}

QList<double> numbersOf(const A2DRow& row, bool extended, const Wanted& wanted,
                        const analysis::ValenceMix& mix)
{
    if (!extended) {
        return {row.x, row.y, row.intensity, mix(row.intensity), row.i0};
    }
    QList<double> numbers{row.x, row.y};
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (wanted[i]) {
            numbers.append(row.values.value(static_cast<qsizetype>(i), 0.0));
        }
    }
    return numbers;
}

void checkReadAgain(const QByteArray& text, const A2DData& map, const Wanted& wanted,
                    const analysis::ValenceMix& mix)
{
    const qint64 width = std::max(map.xNum, 0);
    const qint64 height = std::max(map.yNum, 0);
    const QList<QByteArray> lines = text.split('\n');
    qsizetype at = lines.size() - 1 - height * (width + 1);
    FUZZ_REQUIRE(at >= 0);
    for (qint64 i = 0; i < width * height; ++i) {
        const QList<double> numbers = numbersOf(map.rows.value(i), map.extended, wanted, mix);
        const QList<QByteArray> words = lines.at(at++).simplified().split(' ');
        FUZZ_REQUIRE(words.size() == numbers.size());
        for (qsizetype k = 0; k < words.size(); ++k) {
            FUZZ_REQUIRE(isToSixDigits(words.at(k), numbers.at(k)));
        }
        if (i % width == width - 1) {
            FUZZ_REQUIRE(lines.at(at++).isEmpty());
        }
    }
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    ByteReader in(bytes);
    Wanted wanted{};
    const int columns = in.number(0, (1 << analysis::columnCount) - 1);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        wanted[i] = (columns >> i & 1) != 0;
    }
    const tests::PlainValences valences{in.number(0, 4), nextNumberText(in), nextNumberText(in)};
    const analysis::ValenceMix mix{valences.validReferences >= 2, valences.first.toDouble(),
                                   valences.second.toDouble()};
    const double share = in.doubleIn(0.0, 1.2);
    const bool writesPart = in.number(0, 1) == 1;
    const A2DData map = nextMap(in);

    QBuffer plain;
    plain.open(QIODevice::WriteOnly);
    FUZZ_REQUIRE(tests::writePlainResultMap(plain, map, valences, wanted));
    QBuffer written;
    written.open(QIODevice::WriteOnly);
    FUZZ_REQUIRE(analysis::writeResultMap(written, map, mix, wanted));
    FUZZ_REQUIRE(written.data() == plain.data());
    checkReadAgain(written.data(), map, wanted, mix);

    SmallDevice small(static_cast<qint64>(static_cast<double>(plain.size()) * share), writesPart);
    const bool isWhole = analysis::writeResultMap(small, map, mix, wanted);
    FUZZ_REQUIRE(plain.data().startsWith(small.written()));
    FUZZ_REQUIRE(isWhole == (small.written().size() == plain.size()));
}
