// Tests the calculations on spectra (such as pre-edge and post-edge lines, interpolation and
// linear fits), the collection of energy rows and references, the non-equivalent method, the
// choice of the calculation form, the search for the extremes of a map, and the search for
// the pixel at a position.

#include "support/ByteReader.h"
#include "support/FuzzTarget.h"
#include "support/PlainFits.h"
#include "support/SameDouble.h"

#include "analysis/CalculationChoice.h"
#include "analysis/LinearFit.h"
#include "analysis/MapScan.h"
#include "analysis/NonEquivalent.h"
#include "analysis/PlaneLines.h"
#include "analysis/ReferenceSet.h"
#include "analysis/RowCollection.h"
#include "data/AMutE.h"

#include <algorithm>
#include <cmath>
#include <limits>

using data::VictoreenLine;

namespace
{

using tests::sameDouble;

constexpr int maxPoints = 10;

bool same(const QList<double>& a, const QList<double>& b)
{
    return std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend(), sameDouble);
}

QList<double> someDoubles(fuzz::ByteReader& in, int most)
{
    QList<double> numbers;
    for (int i = in.number(0, most); i > 0; --i) {
        numbers.append(in.anyDouble());
    }
    return numbers;
}

AMutE nextSpectrum(fuzz::ByteReader& in)
{
    AMutE spectrum;
    const bool isTame = in.number(0, 1) == 0;
    const auto number = [&] { return isTame ? 0.25 * in.number(0, 60) : in.anyDouble(); };
    for (int i = in.number(0, maxPoints); i > 0; --i) {
        spectrum.points.append({in.anyDouble(), number(), number()});
    }
    spectrum.preEdgeEnd = number();
    spectrum.postEdgeStart = number();
    spectrum.edgeEnergy = number();
    spectrum.dE = in.number(0, 1) == 0 ? 0.0 : number();
    return spectrum;
}

/// Reference implementation: the least-squares fit of a Victoreen line c + a L^3 + b L^4,
/// where L is the wavelength in angstroms, to the points of the pre-edge range or, if @p pre
/// is false, of the post-edge range.
VictoreenLine plainLine(const AMutE& spectrum, bool pre)
{
    QList<double> energies;
    QList<double> values;
    for (const MutPoint& point : spectrum.points) {
        const double e = point.energy - spectrum.dE;
        if (pre ? e < spectrum.preEdgeEnd : e > spectrum.postEdgeStart) {
            energies.append(e);
            values.append(point.mut);
        }
    }
    const QList<double> x = tests::plainCoefficients(
        3,
        [&](qsizetype row, double* phi) {
            const double L = AMutE::hcEvAngstrom / energies.at(row);
            phi[0] = 1.0;
            phi[1] = L * L * L;
            phi[2] = L * L * L * L;
        },
        values);
    return {x.at(0), x.at(1), x.at(2)};
}

bool same(const VictoreenLine& a, const VictoreenLine& b)
{
    return sameDouble(a.c, b.c) && sameDouble(a.a, b.a) && sameDouble(a.b, b.b);
}

void checkLines(AMutE& spectrum)
{
    const VictoreenLine before{1.0, 2.0, 3.0};
    spectrum.preLine = spectrum.postLine = before;
    spectrum.fitLines();
    const bool isFitted = !spectrum.points.isEmpty();
    FUZZ_REQUIRE(same(spectrum.preLine, isFitted ? plainLine(spectrum, true) : before));
    FUZZ_REQUIRE(same(spectrum.postLine, isFitted ? plainLine(spectrum, false) : before));
}

double plainEdge(const AMutE& spectrum)
{
    const QList<MutPoint>& points = spectrum.points;
    if (points.isEmpty()) {
        return 0.0;
    }
    double edge = 0.5 * (points.first().energy - spectrum.dE);
    double steepest = -1.0;
    for (qsizetype i = 1; i < points.size(); ++i) {
        const double step = points.at(i).mut - points.at(i - 1).mut;
        if (step > steepest) {
            steepest = step;
            edge = 0.5 *
                   ((points.at(i - 1).energy - spectrum.dE) + (points.at(i).energy - spectrum.dE));
        }
    }
    return edge;
}

