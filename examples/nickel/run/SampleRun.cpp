#include "SampleRun.h"

#include "CombinationErrors.h"
#include "ErrorStatistics.h"
#include "MapErrors.h"
#include "ShareErrors.h"
#include "SpectrumErrors.h"

#include "display/DispMBase.h"
#include "panel/FourPs.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "rows/AXafsFileSelect.h"

#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

namespace
{

// Standard deviations of the results of the four-point family due to the noise of the
// spectra. examples/nickel/README.md derives them.
constexpr double referenceSigmaFraction = 0.00075;
constexpr double referenceSigmaThickness = 0.0003; // relative to the thickness
constexpr double targetSigmaFraction = 0.0011;

constexpr double targetSigmas = 4.0;
constexpr double fitDigit = 0.0005; // largest rounding error in the result line of the fit

/// Creates an empty file if it does not exist, because the panel only overwrites existing
/// histogram files.
void touch(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::Append);
}

QString nameOf(std::size_t compound)
{
    return QString::fromLatin1(nickel::compounds()[compound].name);
}

double valenceOf(const nickel::Fractions& fractions)
{
    double valence = 0.0;
    for (std::size_t i = 0; i < fractions.size(); ++i) {
        valence += fractions.at(i) * nickel::compounds()[i].valence;
    }
    return valence;
}

std::vector<std::size_t> rowsOf(const nickel::Image& image)
{
    std::vector<std::size_t> rows(image.energiesEv.size());
    std::iota(rows.begin(), rows.end(), std::size_t{0});
    return rows;
}

/// The numbers with a decimal point in a result line, and nan and inf, in their order.
QList<double> numbersIn(const QString& line)
{
    static const QRegularExpression number(QStringLiteral("-?\\d+\\.\\d+|nan|inf"));
    QList<double> numbers;
    for (auto match = number.globalMatch(line); match.hasNext();) {
        numbers << match.next().captured().toDouble();
    }
    return numbers;
}

} // namespace

SampleRun::SampleRun(FourPs& fourPs, const QDir& sampleFolder, const QDir& outputFolder)
    : panel(fourPs)
    , sample(sampleFolder)
    , output(outputFolder)
{
}

void SampleRun::load()
{
    loadReferences();
    // Each loaded reference changes the edge energy, so the edge energy is set after the
    // references are loaded. The target is loaded after that: a change of the edge energy
    // does not update the absorbances of the target in the energy rows.
    typeInto(panel.ui.EdgeE, QString::number(nickel::edgeEv));
    loadFiles(nickel::imageOfTwo(), nickel::targetOfTwo());
}

void SampleRun::loadReferences()
{
    const auto compounds = nickel::compounds();
    for (qsizetype i = 0; i < panel.Refs.RefRows.size(); ++i) {
        const nickel::Compound& compound = compounds[static_cast<std::size_t>(i)];
        ARefFile* row = panel.Refs.RefRows.at(i);
        typeInto(row->Valence, QString::number(compound.valence));
        row->XafsFS->AFileSelect::newFile(sample.filePath(QString::fromLatin1(compound.fileName)));
    }
}

void SampleRun::loadFiles(const nickel::Image& image, const nickel::Target& target)
{
    if (loaded == &image) {
        return;
    }
    loaded = &image;
    panel.XafsFiles.last()->AFileSelect::newFile(
        sample.filePath(QString::fromLatin1(target.fileName)));
    QStringList maps;
    for (const double energyEv : image.energiesEv) {
        maps << sample.filePath(QString::fromStdString(image.fileName(energyEv)));
    }
    panel.MultiFiles->newFiles(maps);
    useRows(rowsOf(image));
    // Shows the map at the highest energy, because the absorbance far above the edge is nearly
    // proportional to the amount, apart from the background.
    turn(panel.EPoints.at(maps.size() - 1)->ShowMapB, true);
}

void SampleRun::typeInto(QLineEdit* field, const QString& text)
{
    field->setText(text);
    Q_EMIT field->editingFinished();
}

void SampleRun::turn(QAbstractButton* button, bool on)
{
    if (button->isChecked() != on) {
        button->click();
    }
}

void SampleRun::useReferences(std::size_t count)
{
    for (qsizetype i = 0; i < panel.Refs.RefRows.size(); ++i) {
        turn(panel.Refs.RefRows.at(i)->UseCB, static_cast<std::size_t>(i) < count);
    }
}

void SampleRun::useRows(const std::vector<std::size_t>& rows)
{
    for (qsizetype i = 0; i < panel.EPoints.size(); ++i) {
        turn(panel.EPoints.at(i)->UseCB,
             std::find(rows.begin(), rows.end(), static_cast<std::size_t>(i)) != rows.end());
    }
}

void SampleRun::recordShares(std::size_t count)
{
    const std::array<QAbstractButton*, 4> boxes = {panel.ui.RecRatio1, panel.ui.RecRatio2,
                                                   panel.ui.RecRatio3, panel.ui.RecRatio4};
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        turn(boxes.at(i), i < count);
    }
}

