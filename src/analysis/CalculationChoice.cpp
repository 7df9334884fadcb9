#include "analysis/CalculationChoice.h"

namespace analysis
{

namespace
{

// Shared by both paths: the four-points family goes by the number of rows.
Choice chooseFourPoints(const MethodRadios& radios, int selected)
{
    if (selected == 3) {
        return {Variant::ThreePoints, 3};
    }
    if (selected == 4) {
        return {radios.exact ? Variant::ExactFourPoints : Variant::LeastSquare, 4};
    }
    if (selected >= 5 && radios.leastSquare) {
        return {Variant::LeastSquare, 4};
    }
    return {Variant::WrongCount, 4};
}

Choice chooseNonEquivalent(const MethodRadios& radios, int selected, int needed, Variant refusal)
{
    if (selected < needed) {
        return {refusal, needed};
    }
    return {radios.linearBackground ? Variant::NonEquivalentLinear
                                    : Variant::NonEquivalentVictoreen,
            needed};
}

} // namespace

Choice chooseForTarget(const MethodRadios& radios, int selected)
{
    if (!radios.nonEquivalent) {
        return chooseFourPoints(radios, selected);
    }
    return chooseNonEquivalent(radios, selected, radios.linearBackground ? 4 : 5,
                               Variant::WrongCount);
}

Choice chooseForMap(const MethodRadios& radios, int selected, int validReferences)
{
    if (!radios.nonEquivalent) {
        return chooseFourPoints(radios, selected);
    }
    const int unknowns = validReferences + (radios.linearBackground ? 2 : 3);
    return chooseNonEquivalent(radios, selected, unknowns, Variant::TooFew);
}

} // namespace analysis