/// Reference implementation of indexBelow() by linear search.
int plainBracket(const AMutE& spectrum, double E)
{
    const int n = static_cast<int>(spectrum.points.size());
    const auto energy = [&](int i) { return spectrum.points.at(i).energy - spectrum.dE; };
    if (n > 0 && !(E < energy(0))) {
        if (E > energy(n - 1)) {
            return n - 2;
        }
        for (int i = 0; i + 1 < n; ++i) {
            if (energy(i) <= E && E <= energy(i + 1)) {
                return i;
            }
        }
    }
    return 0;
}

void checkBrackets(fuzz::ByteReader& in, const AMutE& spectrum)
{
    QList<double> energies = someDoubles(in, 6);
    for (const MutPoint& point : spectrum.points) {
        energies.append(point.energy - spectrum.dE);
    }
    const QList<int> together = spectrum.indicesBelow(energies);
    const QList<double> normalised = spectrum.normalisedAt(energies);
    FUZZ_REQUIRE(together.size() == energies.size() && normalised.size() == energies.size());
    for (qsizetype k = 0; k < energies.size(); ++k) {
        const double E = energies.at(k);
        FUZZ_REQUIRE(together.at(k) == plainBracket(spectrum, E));
        FUZZ_REQUIRE(spectrum.indexBelow(E) == together.at(k));
        FUZZ_REQUIRE(sameDouble(spectrum.normalisedAt(E), normalised.at(k)));
        FUZZ_REQUIRE(sameDouble(spectrum.mutAt(E), spectrum.valueAt(AMutE::raw, E)));
        double out = -7.0;
        if (!spectrum.backgroundSubtractedAt(E, k % 2 == 0, &out)) {
            FUZZ_REQUIRE(out == -7.0);
        }
    }
}

void checkRange(fuzz::ByteReader& in, const AMutE& spectrum)
{
    const int kind = in.number(-1, 6);
    const double from = in.anyDouble();
    const double to = in.anyDouble();
    double low = 1e300;
    double high = -1e300;
    double plainLow = low;
    double plainHigh = high;
    spectrum.valueRange(kind, from, to, &low, &high);
    for (int i = 0; i < spectrum.points.size(); ++i) {
        const double e = spectrum.points.at(i).energy - spectrum.dE;
        if (e >= from && e <= to) {
            const double value = spectrum.value(kind, i);
            plainLow = value < plainLow ? value : plainLow;
            plainHigh = value > plainHigh ? value : plainHigh;
            FUZZ_REQUIRE(sameDouble(value, spectrum.checkedValue(kind, i)));
        }
    }
    FUZZ_REQUIRE(low == plainLow && high == plainHigh);
    const int outside = in.oneOf(QList<int>{-1, std::numeric_limits<int>::min(),
                                            static_cast<int>(spectrum.points.size()),
                                            std::numeric_limits<int>::max()});
    FUZZ_REQUIRE(spectrum.value(kind, outside) == 0.0);
    FUZZ_REQUIRE(spectrum.checkedValue(kind, outside) == 0.0);
}

void checkFit(fuzz::ByteReader& in, AMutE& target)
{
    QList<AMutE> references;
    QList<double> valences;
    for (int k = in.number(1, 4); k > 0; --k) {
        references.append(nextSpectrum(in));
        references.last().fitLines();
        valences.append(in.anyDouble());
    }
    QList<const AMutE*> pointers;
    for (const AMutE& reference : std::as_const(references)) {
        pointers.append(&reference);
    }
    analysis::FitRange range;
    range.energies.low = in.anyDouble();
    range.energies.high = in.anyDouble();
    const auto fit = analysis::fitLinearCombination(target, pointers, valences, range);
    const tests::PlainFit plain =
        tests::plainLinearFit(target, pointers, valences, range.energies.low, range.energies.high);
    FUZZ_REQUIRE(same(fit.fractions, plain.fractions));
    FUZZ_REQUIRE(sameDouble(fit.valence, plain.valence) && sameDouble(fit.base, plain.base));
    FUZZ_REQUIRE(fit.curve.size() == plain.curve.size());
    for (qsizetype i = 0; i < fit.curve.size(); ++i) {
        FUZZ_REQUIRE(sameDouble(fit.curve.at(i).angle, plain.curve.at(i).angle));
        FUZZ_REQUIRE(sameDouble(fit.curve.at(i).energy, plain.curve.at(i).energy));
        FUZZ_REQUIRE(sameDouble(fit.curve.at(i).mut, plain.curve.at(i).mut));
    }
}

