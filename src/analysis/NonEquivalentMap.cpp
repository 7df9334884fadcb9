#include "analysis/NonEquivalentMap.h"

#include "analysis/CalculationChoice.h"
#include "analysis/CalculationMemory.h"
#include "analysis/HistogramCounter.h"
#include "analysis/PixelBlocks.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <vector>

namespace analysis
{

namespace
{

using BlockValues = std::array<Block, neq::count>;

/// Calculates the values of a block of pixels from their absorbances in each map.
class BlockSolver
{
public:
    explicit BlockSolver(const NeqStack& stack)
        : m_fit(stack.victoreen, stack.inputs.refValues, stack.inputs.energies,
                stack.inputs.weights)
        , m_instructions(stack.instructions)
        , m_jumpSum(stack.inputs.jumpSum)
        , m_valenceCount(static_cast<std::size_t>(
              std::min<qsizetype>(stack.inputs.valences.size(), neq::references)))
    {
        std::copy_n(stack.inputs.valences.cbegin(), m_valenceCount, m_valences.begin());
    }

    int references() const { return m_fit.references(); }
    int rows() const { return m_fit.rows(); }

    void solve(std::span<const BlockView> t, int count, BlockValues& out) const
    {
        m_fit.withSize([&](auto size) {
            std::array<Block, size.unknowns> x;
            runKernel(
                m_instructions, [&]() __attribute__((always_inline)) {
                    // Two loops for speed: within a pixel, each division of the back
                    // substitution waits for the previous one. In a short separate loop, the
                    // processor can overlap the divisions of several pixels.
                    for (int at = 0; at < count; at += laneCount) {
                        beginAt(size, t, at, x);
                    }
                    for (int at = 0; at < count; at += laneCount) {
                        finishAt(size, x, at, out);
                    }
                });
        });
    }

private:
    /// The first half of the fit for four pixels: elements @p at to @p at + 3 of the
    /// blocks.
    template <class Size>
    [[gnu::always_inline]] inline void beginAt(Size size, std::span<const BlockView> t, int at,
                                               std::array<Block, Size::unknowns>& x) const
    {
        std::array<Lanes, Size::unknowns> four;
        const auto targetAt = [&](std::size_t row) __attribute__((always_inline))
        {
            return loadLanes(t[row].data() + at);
        };
        m_fit.begin(size, targetAt, four);
        for (std::size_t i = 0; i < four.size(); ++i) {
            storeLanes(x[i].data() + at, four[i]);
        }
    }

    template <std::size_t References, std::size_t Terms>
    [[gnu::always_inline]] inline void finishAt(NeqFit::Size<References, Terms> size,
                                                const std::array<Block, References + Terms>& x,
                                                int at, BlockValues& out) const
    {
        std::array<Lanes, References + Terms> four;
        for (std::size_t i = 0; i < four.size(); ++i) {
            four[i] = loadLanes(x[i].data() + at);
        }
        std::array<Lanes, neq::count> values;
        const Lanes sum = m_fit.finish(size, four, values);
        for (std::size_t i = 0; i < References; ++i) {
            // Multiplied from left to right; neqTargetResult() forms sum * jumpSum first, so
            // its rounding differs.
            values[neq::dMut + i] = values[i] * sum * m_jumpSum;
        }
        Lanes valence{};
        for (std::size_t i = 0; i < m_valenceCount; ++i) {
            valence += values[i] * m_valences[i];
        }
        values[neq::valence] = valence;
        values[neq::totalDMut] = sum * m_jumpSum;
        for (std::size_t i = 0; i < values.size(); ++i) {
            storeLanes(out[i].data() + at, values[i]);
        }
    }

    NeqFit m_fit;
    Instructions m_instructions;
    double m_jumpSum;
    std::size_t m_valenceCount;
    std::array<double, neq::references> m_valences{};
};

/// The counters of all histograms of a calculation.
class Counters
{
public:
    Counters(const NeqHistograms& histograms, int references)
    {
        add(neq::valence, histograms.valence);
        add(neq::totalDMut, histograms.totalDMut);
        for (int i = 0; i < references; ++i) {
            add(neq::share + i, histograms.share.at(i));
            add(neq::dMut + i, histograms.dMut.at(i));
        }
    }

    void count(const BlockValues& values, int count, Instructions instructions)
    {
        for (Counter& each : m_counters) {
            each.counter.add(values[each.column], count, instructions);
        }
    }

    void finish()
    {
        for (Counter& each : m_counters) {
            each.counter.finish();
        }
    }

private:
    struct Counter {
        std::size_t column; ///< index of the counted quantity in BlockValues
        HistogramCounter counter;
    };

