#include "panel/InputReader.h"

#include "analysis/CalculationState.h"
#include "analysis/NeqColumns.h"
#include "display/LineEditText.h"
#include "panel/Widgets.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "rows/RefFiles.h"
#include "ui_FourPs.h"

#include <algorithm>

using display::numberIn;

namespace panel
{

namespace
{

constexpr int noMode = 5; // no button is checked; not a normalisation of AMutE

using ColumnButtons = std::array<const QAbstractButton*, analysis::columnCount>;
using ReferenceBoxes = std::array<const QAbstractButton*, analysis::neq::references>;

ColumnButtons recordBoxes(const Ui_FourPs& form)
{
    return {form.RecRatio1, form.RecRatio2,  form.RecRatio3, form.RecRatio4, form.RecDMut1,
            form.RecDMut2,  form.RecDMut3,   form.RecDMut4,  form.RecMut0,   form.RecC1,
            form.RecC2,     form.RecValence, form.RecAmount};
}

ColumnButtons mapRadios(const Ui_FourPs& form)
{
    return {form.MapRatio1, form.MapRatio2,  form.MapRatio3, form.MapRatio4, form.MapDMut1,
            form.MapDMut2,  form.MapDMut3,   form.MapDMut4,  form.MapMut0,   form.MapC1,
            form.MapC2,     form.MapValence, form.MapAmount};
}

ReferenceBoxes ratioBoxes(const Ui_FourPs& form)
{
    return {form.HgRatio1, form.HgRatio2, form.HgRatio3, form.HgRatio4};
}

ReferenceBoxes dMutBoxes(const Ui_FourPs& form)
{
    return {form.HgdMut1, form.HgdMut2, form.HgdMut3, form.HgdMut4};
}

bool isChecked(const QAbstractButton* button)
{
    return button->isChecked();
}

/// Returns the index of the last checked button of @p buttons, or -1 if none is checked.
template <class Buttons>
int lastChecked(const Buttons& buttons)
{
    const auto found = std::find_if(buttons.crbegin(), buttons.crend(), isChecked);
    return static_cast<int>(buttons.crend() - found) - 1;
}

bool isBoxOfUsedChecked(const ReferenceBoxes& boxes, const analysis::ReferenceSet& references,
                        int n)
{
    const int row = references.usedRow(n);
    return row >= 0 && boxes.at(static_cast<std::size_t>(row))->isChecked();
}

analysis::PointState stateOf(const AEPoint& row)
{
    analysis::PointState point;
    point.used = row.UseCB->isChecked();
    point.vPoint = row.VPointCB->isChecked();
    point.hasMap = row.loaded;
    row.energyAndMuts(0, 1, &point.energy, &point.mut[0], &point.mut[1]);
    row.energyAndMuts(2, 3, &point.energy, &point.mut[2], &point.mut[3]);
    point.mutT = numberIn(row.MutT);
    point.inFit = row.LCFCB->isChecked();
    return point;
}

} // namespace

InputReader::InputReader(const Widgets& widgets)
    : m_widgets(widgets)
{
}

QList<analysis::PointState> InputReader::points() const
{
    QList<analysis::PointState> points;
    for (const AEPoint* row : m_widgets.points) {
        points.append(stateOf(*row));
    }
    return points;
}

analysis::ReferenceSet InputReader::references() const
{
    QList<analysis::ReferenceState> states;
    for (const ARefFile* row : m_widgets.references->RefRows) {
        states.append({row->UseCB->isChecked(), row->XafsFS->valid, numberIn(row->Valence),
                       row->XafsFS->edgeJump()});
    }
    return analysis::ReferenceSet(states);
}

analysis::CalculationState InputReader::calculationState() const
{
    const Ui_FourPs& form = *m_widgets.form;
    const qsizetype referenceCount = m_widgets.references->RefRows.size();
    analysis::CalculationState state;
    state.points = points();
    state.maps = {m_widgets.points.cbegin(), m_widgets.points.cend()};
    state.references = references();
    state.spectra = {m_widgets.spectra.cbegin(), m_widgets.spectra.cbegin() + referenceCount};
    state.target = form.TargetFile;
    state.radios = {form.TypeNonEquiv->isChecked(), form.TypeTMKisExact->isChecked(),
                    form.TypeTMKisLS->isChecked(), form.NonEquivBGLinear->isChecked()};
    state.subPostForRef = form.SubPostEforRef->isChecked();
    state.subPostForTarget = form.SubPostEforTarget->isChecked();
    return state;
}

InputReader::Edge InputReader::edge() const
{
    const Ui_FourPs& form = *m_widgets.form;
    const double energy = numberIn(form.EdgeE);
    return {energy, energy + numberIn(form.PreEEndDE), energy + numberIn(form.PostEStartDE)};
}

int InputReader::normMode() const
{
    const Ui_FourPs& form = *m_widgets.form;
    if (form.NNone->isChecked()) {
        return AMutE::raw;
    }
    if (form.NBySubPre->isChecked()) {
        return AMutE::minusPreEdge;
    }
    if (form.NByEJ->isChecked()) {
        return AMutE::byEdgeJump;
    }
    return form.NBy2Vics->isChecked() ? AMutE::normalisedByLines : noMode;
}

int InputReader::checkedMapRow() const
{
    const auto& rows = m_widgets.points;
    const auto shown = std::find_if(rows.cbegin(), rows.cend(),
                                    [](const AEPoint* row) { return row->ShowMapB->isChecked(); });
    return shown == rows.cend() ? 0 : static_cast<int>(shown - rows.cbegin());
}

int InputReader::kindOfMap() const
{
    return std::max(lastChecked(mapRadios(*m_widgets.form)), 0);
}

std::array<bool, analysis::columnCount> InputReader::wantedColumns() const
{
    const ColumnButtons boxes = recordBoxes(*m_widgets.form);
    std::array<bool, analysis::columnCount> wanted{};
    std::transform(boxes.cbegin(), boxes.cend(), wanted.begin(), isChecked);
    return wanted;
}

bool InputReader::isRatioShown(const analysis::ReferenceSet& references, int n) const
{
    return isBoxOfUsedChecked(ratioBoxes(*m_widgets.form), references, n);
}

bool InputReader::isDMutShown(const analysis::ReferenceSet& references, int n) const
{
    return isBoxOfUsedChecked(dMutBoxes(*m_widgets.form), references, n);
}

int InputReader::shownRatioRow() const
{
    return lastChecked(ratioBoxes(*m_widgets.form));
}

bool InputReader::isGridShown() const
{
    return m_widgets.form->MapWGrid->isChecked();
}

} // namespace panel