/// Clears the results, because the checks must not find the results of an earlier
/// calculation after a refused calculation.
void SampleRun::clearResults()
{
    for (const ARefFile* row : std::as_const(panel.Refs.RefRows)) {
        row->RatioDisp->clear();
        row->AmountDisp->clear();
    }
    panel.ui.TargetDMut->clear();
    panel.ui.CalcRes->clear();
    panel.ui.LCFRes->clear();
}

void SampleRun::calculateTarget()
{
    clearResults();
    panel.TargetV = std::nan("");
    panel.TargetT = std::nan("");
    panel.ui.CalcTargetB->click();
}

SampleOutcome SampleRun::calculate(const nickel::ShareForm& form)
{
    panel.ui.TypeNonEquiv->click();
    loadFiles(form.image, form.target);
    useReferences(form.references);
    (form.victoreen ? panel.ui.NonEquivBGVic : panel.ui.NonEquivBGLinear)->click();
    calculateTarget();

    SampleOutcome outcome;
    outcome.title = QStringLiteral("Non-equivalent method, ") + QLatin1String(form.name);
    outcome.line = panel.ui.CalcRes->text();
    outcome.target = checkTarget(form);
    recordShares(form.references);
    outcome.resultPath = output.filePath(QString::fromLatin1(form.fileName));
    outcome.written = write(outcome.resultPath) && isComplete(form.image);
    if (outcome.written) {
        outcome.map = checkMap(form);
    }
    return outcome;
}

SampleOutcome SampleRun::calculate(const nickel::CombinationForm& form)
{
    useReferences(form.references);
    for (qsizetype i = 0; i < panel.EPoints.size(); ++i) {
        const double energyEv = loaded->energiesEv.size() > static_cast<std::size_t>(i)
                                    ? loaded->energiesEv.at(static_cast<std::size_t>(i))
                                    : 0.0;
        turn(panel.EPoints.at(i)->LCFCB, energyEv == form.lowestEv || energyEv == form.highestEv);
    }
    clearResults();
    panel.ui.LCFB->click();

    SampleOutcome outcome;
    outcome.title = QStringLiteral("Linear combination fit, ") + QLatin1String(form.name);
    outcome.line = panel.ui.LCFRes->text();
    const QList<double> results = numbersIn(outcome.line);
    const std::vector<double> expected = nickel::expectedCombination(form);
    const std::vector<double> sigmas = nickel::combinationErrors(form);
    for (std::size_t k = 0; k < expected.size(); ++k) {
        const bool fraction = k < form.references;
        const bool valence = k == form.references;
        outcome.target << TargetCheck{fraction  ? QStringLiteral("fraction of ") + nameOf(k)
                                      : valence ? QStringLiteral("valence")
                                                : QStringLiteral("constant"),
                                      fraction  ? form.target.fractions.at(k)
                                      : valence ? valenceOf(form.target.fractions)
                                                : 0.0,
                                      expected[k],
                                      results.value(static_cast<qsizetype>(k), std::nan("")),
                                      targetSigmas * sigmas[k] + fitDigit};
    }
    return outcome;
}

SampleOutcome SampleRun::calculate(const nickel::MapForm& form)
{
    panel.ui.radioButton->click(); // "multi points": the four-point family
    loadFiles(nickel::imageOfTwo(), nickel::targetOfTwo());
    useReferences(2);
    chooseSolver(form);
    std::vector<std::size_t> rows = form.rows;
    rows.push_back(nickel::vPoint); // the default V row
    useRows(rows);
    calculateTarget();

    SampleOutcome outcome;
    outcome.title = QStringLiteral("Four-point family, ") + QLatin1String(form.name);
    outcome.line = panel.ui.CalcRes->text();
    outcome.target = {{QStringLiteral("a, fraction of ") + nameOf(nickel::niII),
                       nickel::targetFraction, nickel::targetFraction, panel.TargetV,
                       targetSigmas * targetSigmaFraction}};
    outcome.resultPath = output.filePath(QString::fromLatin1(form.fileName));
    outcome.written = write(outcome.resultPath) && isComplete(nickel::imageOfTwo());
    if (outcome.written) {
        outcome.map = checkMap(form);
    }
    return outcome;
}

void SampleRun::restart()
{
    panel.ui.TypeNonEquiv->click();
    panel.ui.NonEquivBGLinear->click();
    loadFiles(nickel::imageOfTwo(), nickel::targetOfTwo());
    useReferences(2);
    useRows(rowsOf(nickel::imageOfTwo()));
    recordShares(0);
    panel.clearLCFvs4PS(nullptr); // removes the comparison plot's points of earlier calculations
    panel.calcBoth();
}

QList<QWidget*> SampleRun::windows() const
{
    return {panel.window(), panel.Disps, panel.MapDisp, panel.DMapDisp};
}

void SampleRun::chooseSolver(const nickel::MapForm& form)
{
    // A user cannot click these two buttons, because their frame is always disabled.
    const bool exact = form.fitsSlope && form.rows.size() == 3;
    (exact ? panel.ui.TypeTMKisExact : panel.ui.TypeTMKisLS)->setChecked(true);
}

