// Grabs the program's windows, with the sample loaded, into picture files.
//   aelk_pictures SAMPLE-FOLDER OUTPUT-FOLDER [all]
// makes the pictures of the documents; with "all" every window at half, at its
// own and at double size, to look at after a change.

#include "CombinationErrors.h"
#include "SampleRun.h"
#include "WindowPictures.h"

#include "display/DispMBase.h"
#include "display/Displays.h"
#include "panel/FourPs.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>

#include <utility>

namespace
{

/// Pops a plot out, zoomed in x as by a few turns of the wheel.
bool grabPlot(DispABase* plot, double fromEv, double toEv, const QString& path)
{
    plot->popDock();
    plot->DispA->cc.setRealX(fromEv, toEv);
    const bool good = savePicture(plot->pop, {640, 480}, path);
    plot->popDock();
    return good;
}

bool grabDocuments(const FourPs& panel, const QDir& output)
{
    const auto path = [&output](const char* name) { return output.filePath(QLatin1String(name)); };
    Displays* graphs = panel.Disps;
    bool good = savePicture(graphs, graphs->size(), path("graphs.png"));
    good &= grabPlot(graphs->frame(Displays::DTarget), 8280.0, 8480.0, path("target.png"));
    good &= grabPlot(graphs->frame(Displays::DMuts), 8320.0, 8400.0, path("muts.png"));
    const QSize mapSize(460, 440);
    good &= savePicture(panel.MapDisp, mapSize, path("valence.png"));
    panel.ui.MapAmount->click();
    good &= savePicture(panel.MapDisp, mapSize, path("amount.png"));
    good &= savePicture(panel.DMapDisp, mapSize, path("measured.png"));
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

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTemporaryDir results;
    if (arguments.size() < 3 || !QDir().mkpath(arguments.at(2)) || !results.isValid()) {
        QTextStream(stderr) << "aelk_pictures SAMPLE-FOLDER OUTPUT-FOLDER [all]\n";
        return EXIT_FAILURE;
    }
    FourPs panel;
    SampleRun run(panel, QDir(arguments.at(1)), QDir(results.path()));
    run.load();
    run.calculate(nickel::combinationForms().front());
    const QDir output(arguments.at(2));
    const bool good =
        arguments.value(3) == QLatin1String("all")
            ? grabAll(run.windows() + QList<QWidget*>{panel.Disps->frame(Displays::DM2M3)}, output)
            : grabDocuments(panel, output);
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
