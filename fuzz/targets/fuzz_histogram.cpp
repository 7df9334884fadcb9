// Tests histograms: limits, counts and the text of the file.

#include "support/ByteReader.h"
#include "support/FuzzTarget.h"
#include "support/PlainMapForms.h"
#include "support/SameDouble.h"

#include "analysis/HistogramCounter.h"
#include "analysis/HistogramCounts.h"

#include <cmath>
#include <limits>
#include <numeric>

using analysis::HistogramCounts;

namespace
{

constexpr int maxValues = 70;
constexpr int maxBinsToCount = 2000;
constexpr int maxBinsInFile = 30;

void checkBoxesFrom(double number)
{
    const int boxes = HistogramCounts::boxesFrom(number);
    FUZZ_REQUIRE(boxes >= 0 && boxes <= HistogramCounts::maxBoxes);
    if (std::isnan(number) || number < 1.0) {
        FUZZ_REQUIRE(boxes == 0);
    } else {
        FUZZ_REQUIRE(boxes == std::min(std::floor(number), 1.0 * HistogramCounts::maxBoxes));
    }
}

/// A number of bins as a caller can pass it, including invalid numbers. Very large numbers
/// are rare, because a histogram with many bins is slow.
int nextBoxes(fuzz::ByteReader& in)
{
    switch (in.number(0, 255)) {
    case 255:
        return in.number(0, 15) == 15 ? 1'000'000'000 : 1024;
    case 254:
        return in.number(1020, 1030); // above 1024 bins another counting algorithm is used
    case 253:
        return in.number(std::numeric_limits<int>::min(), 0);
    default:
        return in.number(-3, 12);
    }
}

struct Limits {
    double from;
    double to;
    int boxes;
};

void checkStarted(const HistogramCounts& counts, const Limits& limits)
{
    const int boxes = std::clamp(limits.boxes, 0, 1'000'000);
    const double step = (limits.to - limits.from) / (boxes - 1);
    FUZZ_REQUIRE(counts.boxes == boxes && counts.bins.size() == boxes);
    FUZZ_REQUIRE(tests::sameDouble(counts.step, step));
    FUZZ_REQUIRE(tests::sameDouble(counts.minV, limits.from - step * 0.5));
    FUZZ_REQUIRE(tests::sameDouble(counts.maxV, limits.to + step * 0.5));
    FUZZ_REQUIRE(counts.under == 0 && counts.over == 0 && counts.total == 0);
    FUZZ_REQUIRE(counts.bins == QList<int>(boxes, 0));
}

void checkCounts(const HistogramCounts& counts, const tests::PlainHistogram& plain)
{
    FUZZ_REQUIRE(counts.bins == plain.bins);
    FUZZ_REQUIRE(counts.under == plain.under);
    FUZZ_REQUIRE(counts.over == plain.over);
    FUZZ_REQUIRE(counts.total == plain.total);
}

/// Arbitrary values, values on bin boundaries, values between the outer bin boundaries, and
/// repetitions of the previous value.
QList<double> nextValues(fuzz::ByteReader& in, const HistogramCounts& counts)
{
    QList<double> values;
    for (int count = in.number(0, maxValues); count > 0 && !in.atEnd(); --count) {
        switch (in.number(0, 3)) {
        case 0:
            values.append(in.anyDouble());
            break;
        case 1:
            values.append(counts.minV + counts.step * in.number(-3, 63)); // on a bin boundary
            break;
        case 2:
            values.append(in.doubleIn(counts.minV, counts.maxV));
            break;
        default:
            if (!values.isEmpty()) {
                values.append(values.last());
            }
            break;
        }
    }
    return values;
}

HistogramCounts countedInBlocks(const Limits& limits, const QList<double>& values,
                                analysis::Instructions instructions)
{
    HistogramCounts counts;
    counts.start(limits.from, limits.to, limits.boxes);
    analysis::HistogramCounter counter(counts);
    for (qsizetype first = 0; first < values.size(); first += analysis::blockPixels) {
        analysis::Block block;
        block.fill(values.first()); // elements from index `count` must not be counted
        const qsizetype count = std::min<qsizetype>(values.size() - first, analysis::blockPixels);
        std::copy_n(values.cbegin() + first, count, block.begin());
        counter.add(block, static_cast<int>(count), instructions);
    }
    counter.finish();
    return counts;
}

void checkFileText(const HistogramCounts& counts)
{
    const QList<QByteArray> lines = counts.fileText().split('\n');
    FUZZ_REQUIRE(lines.size() == counts.boxes + 3 && lines.last().isEmpty());
    for (int i = -1; i <= counts.boxes; ++i) {
        const int count = i < 0               ? counts.under
                          : i == counts.boxes ? counts.over
                                              : counts.bins.at(i);
        const QString wanted = QStringLiteral("%1 %2 %3  %4")
                                   .arg(counts.step * i + counts.minV)
                                   .arg(counts.step * (i + 0.5) + counts.minV)
                                   .arg(counts.step * (i + 1) + counts.minV)
                                   .arg(count);
        FUZZ_REQUIRE(lines.at(i + 1) == wanted.toLatin1());
    }
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    ByteReader in(bytes);
    checkBoxesFrom(in.anyDouble());
    const Limits limits{in.anyDouble(), in.anyDouble(), nextBoxes(in)};
    const bool writesFile = in.number(0, 3) == 0;
    HistogramCounts counts;
    counts.start(limits.from, limits.to, limits.boxes);
    if (counts.boxes > maxBinsToCount) {
        FUZZ_REQUIRE(counts.boxes <= HistogramCounts::maxBoxes);
        FUZZ_REQUIRE(counts.bins.size() == counts.boxes);
        return; // counting so many bins is slow and tests nothing new
    }
    checkStarted(counts, limits);

    const QList<double> values = nextValues(in, counts);
    tests::PlainHistogram plain{counts.minV, counts.step, counts.bins, 0, 0, 0};
    for (const double value : values) {
        tests::plainCount(plain, value);
        counts.add(value);
    }
    checkCounts(counts, plain);
    FUZZ_REQUIRE(std::accumulate(counts.bins.cbegin(), counts.bins.cend(), qint64{0}) +
                     counts.under + counts.over ==
                 values.size());
    for (const analysis::Instructions instructions : analysis::availableInstructions()) {
        checkCounts(countedInBlocks(limits, values, instructions), plain);
    }
    if (writesFile && counts.boxes <= maxBinsInFile) {
        checkFileText(counts);
    }
}
