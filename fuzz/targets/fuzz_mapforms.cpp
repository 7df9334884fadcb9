// Tests the map calculations: every pixel must be equal to the result of the reference
// implementations.

#include "support/ByteReader.h"
#include "support/FuzzTarget.h"
#include "support/PlainFits.h"
#include "support/PlainMapForms.h"
#include "support/SameDouble.h"

#include "analysis/CalculationMemory.h"
#include "analysis/HistogramCounts.h"
#include "analysis/MapCalculation.h"
#include "analysis/MapResultCache.h"
#include "analysis/NonEquivalentMap.h"

#include <algorithm>
#include <utility>
#include <vector>

using analysis::HistogramCounts;

namespace
{

using Instructions = analysis::Instructions;

constexpr int maxMaps = 5;
constexpr int maxReferences = 4;
constexpr int runs = 3;

bool same(const QList<double>& a, const QList<double>& b)
{
    return std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend(), tests::sameDouble);
}

bool same(const A2DRow& a, const A2DRow& b)
{
    return tests::sameDouble(a.x, b.x) && tests::sameDouble(a.y, b.y) &&
           tests::sameDouble(a.intensity, b.intensity) && tests::sameDouble(a.i0, b.i0) &&
           same(a.values, b.values);
}

void requireSame(const A2DData& found, const A2DData& wanted)
{
    FUZZ_REQUIRE(found.xNum == wanted.xNum && found.yNum == wanted.yNum);
    FUZZ_REQUIRE(found.headerLines == wanted.headerLines);
    FUZZ_REQUIRE(found.extended == wanted.extended);
    FUZZ_REQUIRE(found.rows.size() == wanted.rows.size());
    for (qsizetype i = 0; i < found.rows.size(); ++i) {
        FUZZ_REQUIRE(same(found.rows.at(i), wanted.rows.at(i)));
    }
}

/// A deep copy of a map.
A2DData deepCopy(const A2DData& map)
{
    A2DData copy = map;
    for (A2DRow& row : copy.rows) {
        row.values = QList<double>(row.values.cbegin(), row.values.cend());
    }
    return copy;
}

/// The counts of one histogram by the program and by the reference implementation.
struct Histogram {
    double from = 0.0;
    double to = 0.0;
    int boxes = 0;
    HistogramCounts counts;
    tests::PlainHistogram plain;

    void start()
    {
        counts.start(from, to, boxes);
        plain = {counts.minV, counts.step, QList<int>(counts.boxes, 0), 0, 0, 0};
    }

    void requireSame() const
    {
        FUZZ_REQUIRE(counts.bins == plain.bins && counts.total == plain.total);
        FUZZ_REQUIRE(counts.under == plain.under && counts.over == plain.over);
    }
};

Histogram nextHistogram(fuzz::ByteReader& in)
{
    Histogram histogram;
    if (in.number(0, 3) == 0) {
        histogram.from = in.anyDouble();
        histogram.to = in.anyDouble();
    } else {
        histogram.from = -2.0;
        histogram.to = 3.0;
    }
    histogram.boxes = in.number(0, 12);
    return histogram;
}

/// A text for a number field of the panel. It is not always a number.
QString nextText(fuzz::ByteReader& in)
{
    const int form = in.number(0, 7);
    return form == 0 ? in.text(4) : QString::number(in.anyDouble(), 'g', form == 1 ? 17 : 6);
}

class Calculations
{
public:
    explicit Calculations(fuzz::ByteReader& in)
        : m_in(in)
        , m_maps(static_cast<std::size_t>(in.number(1, maxMaps)))
    {
        for (int i = in.number(1, 6); i > 0; --i) {
            m_palette.append(in.anyDouble());
        }
        m_random = static_cast<std::uint32_t>(in.number(0, 65535));
        for (A2DData& map : m_maps) {
            fillMap(map);
        }
        makePoints();
        makeNeqStack();
        for (Histogram& histogram : m_histograms) {
            histogram = nextHistogram(in);
        }
    }

    void run()
    {
        const int form = m_in.number(0, 3);
        const Instructions instructions = anyInstructions();
        for (Histogram& histogram : m_histograms) {
            histogram.start();
        }
        A2DData wanted;
        wanted.extended = m_result.extended;
        if (!calculatePlain(form, wanted)) {
            return;
        }
        calculate(form, instructions);
        requireSame(m_result, wanted);
        for (const Histogram& histogram : m_histograms) {
            histogram.requireSame();
        }
        for (const Kept& kept : m_kept) {
            requireSame(kept.result, kept.wanted);
        }
        for (const auto& [list, copy] : m_keptLists) {
            FUZZ_REQUIRE(same(list, copy));
        }
    }