void trySpectra(fuzz::ByteReader& in)
{
    AMutE target = nextSpectrum(in);
    checkLines(target);
    FUZZ_REQUIRE(sameDouble(target.findEdge(), plainEdge(target)));
    checkBrackets(in, target);
    checkRange(in, target);
    checkFit(in, target);
}

QList<analysis::ReferenceState> nextReferences(fuzz::ByteReader& in)
{
    QList<analysis::ReferenceState> rows;
    for (int i = in.number(0, 4); i > 0; --i) {
        const int boxes = in.number(0, 3);
        rows.append({(boxes & 1) != 0, (boxes & 2) != 0, in.anyDouble(), in.anyDouble()});
    }
    return rows;
}

QList<analysis::PointState> nextPoints(fuzz::ByteReader& in)
{
    QList<analysis::PointState> points;
    for (int i = in.number(0, 7); i > 0; --i) {
        analysis::PointState point;
        const int boxes = in.number(0, 15);
        point.used = (boxes & 1) != 0;
        point.vPoint = (boxes & 2) != 0;
        point.hasMap = (boxes & 4) != 0;
        point.inFit = (boxes & 8) != 0;
        point.energy = in.anyDouble();
        for (double& mut : point.mut) {
            mut = in.anyDouble();
        }
        points.append(point);
    }
    return points;
}

void checkReferences(const QList<analysis::ReferenceState>& rows,
                     const analysis::ReferenceSet& references)
{
    QList<int> used;
    int valid = 0;
    double low = 10.0;
    double high = 0.0;
    for (int i = 0; i < rows.size(); ++i) {
        if (rows.at(i).used) {
            used.append(i);
            valid += rows.at(i).valid ? 1 : 0;
            low = rows.at(i).valence < low ? rows.at(i).valence : low;
            high = rows.at(i).valence > high ? rows.at(i).valence : high;
        }
    }
    FUZZ_REQUIRE(references.validCount() == valid);
    double jumps = 0.0;
    for (int k = -1; k <= rows.size(); ++k) {
        FUZZ_REQUIRE(references.usedRow(k) == used.value(k, -1));
        FUZZ_REQUIRE((references.used(k) == nullptr) == (k < 0 || k >= used.size()));
        jumps += k >= 0 && k < valid ? rows.at(used.at(k)).edgeJump : 0.0;
    }
    FUZZ_REQUIRE(sameDouble(references.totalJump(), jumps));
    FUZZ_REQUIRE(references.valenceRange().low == low && references.valenceRange().high == high);
    FUZZ_REQUIRE(references.usedValences().size() == valid);
    FUZZ_REQUIRE(references.valenceMix().enoughReferences == (valid >= 2));
    FUZZ_REQUIRE(std::isnan(references.edgeJumpRatio()) || used.size() >= 2);
    const int missing = references.rowWithoutValidCounterpart();
    FUZZ_REQUIRE(missing >= -1 && missing < rows.size());
    FUZZ_REQUIRE(missing < 0 || rows.at(missing).used);
    for (int kind = -1; kind <= 14; ++kind) {
        const auto limits = analysis::mapLimits(kind, references);
        const bool hasLimits = kind >= 0 && kind <= 12 && kind != 9 && kind != 10;
        FUZZ_REQUIRE(limits.has_value() == hasLimits);
    }
}

void checkPlane(const analysis::CollectedRows& rows)
{
    double n = 0.0;
    double x = 0.0;
    double y = 0.0;
    double xx = 0.0;
    double xy = 0.0;
    for (const analysis::PointNumbers& row : rows.others) {
        n += 1.0;
        x += row.r1;
        y += row.r2;
        xx += row.r1 * row.r1;
        xy += row.r1 * row.r2;
    }
    const analysis::PlaneLines lines = analysis::planeLines(rows);
    const double a = (n * xy - x * y) / (n * xx - x * x);
    FUZZ_REQUIRE(sameDouble(lines.a, a) && sameDouble(lines.b, (y - a * x) / n));
    FUZZ_REQUIRE(sameDouble(lines.k1, 1.0 / rows.r));
    const double k2 =
        rows.v.row < 0 ? std::numeric_limits<double>::quiet_NaN() : rows.v.r2 / rows.v.r1;
    FUZZ_REQUIRE(sameDouble(lines.k2, k2));
}

