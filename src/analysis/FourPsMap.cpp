// The calculation on the stack of maps.

#include "panel/FourPs.h"

#include "analysis/CalculationChoice.h"
#include "analysis/MapCalculation.h"
#include "analysis/ReferenceSet.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/Histgram.h"
#include "display/WaitCursor.h"
#include "rows/AEPoint.h"

#include <utility>

using analysis::MapStack;
using analysis::Variant;

void FourPs::calcMap()
{
    const display::WaitCursor cursor(isReflexLong());
    const QList<analysis::PointState> points = pointStates();
    const analysis::Selection selection = analysis::selectedMapRows(points);
    const analysis::MethodRadios radios = methodRadios();
    if (!radios.nonEquivalent && selection.vRow < 0) {
        message(tr("V Point is not selected"));
        return;
    }
    const analysis::ReferenceSet refs = references();
    if (!mapMayRun(refs)) {
        return;
    }
    const analysis::Choice choice =
        analysis::chooseForMap(radios, selection.count, refs.validCount());
    switch (choice.variant) {
    case Variant::ThreePoints:
        map3ps(analysis::collectRowsLS(points, refs), refs);
        break;
    case Variant::ExactFourPoints:
        map4psExact(analysis::collectRowsExact(points, refs), refs);
        break;
    case Variant::LeastSquare:
        map4psLS(analysis::collectRowsLS(points, refs), refs);
        break;
    case Variant::WrongCount:
        sayWrongCount(selection.count, choice.needed);
        break;
    case Variant::TooFew:
        message(tr("Number of selected data sets %1 is less than %2.")
                    .arg(selection.count)
                    .arg(choice.needed));
        break;
    case Variant::NonEquivalentLinear:
        mapNEQ(false, points, refs);
        break;
    case Variant::NonEquivalentVictoreen:
        mapNEQ(true, points, refs);
        break;
    }
}

bool FourPs::mapMayRun(const analysis::ReferenceSet& refs)
{
    if (refs.validCount() < 2) {
        message(
            tr("Number of valied Ref Files is %1, which is less than 2.").arg(refs.validCount()));
    }
    const int broken = refs.rowWithoutValidCounterpart();
    if (broken >= 0) {
        message(tr("Ref File %1 is not valid.").arg(broken));
        return false;
    }
    return true;
}

void FourPs::map3ps(const analysis::CollectedRows& rows, const analysis::ReferenceSet& refs)
{
    if (!hasUsableRows(rows, 3)) {
        return;
    }
    runMapForm(Variant::ThreePoints, analysis::mapThreePoints, mapStack(rows, refs));
}

void FourPs::map4psExact(const analysis::CollectedRows& rows, const analysis::ReferenceSet& refs)
{
    if (!hasUsableRows(rows, 4)) {
        return;
    }
    runMapForm(Variant::ExactFourPoints, analysis::mapExactFourPoints, mapStack(rows, refs));
}

void FourPs::map4psLS(const analysis::CollectedRows& rows, const analysis::ReferenceSet& refs)
{
    if (!hasUsableRows(rows, 1)) {
        return;
    }
    runMapForm(Variant::LeastSquare, analysis::mapLeastSquare, mapStack(rows, refs));
}

void FourPs::runMapForm(Variant variant, MapForm form, const MapStack& stack)
{
    const std::pair sizeBefore(BaseData.xNum, BaseData.yNum);
    m_latestMap.run(
        analysis::inputsOf(variant, stack), BaseData, {HistV, HistT},
        [this] { startMapHistograms(); }, [&] { form(stack, BaseData, *HistV, *HistT); });
    // These methods know no shares of single references, and what the latest
    // non-equivalent run counted is not of this result.
    startReferenceHistograms();
    if (std::pair(BaseData.xNum, BaseData.yNum) != sizeBefore) {
        fitResultView();
    }
    Disps->update();
    // The limits stay, and so does the view of a map of the same size.
    MapDisp->Val->clear(); // it was a value of the result before
    MapDisp->update();
}

// Not by clearScale(), after which the next paint would set limits of its own
// over those that the user chose. Without a scale that paint fits the view.
void FourPs::fitResultView()
{
    if (MapDisp->DispA->hasScale && BaseData.xNum > 0 && BaseData.yNum > 0) {
        MapDisp->DispA->cc.setReal(0.0, 0.0, BaseData.xNum, BaseData.yNum);
    }
}

void FourPs::startMapHistograms()
{
    HistV->init();
    HistT->init();
}

MapStack FourPs::mapStack(const analysis::CollectedRows& rows, const analysis::ReferenceSet& refs)
{
    const auto point = [this](const analysis::PointNumbers& row) {
        return analysis::MapPoint{EPoints.at(row.row), row.energy, row.r1, row.r2};
    };
    MapStack stack;
    for (const analysis::PointNumbers& row : rows.others) {
        stack.others.append(point(row));
    }
    stack.v = point(rows.v);
    stack.r = rows.r;
    stack.mix = refs.valenceMix();
    stack.memory = &m_calculationMemory;
    return stack;
}
