// Loads the sample and saves pictures of the program's windows.
//   aelk_pictures SAMPLE-FOLDER OUTPUT-FOLDER [all] [-e | -j]
// By default it makes the pictures for the documents. With "all" it saves the main
// window, the graph window, both map windows and the M2/M3 plot at half, normal and double
// size, for checks of the layout after a change. The pictures show the path SAMPLE-FOLDER
// exactly as it is given on the command line.

#include "CombinationErrors.h"
#include "SampleRun.h"
#include "WindowPictures.h"

#include "app/Body.h"
#include "app/Language.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "panel/FourPs.h"
#include "rows/AXafsFileSelect.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>
#include <QTranslator>

#include <utility>

namespace
{

/// Moves a plot into a separate window, saves a picture of this window and moves the plot
/// back.
bool grabPlot(DispABase* plot, const QString& path)
{
    plot->popDock();
    const bool good = savePicture(plot->pop, {640, 480}, path);
    plot->popDock();
    return good;
}

/// Saves a picture of a plot in a separate window, with an x axis from @p fromEv to @p toEv
/// (eV).
bool grabPlot(DispABase* plot, double fromEv, double toEv, const QString& path)
{
    plot->DispA->cc.setRealX(fromEv, toEv);
    return grabPlot(plot, path);
}

bool grabPlots(const Displays& graphs, const QDir& output)
{
    bool good =
        grabPlot(graphs.frame(Displays::DTarget), 8280.0, 8480.0, output.filePath("target.png"));
    good &= grabPlot(graphs.frame(Displays::DMuts), 8320.0, 8400.0, output.filePath("muts.png"));
    good &= grabPlot(graphs.frame(Displays::DHistA), output.filePath("histogram.png"));
    good &= grabPlot(graphs.frame(Displays::DDMutVsA), output.filePath("thickness.png"));
    good &= grabPlot(graphs.frame(Displays::DLCFvs4PS), output.filePath("comparison.png"));
    return good;
}

bool grabDocuments(const FourPs& panel, const QDir& output)
{
    QWidget* main = panel.window();
    bool good = savePicture(main, main->size(), output.filePath("main.png"));
    panel.ui.DispCondsB->click();
    good &= savePicture(main, main->size().expandedTo(main->minimumSizeHint()),
                        output.filePath("more-conditions.png"));
    panel.ui.DispCondsB->click();
    Displays* graphs = panel.Disps;
    good &= savePicture(graphs, graphs->size(), output.filePath("graphs.png"));
    good &= grabPlots(*graphs, output);
    const QSize mapSize(460, 440);
    good &= savePicture(panel.MapDisp, mapSize, output.filePath("valence.png"));
    panel.ui.MapAmount->click();
    good &= savePicture(panel.MapDisp, mapSize, output.filePath("amount.png"));
    good &= savePicture(panel.DMapDisp, mapSize, output.filePath("measured.png"));
    return good;
}

bool grabAll(const QList<QWidget*>& windows, const QDir& output)
{
    bool good = true;
    for (QWidget* window : windows) {
        const QSize size = window->size();
        for (const auto& [name, factor] : {std::pair("own", 1.0), {"half", 0.5}, {"double", 2.0}}) {
            const QString file =
                QStringLiteral("%1-%2.png").arg(window->objectName(), QLatin1String(name));
            good &= savePicture(window, size * factor, output.filePath(file));
        }
        window->resize(size);
        window->hide();
    }
    return good;
}

/// Loads the sample and calculates the results that the pictures show. The comparison plot
/// then shows three targets: the references Ni(II) and Ni(III), and their mixture.
void runThroughSample(FourPs& panel, SampleRun& run, const QDir& sample)
{
    run.load();
    run.calculate(nickel::combinationForms().front());
    run.restart();
    for (const char* target : {"ref_ni2.dat", "ref_ni3.dat", "target.dat"}) {
        panel.ui.TargetFile->AFileSelect::newFile(sample.filePath(QLatin1String(target)));
    }
    panel.ui.SaveFSelect->newFile(QStringLiteral("nickel.dat"));
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTemporaryDir results;
    if (arguments.size() < 3 || !QDir().mkpath(arguments.at(2)) || !results.isValid()) {
        QTextStream(stderr) << "aelk_pictures SAMPLE-FOLDER OUTPUT-FOLDER [all] [-e | -j]\n";
        return EXIT_FAILURE;
    }
    const QStringList options = arguments.mid(3);
    QTranslator translator;
    app::installLanguage(app::languageFromArguments(options), translator);

    Body body;
    auto* panel = body.findChild<FourPs*>();
    const QDir sample(arguments.at(1));
    SampleRun run(*panel, sample, QDir(results.path()));
    runThroughSample(*panel, run, sample);
    const QDir output(arguments.at(2));
    const bool good =
        options.contains(QLatin1String("all"))
            ? grabAll(run.windows() + QList<QWidget*>{panel->Disps->frame(Displays::DM2M3)}, output)
            : grabDocuments(*panel, output);
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
