// FourPs: the linear combination fit of the target spectrum, and the plot "LCF vs 4PS".

#include "panel/FourPs.h"

#include "analysis/CalculationPlan.h"
#include "analysis/CalculationState.h"
#include "display/Displays.h"
#include "display/WaitCursor.h"
#include "panel/Wording.h"

void FourPs::lcf()
{
    const display::WaitCursor cursor(isSpectrumWorkLong());
    const analysis::CalculationState state = m_inputs.calculationState();
    const analysis::FitPlan plan = analysis::planFit(state);
    showMessages(plan.messages);
    if (!plan.range) {
        return;
    }
    const analysis::LinearFit fit = analysis::fitTarget(state, *plan.range);
    const QString text = panel::Wording::of(fit);
    message(text);
    ui.LCFRes->setText(text);
    LCFvs4PS.append(analysis::comparisonPoint(TargetV, TargetT, fit, LCFColor));
    delete LCFMut;
    LCFMut = new AMutE;
    LCFMut->points = fit.curve;
    Disps->update();
}

void FourPs::clearLCFvs4PS(MouseC*)
{
    LCFvs4PS.clear();
    LCFColor = 0;
    Disps->update();
}

void FourPs::newColorLCFvs4PS(MouseC*)
{
    ++LCFColor;
    if (LCFColor >= Colors.colors.size()) {
        LCFColor = 0;
    }
}
