#include "random/ExpectedResult.h"

#include "display/Histgram.h"
#include "panel/FourPs.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "support/PlainFits.h"
#include "support/PlainMapForms.h"
#include "support/RandomMaps.h"

#include <algorithm>

using analysis::HistogramCounts;

namespace tests
{

namespace
{

QList<Histgram*> histogramsOf(const FourPs& panel)
{
    return QList<Histgram*>{panel.HistV, panel.HistT} + panel.HistRatio + panel.HistDMut;
}

/// A histogram with all counts 0. Its limits and number of bins are read from the edits.
HistogramCounts emptyCounts(const Histgram* histogram)
{
    const double from = histogram->fromEdit->text().toDouble();
    const double to = histogram->toEdit->text().toDouble();
    const double asked = histogram->boxesEdit->text().toDouble();
    HistogramCounts counts;
    if (asked >= 1.0) {
        counts.boxes = static_cast<int>(std::min(asked, double{HistogramCounts::maxBoxes}));
    }
    counts.step = (to - from) / (counts.boxes - 1);
    counts.minV = from - counts.step * 0.5;
    counts.maxV = to + counts.step * 0.5;
    counts.bins.fill(0, counts.boxes);
    return counts;
}

PlainHistogram plainOf(const HistogramCounts& counts)
{
    return {counts.minV, counts.step, counts.bins, 0, 0, 0};
}

void take(HistogramCounts& counts, const PlainHistogram& plain)
{
    counts.bins = plain.bins;
    counts.total = plain.total;
    counts.under = plain.under;
    counts.over = plain.over;
}

bool sameCounts(const HistogramCounts& a, const HistogramCounts& b)
{
    return sameNumbers({a.minV, a.maxV, a.step}, {b.minV, b.maxV, b.step}) && a.boxes == b.boxes &&
           a.total == b.total && a.under == b.under && a.over == b.over &&
           std::equal(a.bins.cbegin(), a.bins.cend(), b.bins.cbegin(), b.bins.cend());
}

} // namespace

MapResult resultOf(const FourPs& panel)
{
    MapResult result{deepCopy(panel.BaseData), {}};
    const QList<Histgram*> histograms = histogramsOf(panel);
    for (const Histgram* histogram : histograms) {
        result.counts.append(*histogram);
    }
    return result;
}

QString differenceOf(const MapResult& a, const MapResult& b)
{
    for (qsizetype i = 0; i < a.counts.size(); ++i) {
        if (!sameCounts(a.counts.at(i), b.counts.at(i))) {
            return QStringLiteral("histogram %1").arg(i);
        }
    }
    return differenceOf(a.map, b.map);
}

bool ExpectedResult::isRefused() const
{
    return form() == Form::None;
}

ExpectedResult::Form ExpectedResult::form() const
{
    int selected = 0;
    bool hasV = false;
    for (const AEPoint* row : m_panel.EPoints) {
        if (row->UseCB->isChecked() && row->loaded) {
            ++selected;
            hasV = hasV || row->VPointCB->isChecked();
        }
    }
    const bool isNonEquivalent = m_panel.ui.TypeNonEquiv->isChecked();
    if ((!isNonEquivalent && !hasV) || hasBrokenReference() || usedReferences().size() < 2) {
        return Form::None;
    }
    if (!isNonEquivalent) {
        return fourPointForm(selected);
    }
    const int unknowns = validReferences() + (m_panel.ui.NonEquivBGLinear->isChecked() ? 2 : 3);
    return selected < unknowns ? Form::None : Form::NonEquivalent;
}

ExpectedResult::Form ExpectedResult::fourPointForm(int selected) const
{
    Form form = Form::None;
    int needed = 1;
    if (selected == 3) {
        form = Form::ThreePoints;
        needed = 3;
    } else if (selected == 4 && m_panel.ui.TypeTMKisExact->isChecked()) {
        form = Form::Exact;
        needed = 4;
    } else if (selected == 4 || (selected > 4 && m_panel.ui.TypeTMKisLS->isChecked())) {
        form = Form::LeastSquare;
    }
    int others = 0;
    for (const int row : usedRows()) {
        others += m_panel.EPoints.at(row)->VPointCB->isChecked() ? 0 : 1;
    }
    return others + 1 < needed ? Form::None : form; // plus 1 for the V row
}

// Reproduces an odd rule of the program on purpose. For each reference row i in use, the
// list of the references in use must have an entry at index i, and the reference of this
// entry must be valid. Example: the rows 0 and 2 are in use, so the list has two
// entries, at the indices 0 and 1. Row 2 needs an entry at index 2, which does not exist, so
// the calculation is refused.
bool ExpectedResult::hasBrokenReference() const
{
    const QList<int> used = usedReferences();
    return std::any_of(used.cbegin(), used.cend(), [&](int row) {
        return row >= used.size() || !m_panel.XafsFiles.at(used.at(row))->valid;
    });
}

QList<int> ExpectedResult::usedReferences() const
{
    QList<int> used;
    for (int i = 0; i < m_panel.Refs.RefRows.size(); ++i) {
        if (m_panel.Refs.RefRows.at(i)->UseCB->isChecked()) {
            used.append(i);
        }
    }
    return used;
}

int ExpectedResult::validReferences() const
{
    int valid = 0;
    for (const int row : usedReferences()) {
        valid += m_panel.XafsFiles.at(row)->valid ? 1 : 0;
    }
    return valid;
}

QList<int> ExpectedResult::usedRows() const
{
    QList<int> used;
    for (int i = 0; i < m_panel.EPoints.size(); ++i) {
        if (m_panel.EPoints.at(i)->UseCB->isChecked()) {
            used.append(i);
        }
    }
    return used;
}

double ExpectedResult::edgeJump(int reference) const
{
    const AMutE* spectrum = m_panel.XafsFiles.at(reference);
    return spectrum->postValue(spectrum->edgeEnergy) - spectrum->preValue(spectrum->edgeEnergy);
}

MapResult ExpectedResult::calculated(const MapResult& before) const
{
    MapResult result{before.map, {}};
    const QList<Histgram*> histograms = histogramsOf(m_panel);
    for (const Histgram* histogram : histograms) {
        result.counts.append(emptyCounts(histogram));
    }
    if (form() == Form::NonEquivalent) {
        calculateNonEquivalent(result);
    } else {
        calculateFourPoints(result);
    }
    return result;
}

void ExpectedResult::calculateFourPoints(MapResult& result) const
{
    const QList<int> references = usedReferences();
    PlainStack stack;
    for (int i = 0; i < m_panel.Refs.RefRows.size(); ++i) {
        const ARefFile* row = m_panel.Refs.RefRows.at(i);
        stack.references.append({references.contains(i), row->XafsFS->valid, row->Valence->text()});
    }
    for (const int i : usedRows()) {
        const AEPoint* row = m_panel.EPoints.at(i);
        stack.points.append({row, row->VPointCB->isChecked(), row->Energy->text(),
                             row->mutEdits.at(references.at(0))->text(),
                             row->mutEdits.at(references.at(1))->text()});
    }
    stack.r = edgeJump(references.at(0)) / edgeJump(references.at(1));
    PlainHistogram valence = plainOf(result.counts.at(0));
    PlainHistogram thickness = plainOf(result.counts.at(1));
    switch (form()) {
    case Form::ThreePoints:
        plainThreePoints(stack, result.map, valence, thickness);
        break;
    case Form::Exact:
        plainExactFourPoints(stack, result.map, valence, thickness);
        break;
    default:
        plainLeastSquare(stack, result.map, valence, thickness);
        break;
    }
    take(result.counts[0], valence);
    take(result.counts[1], thickness);
}

void ExpectedResult::calculateNonEquivalent(MapResult& result) const
{
    PlainNeqStack stack;
    stack.victoreen = !m_panel.ui.NonEquivBGLinear->isChecked();
    const QList<int> references = usedReferences().first(validReferences());
    for (const int reference : references) {
        stack.jumpSum += edgeJump(reference);
        stack.valences.append(m_panel.Refs.RefRows.at(reference)->Valence->text());
    }
    const int kind =
        m_panel.ui.SubPostEforRef->isChecked() ? AMutE::minusPostEdge : AMutE::minusPreEdge;
    for (const int row : usedRows()) {
        stack.maps.append(m_panel.EPoints.at(row));
        stack.energies.append(m_panel.EPoints.at(row)->Energy->text().toDouble());
    }
    for (const int reference : references) {
        stack.weights.append(edgeJump(reference) / stack.jumpSum);
        QList<double> values;
        for (const double energy : std::as_const(stack.energies)) {
            values.append(m_panel.XafsFiles.at(reference)->valueAt(kind, energy));
        }
        stack.refValues.append(values);
    }
    PlainNeqHistograms plain;
    QList<PlainHistogram> all;
    for (const HistogramCounts& counts : std::as_const(result.counts)) {
        all.append(plainOf(counts));
    }
    const qsizetype n = m_panel.HistRatio.size();
    plain = {all.at(0), all.at(1), all.mid(2, n), all.mid(2 + n, n)};
    plainNonEquivalent(stack, result.map, plain);
    all = QList<PlainHistogram>{plain.valence, plain.total} + plain.ratio + plain.dMut;
    for (qsizetype i = 0; i < all.size(); ++i) {
        take(result.counts[i], all.at(i));
    }
}

} // namespace tests