bool SampleRun::write(const QString& path)
{
    const QFileInfo info(path);
    QFile::remove(path); // so that the check cannot find the file of an earlier run
    for (const char* histogram : {"_HGAlpha.", "_HGThick."}) {
        touch(output.filePath(info.completeBaseName() + QLatin1String(histogram) + info.suffix()));
    }
    panel.BaseData.rows.clear(); // so that nothing is written after a refused calculation
    panel.ui.SaveFSelect->newFile(path);
    panel.ui.WriteB->click();
    return QFileInfo(path).size() > 0;
}

bool SampleRun::isComplete(const nickel::Image& image) const
{
    const A2DData& result = panel.BaseData;
    return result.xNum == image.width && result.yNum == image.height &&
           result.rows.size() == qsizetype{image.width} * image.height;
}

QList<TargetCheck> SampleRun::checkTarget(const nickel::ShareForm& form) const
{
    const nickel::Target& target = form.target;
    const nickel::ShareFit fit(form, nickel::noiseFreeSpectra(form.references, nullptr));
    const nickel::ShareValues expected = fit.expected(target.fractions, target.jump);
    const std::vector<double> sigmas = nickel::targetErrors(form);
    QList<TargetCheck> checks;
    for (std::size_t j = 0; j < form.references; ++j) {
        const ARefFile* row = panel.Refs.RefRows.at(static_cast<qsizetype>(j));
        bool isNumber = false;
        const double share = row->RatioDisp->text().toDouble(&isNumber);
        checks << TargetCheck{QStringLiteral("share of ") + nameOf(j), target.fractions.at(j),
                              expected[j], isNumber ? share : std::nan(""),
                              targetSigmas * sigmas[j]};
    }
    checks << TargetCheck{QStringLiteral("valence"), valenceOf(target.fractions),
                          expected[form.references], panel.TargetT,
                          targetSigmas * sigmas[form.references]};
    checks << TargetCheck{QStringLiteral("amount dMut"), target.jump, expected.back(),
                          panel.ui.TargetDMut->text().toDouble(), targetSigmas * sigmas.back()};
    return checks;
}

QList<MapCheck> SampleRun::checkMap(const nickel::ShareForm& form) const
{
    const nickel::Image& image = form.image;
    const nickel::ShareFit fit(form, nickel::noiseFreeSpectra(form.references, nullptr));
    const std::size_t quantities = form.references + 2;
    std::vector<nickel::ErrorStatistics> statistics(quantities);
    for (int y = 0; y < image.height; ++y) {
        for (int x = 0; x < image.width; ++x) {
            const A2DRow& pixel = panel.BaseData.rows.at(y * image.width + x);
            const nickel::ShareValues expected =
                fit.expected(image.fractionsAt(x, y), image.amountAt(x, y));
            const auto errors = nickel::pixelErrors(form, fit, x, y);
            for (std::size_t k = 0; k < quantities; ++k) {
                // In the panel's value list the shares are at the beginning, and the valence
                // and the total are the last two values.
                const qsizetype place =
                    k < form.references
                        ? static_cast<qsizetype>(k)
                        : pixel.values.size() - static_cast<qsizetype>(quantities - k);
                // The error of the total is divided by the expected total.
                const double unit = k + 1 == quantities ? expected[k] : 1.0;
                statistics[k].add((pixel.values.value(place, std::nan("")) - expected[k]) / unit,
                                  errors[k].sigma / unit, errors[k].bias / unit);
            }
        }
    }
    const std::vector<double> common = nickel::referenceErrors(form);
    QList<MapCheck> checks;
    for (std::size_t k = 0; k < quantities; ++k) {
        const QString what = k < form.references    ? QStringLiteral("share of ") + nameOf(k)
                             : k == form.references ? QStringLiteral("valence")
                                                    : QStringLiteral("amount dMut");
        checks << MapCheck(what, statistics[k], common[k]);
    }
    return checks;
}

QList<MapCheck> SampleRun::checkMap(const nickel::MapForm& form) const
{
    nickel::ErrorStatistics valence;
    nickel::ErrorStatistics thickness;
    for (int y = 0; y < nickel::mapHeight; ++y) {
        for (int x = 0; x < nickel::mapWidth; ++x) {
            const A2DRow& pixel = panel.BaseData.rows.at(y * nickel::mapWidth + x);
            const nickel::ExpectedErrors expected = nickel::expectedErrors(form, x, y);
            // The intensity field of a result pixel stores the fraction a, and the I0 field
            // the thickness. The valences of the two references differ by 1, so the error of
            // the valence is the error of a with the opposite sign. The check does not depend
            // on the sign.
            valence.add(pixel.intensity - nickel::fractionAt(x, y), expected.fraction.sigma,
                        expected.fraction.bias);
            const double jump = nickel::amountAt(x, y);
            thickness.add(pixel.i0 * form.thicknessUnit / jump - 1.0, expected.jump.sigma / jump,
                          expected.jump.bias / jump);
        }
    }
    return {{QStringLiteral("valence"), valence, referenceSigmaFraction},
            {QStringLiteral("thickness"), thickness, referenceSigmaThickness}};
}
