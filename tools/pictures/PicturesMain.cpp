// Grabs the program's windows, with the sample loaded, into picture files.
//   aelk_pictures SAMPLE-FOLDER OUTPUT-FOLDER [all]
// makes the pictures of the documents; with "all" every window at half, at its
// own and at double size, to look at after a change.

#include "SampleRun.h"

#include "display/DispMBase.h"
#include "display/Displays.h"
#include "panel/FourPs.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>

#include <initializer_list>
#include <utility>

namespace
{

/// The picture of a window at a size, as a user would see it.
bool grab(QWidget* window, const QSize& size, const QString& path)
{
    window->show();
    window->resize(size);
    // A moved or resized drawing settles in the events after it.
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
    }
    constexpr int smallestFile = 0;
    const QImage picture = window->grab().toImage().convertToFormat(QImage::Format_RGB888);
    return picture.save(path, "PNG", smallestFile);
}

bool grabDocuments(const FourPs& panel, const QDir& output)
{
    Displays* graphs = panel.Disps;
    bool good = grab(graphs, graphs->size(), output.filePath(QStringLiteral("graphs.png")));
    DispABase* target = graphs->frame(Displays::DTarget);
    target->popDock();
    // As a few turns of the wheel at the edge would show it.
    target->DispA->cc.setRealX(8280.0, 8480.0);
    good &= grab(target->pop, {640, 480}, output.filePath(QStringLiteral("target.png")));
    target->popDock();
    return good;
}

bool grabAll(const FourPs& panel, const QDir& output)
{
    bool good = true;
    for (QWidget* window : std::initializer_list<QWidget*>{panel.window(), panel.Disps,
                                                           panel.Disps->frame(Displays::DM2M3),
                                                           panel.MapDisp, panel.DMapDisp}) {
        const QSize size = window->size();
        for (const auto& [name, factor] : {std::pair("own", 1.0), {"half", 0.5}, {"double", 2.0}}) {
            const QString file =
                QStringLiteral("%1-%2.png").arg(window->objectName(), QLatin1String(name));
            good &= grab(window, size * factor, output.filePath(file));
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
    const QDir output(arguments.at(2));
    const bool good = arguments.value(3) == QLatin1String("all") ? grabAll(panel, output)
                                                                 : grabDocuments(panel, output);
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
