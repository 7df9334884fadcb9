#include "SampleRun.h"

#include "ErrorStatistics.h"
#include "MapErrors.h"

#include "panel/FourPs.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "rows/AXafsFileSelect.h"

#include <QFile>
#include <QFileInfo>
#include <QLineEdit>

#include <algorithm>
#include <cmath>

namespace
{

// What the noise of the spectra themselves may add, four standard deviations;
// examples/nickel/README.md derives them.
constexpr double referenceTermFraction = 0.003;
constexpr double referenceTermThickness = 0.0012; // of the thickness
constexpr double targetTermFraction = 0.0045;

constexpr double rmsBound = 1.15;  // in expected standard deviations
constexpr double worstBound = 6.0; // in expected standard deviations
constexpr double meanSigmas = 4.0;

/// Makes an empty file where there is none: the panel updates a histogram file
/// only when it is already there.
void touch(const QString& path)
{
    QFile file(path);
    file.open(QIODevice::Append);
}

QList<SampleCheck> checksOf(const QString& quantity, const nickel::ErrorStatistics& statistics,
                            double referenceTerm)
{
    return {
        {quantity + QStringLiteral(": rms error / expected"), statistics.rms(), rmsBound},
        {quantity + QStringLiteral(": worst error / expected"), statistics.worst(), worstBound},
        {quantity + QStringLiteral(": mean error"), std::abs(statistics.meanError()),
         meanSigmas * statistics.meanSigma() + referenceTerm},
    };
}

} // namespace

bool FormOutcome::isGood() const
{
    return written && std::all_of(checks.begin(), checks.end(),
                                  [](const SampleCheck& check) { return check.isGood(); });
}

SampleRun::SampleRun(FourPs& fourPs, const QDir& sampleFolder, const QDir& outputFolder)
    : panel(fourPs)
    , sample(sampleFolder)
    , output(outputFolder)
{
}

void SampleRun::load()
{
    panel.ui.radioButton->click(); // "multi points": the four-points family
    loadReferences();

    // Each reference has proposed an edge of its own, so the common one comes
    // after them; and the target after that, since a change of edge leaves the
    // target's column as it was.
    typeInto(panel.ui.EdgeE, QString::number(nickel::edgeEv));
    panel.XafsFiles.last()->AFileSelect::newFile(sample.filePath(QStringLiteral("target.dat")));

    QStringList maps;
    for (const double energyEv : nickel::mapEnergiesEv) {
        maps << sample.filePath(QString::fromStdString(nickel::mapFileName(energyEv)));
    }
    panel.MultiFiles->newFiles(maps);
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

void SampleRun::typeInto(QLineEdit* field, const QString& text)
{
    field->setText(text);
    Q_EMIT field->editingFinished();
}

FormOutcome SampleRun::calculate(const nickel::MapForm& form)
{
    chooseSolver(form);
    chooseRows(form);
    panel.ui.CalcTargetB->click();

    FormOutcome outcome;
    outcome.form = QString::fromLatin1(form.name);
    outcome.resultPath = output.filePath(QString::fromLatin1(form.fileName));
    outcome.written = write(outcome.resultPath);
    outcome.checks = checkTarget() + checkMap(form);
    return outcome;
}

void SampleRun::chooseSolver(const nickel::MapForm& form)
{
    // The frame of these two is disabled for good, so a hand could not do this.
    const bool exact = form.fitsSlope && form.rows.size() == 3;
    (exact ? panel.ui.TypeTMKisExact : panel.ui.TypeTMKisLS)->setChecked(true);
}

void SampleRun::chooseRows(const nickel::MapForm& form)
{
    for (qsizetype i = 0; i < panel.EPoints.size(); ++i) {
        const auto row = static_cast<std::size_t>(i);
        const bool wanted = row == nickel::vPoint ||
                            std::find(form.rows.begin(), form.rows.end(), row) != form.rows.end();
        AEPoint* point = panel.EPoints.at(i);
        if (point->UseCB->isChecked() != wanted) {
            point->UseCB->click();
        }
        if (point->VPointCB->isChecked() != (row == nickel::vPoint)) {
            point->VPointCB->click();
        }
    }
}

bool SampleRun::write(const QString& path)
{
    const QFileInfo info(path);
    QFile::remove(path); // so that a file of an earlier run cannot pass for this one
    for (const char* histogram : {"_HGAlpha.", "_HGThick."}) {
        touch(output.filePath(info.completeBaseName() + QLatin1String(histogram) + info.suffix()));
    }
    panel.ui.SaveFSelect->newFile(path);
    panel.ui.WriteB->click();
    return QFileInfo(path).size() > 0;
}

QList<SampleCheck> SampleRun::checkTarget() const
{
    return {{QStringLiteral("target: error of the Ni(II) fraction"),
             std::abs(panel.TargetV - nickel::targetFraction), targetTermFraction}};
}

QList<SampleCheck> SampleRun::checkMap(const nickel::MapForm& form) const
{
    const A2DData& result = panel.BaseData;
    const bool complete = result.xNum == nickel::mapWidth && result.yNum == nickel::mapHeight &&
                          result.rows.size() == nickel::mapWidth * nickel::mapHeight;
    if (!complete) {
        return {{QStringLiteral("map: pixels missing"), 1.0, 0.0}};
    }
    nickel::ErrorStatistics valence;
    nickel::ErrorStatistics thickness;
    for (int y = 0; y < nickel::mapHeight; ++y) {
        for (int x = 0; x < nickel::mapWidth; ++x) {
            const A2DRow& pixel = result.rows.at(y * nickel::mapWidth + x);
            const nickel::ExpectedErrors expected = nickel::expectedErrors(form, x, y);
            // Between valences 2 and 3 an error of the fraction is one of the
            // valence.
            valence.add(pixel.intensity - nickel::fractionAt(x, y), expected.fraction.sigma,
                        expected.fraction.bias);
            const double jump = nickel::amountAt(x, y);
            thickness.add(pixel.i0 * form.thicknessUnit / jump - 1.0, expected.jump.sigma / jump,
                          expected.jump.bias / jump);
        }
    }
    return checksOf(QStringLiteral("valence"), valence, referenceTermFraction) +
           checksOf(QStringLiteral("thickness"), thickness, referenceTermThickness);
}
