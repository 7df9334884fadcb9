#include "panel/Wording.h"

#include "analysis/CalculationMessage.h"
#include "analysis/LinearFit.h"
#include "analysis/NumberText.h"
#include "analysis/TargetResult.h"

namespace panel
{

using analysis::MessageId;
using analysis::Variant;

QString Wording::of(const analysis::Message& refusal)
{
    switch (refusal.id) {
    case MessageId::NoTargetVPoint:
        return tr("V Point is not selected.");
    case MessageId::NoMapVPoint:
        return tr("V Point is not selected");
    case MessageId::FewReferences:
        return tr("Number of valied Ref Files is %1, which is less than 2.").arg(refusal.number);
    case MessageId::FirstReferenceInvalid:
        return tr("The 1st Ref File is not valid.");
    case MessageId::SecondReferenceInvalid:
        return tr("The 2nd Ref File is not valid.");
    case MessageId::ReferenceInvalid:
        return tr("Ref File %1 is not valid.").arg(refusal.number);
    case MessageId::TargetInvalid:
        return tr("Target File1 is not valid.");
    case MessageId::WrongCount:
        return tr("Number of selected data sets %1 is not %2.")
            .arg(refusal.number)
            .arg(refusal.needed);
    case MessageId::TooFewRows:
        return tr("Number of selected data sets %1 is less than %2.")
            .arg(refusal.number)
            .arg(refusal.needed);
    case MessageId::NoFitRange:
        return tr("Energy Range is not selected, which should by selected by CB of TR.");
    case MessageId::FewFitReferences:
        return tr("Number of Valid Reference files is %1, which is less than 2")
            .arg(refusal.number);
    }
    return {};
}

QString Wording::of(const analysis::TargetResult& result)
{
    switch (result.variant) {
    case Variant::ThreePoints:
        return tr("3ps: a = %1, Valence = %2").arg(result.a).arg(result.valence);
    case Variant::ExactFourPoints:
        return tr("a = %1, Valence = %2, t/ts = %3")
            .arg(result.a)
            .arg(result.valence)
            .arg(result.thickness);
    case Variant::LeastSquare:
        return tr("4ps2: a = %1, Valence = %2, t/ts = %3")
            .arg(result.a)
            .arg(result.valence)
            .arg(result.thickness);
    case Variant::NonEquivalentLinear:
    case Variant::NonEquivalentVictoreen:
        break;
    }
    QList<double> shares;
    for (const analysis::ReferencePart& part : result.parts) {
        shares.append(part.share);
    }
    return tr("Result of NEQ :: ") + analysis::signedTexts(shares) +
           tr(", Valence = %1, t = %2")
               .arg(analysis::signedText(result.valence), analysis::signedText(result.thickness));
}

QString Wording::of(const analysis::LinearFit& fit)
{
    return tr("Result of LCF :: ") + analysis::signedTexts(fit.fractions) +
           tr(", Valence = %1, Base = %2")
               .arg(analysis::signedText(fit.valence), analysis::signedText(fit.base));
}

QString Wording::cannotOpen(const QString& path)
{
    return tr("Can't open the file [%1]").arg(path);
}

} // namespace panel