    /// Makes at most one change that can occur between two calculations: changes a map,
    /// keeps a copy of the result or of a pixel's list of values, drops all copies, or modifies
    /// the result.
    void change()
    {
        switch (m_in.number(0, 7)) {
        case 0:
            fillMap(anyMap());
            break;
        case 1:
            anyMap() = anyMap();
            break;
        case 2: {
            A2DData& map = anyMap();
            if (!map.rows.isEmpty()) {
                map.rows[anyIndex(map.rows.size())].intensity = m_in.anyDouble();
            }
            break;
        }
        case 3:
            m_kept.push_back({m_result, deepCopy(m_result)});
            break;
        case 4:
            keepList();
            break;
        case 5:
            m_kept.clear();
            m_keptLists.clear();
            break;
        case 6:
            writeToResult();
            break;
        default:
            break;
        }
    }

private:
    struct Kept {
        A2DData result; ///< implicitly shared copy of the program's result
        A2DData wanted;
    };

    /// Index of the non-equivalent method. The lower indices are the forms of the
    /// four-point family.
    static constexpr int neqForm = 3;

    A2DData& anyMap()
    {
        return m_maps[static_cast<std::size_t>(anyIndex(qsizetype(m_maps.size())))];
    }

    int anyIndex(qsizetype size) { return m_in.number(0, static_cast<int>(size) - 1); }

    Instructions anyInstructions()
    {
        const std::vector<Instructions>& available = analysis::availableInstructions();
        return available[static_cast<std::size_t>(anyIndex(qsizetype(available.size())))];
    }

    double paletteNumber()
    {
        m_random = m_random * 1664525 + 1013904223;
        return m_palette.at((m_random >> 16) % m_palette.size());
    }

    void fillMap(A2DData& map)
    {
        const bool isLarge = m_in.number(0, 15) == 15;
        map = {};
        map.xNum = m_in.number(-1, isLarge ? 17 : 8);
        map.yNum = m_in.number(-1, isLarge ? 13 : 8);
        if (m_in.number(0, 7) == 7) {
            map.headerLines.append(m_in.text(8));
        }
        const int claimed = std::max(map.xNum, 0) * std::max(map.yNum, 0);
        const int rows = m_in.number(0, 3) == 3 ? m_in.number(0, 220) : claimed;
        const bool isUniform =
            m_in.number(0, 3) == 3; // identical pixels can share their value list
        const A2DRow first{0.0, 0.0, paletteNumber(), paletteNumber(), {}};
        for (int i = 0; i < rows; ++i) {
            map.rows.append(
                isUniform ? first
                          : A2DRow{1.0 * i, -1.0 * i, paletteNumber(), paletteNumber() + i, {}});
        }
    }

    void makePoints()
    {
        m_stack.r = m_in.anyDouble();
        for (int k = 0; k < 2; ++k) {
            m_stack.references.append({true, m_in.number(0, 3) != 3, nextText(m_in)});
        }
        const int points = m_in.number(3, 6);
        const int vPoint = m_in.number(0, points - 1);
        for (int i = 0; i < points; ++i) {
            m_stack.points.append(
                {&anyMap(), i == vPoint, nextText(m_in), nextText(m_in), nextText(m_in)});
        }
    }

    void makeNeqStack()
    {
        m_neq.victoreen = m_in.number(0, 1) == 1;
        m_neq.jumpSum = m_in.anyDouble();
        for (int i = m_in.number(1, 6); i > 0; --i) {
            m_neq.maps.append(&anyMap());
            m_neq.energies.append(m_in.anyDouble());
        }
        for (int k = m_in.number(0, maxReferences); k > 0; --k) {
            QList<double> values;
            for (qsizetype i = 0; i < m_neq.maps.size(); ++i) {
                values.append(m_in.anyDouble());
            }
            m_neq.refValues.append(values);
            m_neq.weights.append(m_in.anyDouble());
            m_neq.valences.append(nextText(m_in));
        }
    }

    Histogram& histogram(int i) { return m_histograms.at(static_cast<std::size_t>(i)); }

    qsizetype references() const { return m_neq.refValues.size(); }

    /// Calculates @p wanted with the reference implementation.
    /// @return false if the form needs more energy rows than there are
    bool calculatePlain(int form, A2DData& wanted)
    {
        tests::PlainHistogram& first = histogram(0).plain;
        tests::PlainHistogram& second = histogram(1).plain;
        switch (form) {
        case 0:
            tests::plainThreePoints(m_stack, wanted, first, second);
            return true;
        case 1:
            if (m_stack.points.size() < 4) {
                return false;
            }
            tests::plainExactFourPoints(m_stack, wanted, first, second);
            return true;
        case 2:
            tests::plainLeastSquare(m_stack, wanted, first, second);
            return true;
        default:
            break;
        }
        tests::PlainNeqHistograms histograms{first, second, {}, {}};
        for (int k = 0; k < references(); ++k) {
            histograms.ratio.append(histogram(2 + k).plain);
            histograms.dMut.append(histogram(2 + maxReferences + k).plain);
        }
        tests::plainNonEquivalent(m_neq, wanted, histograms);
        first = histograms.valence;
        second = histograms.total;
        for (int k = 0; k < references(); ++k) {
            histogram(2 + k).plain = histograms.ratio.at(k);
            histogram(2 + maxReferences + k).plain = histograms.dMut.at(k);
        }
        return true;
    }

