#include "analysis/CalculationChoice.h"

namespace analysis
{

namespace
{

Choice refuse(MessageId id, int selected, int needed)
{
    return {std::nullopt, {id, selected, needed}};
}

// The number of rows and the radio buttons select the form, by the same rules for target
// and map.
Choice chooseFourPoints(const MethodRadios& radios, int selected)
{
    if (selected == 3) {
        return {Variant::ThreePoints, {}};
    }
    if (selected == 4) {
        return {radios.exact ? Variant::ExactFourPoints : Variant::LeastSquare, {}};
    }
    if (selected >= 5 && radios.leastSquare) {
        return {Variant::LeastSquare, {}};
    }
    return refuse(MessageId::WrongCount, selected, 4);
}

Variant nonEquivalent(const MethodRadios& radios)
{
    return radios.linearBackground ? Variant::NonEquivalentLinear : Variant::NonEquivalentVictoreen;
}

} // namespace

Choice chooseForTarget(const MethodRadios& radios, int selected)
{
    if (!radios.nonEquivalent) {
        return chooseFourPoints(radios, selected);
    }
    const int needed = radios.linearBackground ? 4 : 5;
    if (selected < needed) {
        return refuse(MessageId::WrongCount, selected, needed);
    }
    return {nonEquivalent(radios), {}};
}

Choice chooseForMap(const MethodRadios& radios, int selected, int validReferences)
{
    if (!radios.nonEquivalent) {
        return chooseFourPoints(radios, selected);
    }
    const int unknowns = validReferences + (radios.linearBackground ? 2 : 3);
    if (selected < unknowns) {
        return refuse(MessageId::TooFewRows, selected, unknowns);
    }
    return {nonEquivalent(radios), {}};
}

} // namespace analysis
