// The linear combination fit of the target spectrum.

#include "panel/FourPs.h"

#include "analysis/LinearFit.h"
#include "analysis/NumberText.h"
#include "analysis/ReferenceSet.h"
#include "display/Displays.h"
#include "display/WaitCursor.h"
#include "rows/AXafsFileSelect.h"

void FourPs::lcf()
{
    const display::WaitCursor cursor(isSpectrumWorkLong());
    const analysis::FitRange range = analysis::fitRange(pointStates());
    if (!range.isSelected()) {
        message(tr("Energy Range is not selected, which should by selected by CB of TR."));
        return;
    }
    const analysis::ReferenceSet refs = references();
    if (refs.validCount() < 2) {
        message(tr("Number of Valid Reference files is %1, which is less than 2")
                    .arg(refs.validCount()));
        return;
    }
    const analysis::LinearFit fit = analysis::fitLinearCombination(
        *ui.TargetFile, usedSpectra(refs), refs.usedValences(), range);
    const QString text =
        tr("Result of LCF :: ") + analysis::signedTexts(fit.fractions) +
        tr(", Valence = %1, Base = %2")
            .arg(analysis::signedText(fit.valence), analysis::signedText(fit.base));
    message(text);
    ui.LCFRes->setText(text);
    LCFvs4PS.append({TargetV, TargetT, fit.fractions.first(), fit.valence, LCFColor});
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
