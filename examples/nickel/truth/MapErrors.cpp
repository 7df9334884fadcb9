#include "MapErrors.h"

#include <algorithm>

namespace nickel
{
namespace
{

using MutValues = std::array<double, mapEnergiesEv.size()>;

double commonShape(std::size_t row)
{
    return shape(compounds()[niII], mapEnergiesEv.at(row));
}

/// The edge jump of a pixel and its background at the energy of the V point. They result from
/// a fit of mut = jump * s + background to the absorbances of the pixel at the other energies.
struct PixelLine {
    double jump;
    double backgroundAtV;
};

PixelLine throughTwoPoints(const MapForm& form, const MutValues& mut)
{
    const std::size_t below = form.rows.at(0);
    const std::size_t above = form.rows.at(1);
    const double jump = (mut.at(above) - mut.at(below)) / (commonShape(above) - commonShape(below));
    return {jump, mut.at(below) - jump * commonShape(below)};
}

// Fits the plane s = c0 + c1 E + c2 mut by least squares and solves its equation for mut.
// The fit subtracts the means and solves the normal equations for c1 and c2 by Cramer's rule.
PixelLine leastSquares(const MapForm& form, const MutValues& mut)
{
    double meanE = 0.0;
    double meanM = 0.0;
    double meanS = 0.0;
    const double n = static_cast<double>(form.rows.size());
    for (const std::size_t row : form.rows) {
        meanE += mapEnergiesEv.at(row) / n;
        meanM += mut.at(row) / n;
        meanS += commonShape(row) / n;
    }
    double ee = 0.0;
    double em = 0.0;
    double mm = 0.0;
    double es = 0.0;
    double ms = 0.0;
    for (const std::size_t row : form.rows) {
        const double e = mapEnergiesEv.at(row) - meanE;
        const double m = mut.at(row) - meanM;
        const double s = commonShape(row) - meanS;
        ee += e * e;
        em += e * m;
        mm += m * m;
        es += e * s;
        ms += m * s;
    }
    const double determinant = ee * mm - em * em;
    const double c1 = (es * mm - ms * em) / determinant;
    const double c2 = (ms * ee - es * em) / determinant;
    const double c0 = meanS - c1 * meanE - c2 * meanM;
    return {1.0 / c2, -(c0 + c1 * mapEnergiesEv.at(vPoint)) / c2};
}

} // namespace

const std::vector<MapForm>& mapForms()
{
    // In the three-point form a pixel with the edge jump of the first reference has the
    // thickness 1; in the other forms, a pixel with the mean edge jump of both references.
    static const double first = compounds()[niII].jump;
    static const double mean = 0.5 * (compounds()[niII].jump + compounds()[niIII].jump);
    static const std::vector<MapForm> forms = {
        {"three points", "nickel_3points.dat", {1, 3}, false, first},
        {"exact four points", "nickel_exact4.dat", {0, 1, 3}, true, mean},
        {"least square", "nickel_leastsquare.dat", {0, 1, 3, 4, 5}, true, mean},
    };
    return forms;
}

MixtureEstimate estimateMixture(const MapForm& form, const MutValues& mut)
{
    const PixelLine line = form.fitsSlope ? leastSquares(form, mut) : throughTwoPoints(form, mut);
    const double shapeII = shape(compounds()[niII], mapEnergiesEv[vPoint]);
    const double shapeIII = shape(compounds()[niIII], mapEnergiesEv[vPoint]);
    const double pixelShape = (mut[vPoint] - line.backgroundAtV) / line.jump;
    return {(pixelShape - shapeIII) / (shapeII - shapeIII), line.jump};
}

ExpectedErrors expectedErrors(const MapForm& form, int x, int y)
{
    std::vector<double> mut;
    std::vector<double> sigmas;
    for (const double energyEv : mapEnergiesEv) {
        mut.push_back(pixelMut(x, y, energyEv));
        sigmas.push_back(countingSigma(mut.back(), pixelPhotons));
    }
    const auto calculation = [&form](const std::vector<double>& moved) {
        MutValues values;
        std::copy(moved.begin(), moved.end(), values.begin());
        const MixtureEstimate estimate = estimateMixture(form, values);
        return std::vector<double>{estimate.fraction, estimate.jump};
    };
    const std::vector<ExpectedError> errors = propagate(calculation, mut, sigmas);
    return {errors[0], errors[1]};
}

} // namespace nickel