    void add(int column, HistogramCounts* histogram)
    {
        m_counters.push_back({static_cast<std::size_t>(column), HistogramCounter(*histogram)});
    }

    std::vector<Counter> m_counters;
};

void fillRows(const BlockValues& values, const PixelBlock& block)
{
    for (std::size_t i = 0; i < block.rows.size(); ++i) {
        block.rows[i].intensity = values[neq::share][i];
        block.rows[i].i0 = values[neq::totalDMut][i];
    }
}

/// Writes all values of the block to @p lists, one pixel after another.
void fillLists(const BlockValues& values, std::span<double> lists)
{
    double* next = lists.data();
    for (std::size_t i = 0; i < lists.size() / values.size(); ++i) {
        for (const Block& value : values) {
            *next++ = value[i];
        }
    }
}

/// Shares one list of values between all pixels of a uniform block. A block is uniform if, in
/// each map, all its pixels have the same absorbance. Consecutive uniform blocks with equal
/// absorbances also share one list.
///
/// This saves memory for a scan that was stopped early, whose maps contain fewer pixels than
/// their size states, and for a masked map, in which many pixels have the same value.
class UniformPixels
{
public:
    explicit UniformPixels(qsizetype maps)
        : m_absorbances(static_cast<std::size_t>(maps))
    {
    }

    /// Whether @p block is uniform; the absorbances are compared bit by bit. If the pixels
    /// differ, the first two usually differ already, so the check ends early.
    bool matches(const PixelBlock& block) const
    {
        const std::size_t others = (block.rows.size() - 1) * sizeof(double);
        for (std::size_t k = 0; k < m_absorbances.size(); ++k) {
            const double* const values = block.absorbances[k].data();
            if (std::memcmp(values, values + 1, others) != 0) {
                return false;
            }
        }
        return true;
    }

    /// Sets the list of values for all rows of a block for which matches() is true. Makes a new
    /// list if the absorbances differ from those in the previous call.
    void share(const BlockValues& values, const PixelBlock& block)
    {
        bool isNew = m_list.isEmpty();
        for (std::size_t k = 0; k < m_absorbances.size(); ++k) {
            const double absorbance = block.absorbances[k][0];
            isNew |= std::memcmp(&absorbance, &m_absorbances[k], sizeof absorbance) != 0;
            m_absorbances[k] = absorbance;
        }
        if (isNew) {
            m_list.clear();
            for (const Block& value : values) {
                m_list.append(value.front());
            }
        }
        for (A2DRow& row : block.rows) {
            row.values = m_list;
        }
    }

private:
    std::vector<double> m_absorbances;
    QList<double> m_list;
};

} // namespace

void mapNonEquivalent(const NeqStack& stack, A2DData& result, const NeqHistograms& histograms)
{
    const BlockSolver solver(stack);
    Q_ASSERT(solver.rows() == stack.maps.size());
    CalculationMemory ownMemory;
    CalculationMemory& memory = stack.memory != nullptr ? *stack.memory : ownMemory;
    memory.absorbances.prepare(stack.maps);
    memory.values.keepFirst(blockCount(*stack.base));
    Counters counters(histograms, solver.references());
    UniformPixels uniform(stack.maps.size());
    BlockValues values;
    calculateBlocks(
        stack.maps, memory.absorbances, *stack.base, result, [&](const PixelBlock& block) {
            solver.solve(block.absorbances, block.count(), values);
            fillRows(values, block);
            if (uniform.matches(block)) {
                uniform.share(values, block);
                memory.values.forget(block.index);
            } else {
                fillLists(values, memory.values.share(block.index, block.rows, neq::count));
            }
            counters.count(values, block.count(), stack.instructions);
        });
    counters.finish();
    result.extended = true;
}

MapResultCache::Inputs inputsOf(const NeqStack& stack)
{
    const Variant form =
        stack.victoreen ? Variant::NonEquivalentVictoreen : Variant::NonEquivalentLinear;
    MapResultCache::Inputs inputs;
    inputs.numbers = {static_cast<double>(form), stack.inputs.jumpSum,
                      static_cast<double>(stack.inputs.refValues.size())};
    const auto add = [&inputs](const QList<double>& numbers) {
        inputs.numbers << static_cast<double>(numbers.size()) << numbers;
    };
    for (const QList<double>& values : stack.inputs.refValues) {
        add(values);
    }
    add(stack.inputs.energies);
    add(stack.inputs.weights);
    add(stack.inputs.valences);
    inputs.maps = stack.maps;
    inputs.maps << stack.base;
    return inputs;
}

} // namespace analysis