void checkCollection(const QList<analysis::PointState>& points,
                     const analysis::ReferenceSet& references)
{
    const auto all = analysis::collectRowsLS(points, references);
    const auto three = analysis::collectRowsExact(points, references);
    qsizetype others = 0;
    int v = -1;
    const bool isCollected = references.usedRow(1) >= 0;
    for (int i = 0; i < points.size() && isCollected; ++i) {
        const analysis::PointState& point = points.at(i);
        if (!point.used) {
            continue;
        }
        if (point.vPoint) {
            v = i;
            continue;
        }
        const analysis::PointNumbers& row = all.others.at(others++);
        const auto first = static_cast<std::size_t>(references.usedRow(0));
        const auto second = static_cast<std::size_t>(references.usedRow(1));
        FUZZ_REQUIRE(row.row == i && sameDouble(row.energy, point.energy));
        FUZZ_REQUIRE(sameDouble(row.r1, point.mut.at(first)));
        FUZZ_REQUIRE(sameDouble(row.r2, point.mut.at(second)));
    }
    FUZZ_REQUIRE(all.others.size() == others && all.v.row == v && three.v.row == v);
    FUZZ_REQUIRE(three.others.size() == std::min(others, qsizetype{3}));
    const auto selected = analysis::selectedRows(points);
    const auto withMap = analysis::selectedMapRows(points);
    FUZZ_REQUIRE(selected.count >= withMap.count && selected.vRow >= withMap.vRow);
    checkPlane(all);
    checkPlane(three);
}

/// Checks neqSolve() against the reference implementation. neqTargetResult() must return the
/// shares and the background of the reference implementation, and a total that agrees with the
/// sum of neqSolve().
void checkNonEquivalent(fuzz::ByteReader& in, const QList<analysis::PointState>& points,
                        const analysis::ReferenceSet& references)
{
    QList<AMutE> spectra;
    for (int k = in.number(0, 4); k > 0; --k) {
        spectra.append(nextSpectrum(in));
        spectra.last().fitLines();
    }
    QList<const AMutE*> pointers;
    for (const AMutE& spectrum : std::as_const(spectra)) {
        pointers.append(&spectrum);
    }
    const bool victoreen = in.number(0, 1) == 1;
    const bool subPost = in.number(0, 1) == 1;
    const auto inputs = analysis::neqPrepare(points, references, pointers, subPost);
    FUZZ_REQUIRE(inputs.energies.size() == inputs.rowIndices.size());
    FUZZ_REQUIRE(inputs.refValues.size() == inputs.weights.size());
    QList<double> T;
    for (qsizetype i = 0; i < inputs.energies.size(); ++i) {
        T.append(in.anyDouble());
    }
    double sum = 0.0;
    double plainSum = 0.0;
    QList<double> out;
    QList<double> plain;
    analysis::neqSolve(victoreen, T, inputs.refValues, inputs.energies, inputs.weights, &sum, out);
    tests::plainNeqSolve(victoreen, T, inputs.refValues, inputs.energies, inputs.weights, &plainSum,
                         plain);
    FUZZ_REQUIRE(same(out, plain) && sameDouble(sum, plainSum));
    const QList<double> result = analysis::neqTargetResult(victoreen, T, inputs);
    FUZZ_REQUIRE(result.size() == analysis::neq::count);
    FUZZ_REQUIRE(sameDouble(result.at(analysis::neq::totalDMut), sum * inputs.jumpSum));
    FUZZ_REQUIRE(same(result.first(4), plain.first(4)));
    FUZZ_REQUIRE(same(result.mid(8, 3), plain.mid(8, 3)));
}

void checkFitRange(const QList<analysis::PointState>& points)
{
    const analysis::FitRange range = analysis::fitRange(points);
    int rows = 0;
    for (const analysis::PointState& point : points) {
        rows += point.inFit ? 1 : 0;
        FUZZ_REQUIRE(!point.inFit || !(point.energy < range.energies.low));
        FUZZ_REQUIRE(!point.inFit || !(point.energy > range.energies.high));
    }
    FUZZ_REQUIRE(range.rows == rows);
    FUZZ_REQUIRE(!std::isnan(range.energies.low) && !std::isnan(range.energies.high));
}

