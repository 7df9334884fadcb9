#include "analysis/NonEquivalentMap.h"

#include "analysis/CalculationChoice.h"
#include "analysis/HistogramCounts.h"
#include "analysis/PixelWalk.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace analysis
{

namespace
{

// A pixel's values from the mut at each row, finished as the maps do it.
class PixelSolver
{
public:
    explicit PixelSolver(const NeqStack& stack)
        : m_inputs(stack.inputs)
        , m_fit(stack.victoreen, m_inputs.refValues, m_inputs.energies, m_inputs.weights)
    {
    }

    int references() const { return m_fit.references(); }
    int rows() const { return m_fit.rows(); }

    QList<double> values(std::span<const double> t) const
    {
        QList<double> values(neq::count);
        const std::span<double, neq::count> out(values);
        const double sum = m_fit.solve(t, out);
        for (std::size_t i = 0; i < static_cast<std::size_t>(m_fit.references()); ++i) {
            // From left to right, unlike on the way of the target: see there.
            out[neq::dMut + i] = out[i] * sum * m_inputs.jumpSum;
        }
        out[neq::valence] = neqValence(values, m_inputs.valences);
        out[neq::totalDMut] = sum * m_inputs.jumpSum;
        return values;
    }

private:
    const NeqInputs& m_inputs;
    NeqFit m_fit;
};

void countPixel(const QList<double>& values, int references, const NeqHistograms& histograms)
{
    histograms.valence->add(values.at(neq::valence));
    histograms.totalDMut->add(values.at(neq::totalDMut));
    for (int i = 0; i < references; ++i) {
        histograms.share.at(i)->add(values.at(neq::share + i));
        histograms.dMut.at(i)->add(values.at(neq::dMut + i));
    }
}

} // namespace

void mapNonEquivalent(const NeqStack& stack, A2DData& result, const NeqHistograms& histograms)
{
    const PixelSolver solver(stack);
    Q_ASSERT(solver.rows() == stack.maps.size());
    const auto rows = static_cast<std::size_t>(stack.maps.size());
    std::vector<double> t(rows); // reused from pixel to pixel
    std::vector<double> previous;
    QList<double> values;
    walkPixels(*stack.base, result, [&](int x, int y, A2DRow& row) {
        for (std::size_t k = 0; k < rows; ++k) {
            t[k] = data::pixelMut(*stack.maps.at(static_cast<qsizetype>(k)), x, y);
        }
        // A scan that was stopped early claims more pixels than it has. Those
        // beyond all data are alike and share one list: no time and no memory
        // goes into their values.
        if (previous.empty() ||
            std::memcmp(previous.data(), t.data(), rows * sizeof(double)) != 0) {
            values = solver.values(t);
            previous = t;
        }
        row.values = values;
        row.intensity = values.at(neq::share);
        row.i0 = values.at(neq::totalDMut);
        countPixel(values, solver.references(), histograms);
    });
    result.extended = true;
}

MapMemory::Inputs inputsOf(const NeqStack& stack)
{
    const Variant form =
        stack.victoreen ? Variant::NonEquivalentVictoreen : Variant::NonEquivalentLinear;
    MapMemory::Inputs inputs;
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
