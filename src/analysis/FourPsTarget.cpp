// The calculation on the target spectrum.

#include "panel/FourPs.h"

#include "analysis/CalculationChoice.h"
#include "analysis/FourPointForms.h"
#include "analysis/ReferenceSet.h"
#include "display/WaitCursor.h"
#include "rows/AXafsFileSelect.h"

using analysis::CollectedRows;
using analysis::PointNumbers;
using analysis::PointState;
using analysis::Variant;

void FourPs::calcTarget()
{
    const display::WaitCursor cursor(isSpectrumWorkLong());
    const QList<PointState> points = pointStates();
    const analysis::Selection selection = analysis::selectedRows(points);
    if (selection.vRow < 0) {
        message(tr("V Point is not selected."));
        return;
    }
    const analysis::ReferenceSet refs = references();
    if (!targetMayRun(refs)) {
        return;
    }
    const analysis::Choice choice = analysis::chooseForTarget(methodRadios(), selection.count);
    switch (choice.variant) {
    case Variant::ThreePoints:
        target3ps(analysis::collectRowsLS(points, refs), points);
        break;
    case Variant::ExactFourPoints:
        target4psExact(analysis::collectRowsExact(points, refs), points);
        break;
    case Variant::LeastSquare:
        target4psLS(analysis::collectRowsLS(points, refs), points);
        break;
    case Variant::WrongCount:
    case Variant::TooFew:
        sayWrongCount(selection.count, choice.needed);
        break;
    case Variant::NonEquivalentLinear:
        targetNEQ(false, points, refs);
        break;
    case Variant::NonEquivalentVictoreen:
        targetNEQ(true, points, refs);
        break;
    }
}

// The checks on references and target, in the order of their messages. A
// reference that is not there at all has no message of its own: the count says
// it.
bool FourPs::targetMayRun(const analysis::ReferenceSet& refs)
{
    if (refs.validCount() < 2) {
        message(
            tr("Number of valied Ref Files is %1, which is less than 2.").arg(refs.validCount()));
    }
    const analysis::ReferenceState* first = refs.used(0);
    if (first && !first->valid) {
        message(tr("The 1st Ref File is not valid."));
        return false;
    }
    const analysis::ReferenceState* second = refs.used(1);
    if (second && !second->valid) {
        message(tr("The 2nd Ref File is not valid."));
        return false;
    }
    if (!first || !second) {
        return false;
    }
    if (!ui.TargetFile->valid) {
        message(tr("Target File1 is not valid."));
        return false;
    }
    return true;
}

void FourPs::target3ps(const CollectedRows& rows, const QList<PointState>& points)
{
    if (!hasUsableRows(rows, 3)) {
        return;
    }
    const PointNumbers& row0 = rows.others.at(0);
    const PointNumbers& row1 = rows.others.at(1);
    const double a = analysis::threePointFraction(
        {points.at(row0.row).mutT, points.at(row1.row).mutT, points.at(rows.v.row).mutT},
        {row0.r1, row1.r1, rows.v.r1}, {row0.r2, row1.r2, rows.v.r2});
    const QString text = tr("3ps: a = %1, Valence = %2").arg(a).arg(valenceMix(a));
    ui.CalcRes->setText(text);
    message(text);
    keepTargetResult(a);
}

void FourPs::target4psExact(const CollectedRows& rows, const QList<PointState>& points)
{
    if (!hasUsableRows(rows, 4)) {
        return;
    }
    const PointNumbers& row0 = rows.others.at(0);
    const PointNumbers& row1 = rows.others.at(1);
    const PointNumbers& row2 = rows.others.at(2);
    double tts = 0.0;
    const double a = analysis::exactFourPoints(
        points.at(row0.row).mutT, points.at(row1.row).mutT, points.at(row2.row).mutT,
        points.at(rows.v.row).mutT, row0.r1, row1.r1, row2.r1, rows.v.r1, row0.r2, row1.r2, row2.r2,
        rows.v.r2, row0.energy, row1.energy, row2.energy, rows.v.energy, rows.r, &tts);
    // This variant alone leaves the message box as it is.
    ui.CalcRes->setText(tr("a = %1, Valence = %2, t/ts = %3").arg(a).arg(valenceMix(a)).arg(tts));
    keepTargetResult(a);
}

void FourPs::target4psLS(const CollectedRows& rows, const QList<PointState>& points)
{
    QList<double> t;
    QList<double> r1;
    QList<double> r2;
    QList<double> energies;
    for (const PointNumbers& row : rows.others) {
        t.append(points.at(row.row).mutT);
        r1.append(row.r1);
        r2.append(row.r2);
        energies.append(row.energy);
    }
    double tts = 0.0;
    const double a =
        analysis::leastSquareFourPoints(points.at(rows.v.row).mutT, rows.v.r1, rows.v.r2,
                                        rows.v.energy, t, r1, r2, energies, rows.r, &tts);
    const QString text =
        tr("4ps2: a = %1, Valence = %2, t/ts = %3").arg(a).arg(valenceMix(a)).arg(tts);
    ui.CalcRes->setText(text);
    message(text);
    keepTargetResult(a);
}

void FourPs::keepTargetResult(double a)
{
    TargetV = a;
    TargetT = valenceMix(a);
}