void tryRows(fuzz::ByteReader& in)
{
    const QList<analysis::ReferenceState> rows = nextReferences(in);
    const analysis::ReferenceSet references(rows);
    const QList<analysis::PointState> points = nextPoints(in);
    checkReferences(rows, references);
    checkCollection(points, references);
    checkFitRange(points);
    checkNonEquivalent(in, points, references);
}

void requireBound(const analysis::Choice& choice, analysis::Variant form,
                  const analysis::Message& refusal)
{
    const bool refused = refusal.number < refusal.needed;
    FUZZ_REQUIRE(choice.variant.has_value() != refused);
    FUZZ_REQUIRE(refused ? choice.refusal == refusal : choice.variant == form);
}

void tryChoices(fuzz::ByteReader& in)
{
    const int boxes = in.number(0, 15);
    const analysis::MethodRadios radios{(boxes & 1) != 0, (boxes & 2) != 0, (boxes & 4) != 0,
                                        (boxes & 8) != 0};
    const QList<int> extremes{std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
    const int selected = in.number(0, 7) == 7 ? in.oneOf(extremes) : in.number(-1, 9);
    const int valid = in.number(0, 4);
    using analysis::Variant;
    const bool linear = radios.linearBackground;
    const auto target = analysis::chooseForTarget(radios, selected);
    const auto map = analysis::chooseForMap(radios, selected, valid);
    if (radios.nonEquivalent) {
        const Variant form =
            linear ? Variant::NonEquivalentLinear : Variant::NonEquivalentVictoreen;
        const int ofTarget = linear ? 4 : 5;
        const int ofMap = valid + (linear ? 2 : 3);
        requireBound(target, form, {analysis::MessageId::WrongCount, selected, ofTarget});
        requireBound(map, form, {analysis::MessageId::TooFewRows, selected, ofMap});
        return;
    }
    FUZZ_REQUIRE(target.variant == map.variant && target.refusal == map.refusal);
    FUZZ_REQUIRE((target.variant == Variant::ThreePoints) == (selected == 3));
    FUZZ_REQUIRE((target.variant == Variant::ExactFourPoints) == (selected == 4 && radios.exact));
    FUZZ_REQUIRE(target.variant != Variant::LeastSquare || selected >= 4);
    FUZZ_REQUIRE(selected < 5 || (target.variant == Variant::LeastSquare) == radios.leastSquare);
}

void tryScan(fuzz::ByteReader& in)
{
    A2DData map;
    map.xNum = in.number(-2, 5);
    map.yNum = in.number(0, 15) == 15 ? std::numeric_limits<int>::max() : in.number(-2, 5);
    if (map.xNum > 0) {
        map.yNum = std::min(map.yNum, 5);
    }
    const QList<double> values = someDoubles(in, 25);
    const auto valueAt = [&](int x, int y) { return values.value(y * map.xNum + x, -1.0); };
    const auto found = analysis::scanMap(map, valueAt);
    double low = 1e300;
    double high = -1e300;
    for (int y = 0; map.xNum > 0 && y < map.yNum; ++y) {
        for (int x = 0; x < map.xNum; ++x) {
            low = valueAt(x, y) < low ? valueAt(x, y) : low;
            high = valueAt(x, y) > high ? valueAt(x, y) : high;
        }
    }
    FUZZ_REQUIRE(found.has_value() == (low <= high));
    FUZZ_REQUIRE(!found || (found->low == low && found->high == high));
    const double x = in.anyDouble();
    const double y = in.anyDouble();
    const auto pixel = analysis::pixelAt(map, x, y);
    const bool isInside = x >= 0.0 && x < map.xNum && y >= 0.0 && y < map.yNum;
    FUZZ_REQUIRE(pixel.has_value() == isInside);
    FUZZ_REQUIRE(!pixel || (pixel->x == std::floor(x) && pixel->y == std::floor(y)));
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    ByteReader in(bytes);
    switch (in.number(0, 3)) {
    case 0:
        return trySpectra(in);
    case 1:
        return tryRows(in);
    case 2:
        return tryChoices(in);
    default:
        return tryScan(in);
    }
}