    void calculate(int form, Instructions instructions)
    {
        HistogramCounts& first = histogram(0).counts;
        HistogramCounts& second = histogram(1).counts;
        if (form == neqForm) {
            calculateNeq(instructions);
            return;
        }
        analysis::MapStack stack = tests::mapStackOf(m_stack);
        stack.memory = &m_memory;
        stack.instructions = instructions;
        const auto variant = form == 0   ? analysis::Variant::ThreePoints
                             : form == 1 ? analysis::Variant::ExactFourPoints
                                         : analysis::Variant::LeastSquare;
        runCached(analysis::inputsOf(variant, stack), {&first, &second}, [&] {
            switch (form) {
            case 0:
                return analysis::mapThreePoints(stack, m_result, first, second);
            case 1:
                return analysis::mapExactFourPoints(stack, m_result, first, second);
            default:
                return analysis::mapLeastSquare(stack, m_result, first, second);
            }
        });
    }

    void calculateNeq(Instructions instructions)
    {
        analysis::NeqStack stack = tests::neqStackOf(m_neq);
        stack.memory = &m_memory;
        stack.instructions = instructions;
        analysis::NeqHistograms histograms{&histogram(0).counts, &histogram(1).counts, {}, {}};
        QList<HistogramCounts*> all{histograms.valence, histograms.totalDMut};
        for (int k = 0; k < references(); ++k) {
            histograms.share.append(&histogram(2 + k).counts);
            histograms.dMut.append(&histogram(2 + maxReferences + k).counts);
            all << histograms.share.last() << histograms.dMut.last();
        }
        runCached(analysis::inputsOf(stack), all,
                  [&] { analysis::mapNonEquivalent(stack, m_result, histograms); });
    }

    /// Runs a calculation directly or through the cache. The cache skips the calculation
    /// if its inputs are unchanged.
    template <class Calculate>
    void runCached(const analysis::MapResultCache::Inputs& inputs,
                   const QList<HistogramCounts*>& histograms, Calculate calculate)
    {
        if (m_in.number(0, 1) == 0) {
            calculate();
            return;
        }
        // The cache requires that the histograms still have the counts of the latest cached
        // calculation, so these counts are restored.
        for (qsizetype i = 0; i < histograms.size() && i < m_latest.size(); ++i) {
            *histograms.at(i) = m_latest.at(i);
        }
        const auto start = [&] {
            for (Histogram& each : m_histograms) {
                each.counts.start(each.from, each.to, each.boxes);
            }
        };
        m_cache.run(inputs, m_result, histograms, start, calculate);
        m_latest.clear();
        for (const HistogramCounts* counts : histograms) {
            m_latest.append(*counts);
        }
    }

    /// Keeps an implicitly shared copy of the value list of one pixel, but not of the list
    /// of pixels.
    void keepList()
    {
        if (!m_result.rows.isEmpty()) {
            const QList<double>& values = m_result.rows.at(anyIndex(m_result.rows.size())).values;
            m_keptLists.emplace_back(values, QList<double>(values.cbegin(), values.cend()));
        }
    }

    void writeToResult()
    {
        if (m_result.rows.isEmpty()) {
            return;
        }
        const int i = anyIndex(m_result.rows.size());
        A2DData wanted = deepCopy(m_result);
        for (A2DData* each : {&m_result, &wanted}) {
            QList<double>& values = each->rows[i].values;
            if (values.isEmpty()) {
                values.append(1.0);
            } else {
                values.first() = 2.0;
            }
        }
        requireSame(m_result, wanted); // no other pixel may change
    }

    fuzz::ByteReader& m_in;
    std::vector<A2DData> m_maps;
    QList<double> m_palette;
    std::uint32_t m_random = 0;
    tests::PlainStack m_stack;
    tests::PlainNeqStack m_neq;
    std::array<Histogram, 2 + 2 * maxReferences> m_histograms;
    analysis::CalculationMemory m_memory;
    analysis::MapResultCache m_cache;
    QList<HistogramCounts> m_latest;
    A2DData m_result;
    std::vector<Kept> m_kept;
    std::vector<std::pair<QList<double>, QList<double>>> m_keptLists;
};

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    ByteReader in(bytes);
    Calculations calculations(in);
    for (int i = 0; i < runs; ++i) {
        calculations.run();
        calculations.change();
        calculations.change();
    }
}
