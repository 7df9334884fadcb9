// Measures the file dialogs of a panel in a folder of 5,000 files: the choice of the
// first file, a click of "Write" that writes into the folder, and new files that appear in
// the folder as if another program created them. Also measures the construction of a panel and
// of a file row and, for comparison, a plain QFileDialog in this folder.

#include "panel/FourPs.h"
#include "rows/ARefFile.h"
#include "support/Shortest.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QLoggingCategory>
#include <QSettings>
#include <QTemporaryDir>
#include <QThread>

#include <algorithm>
#include <ctime>
#include <memory>

namespace
{

const int fileCount = bench::amount(5000, 50);
const int newFileCount = bench::amount(50, 5);
constexpr int newFileIntervalMs = 40;

/// Processor time of all threads of the process so far, ms. The dialogs read the folder
/// in other threads.
double processorMs()
{
    return 1e3 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void writeFile(const QString& path)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        for (int i = 0; i < 100; ++i) {
            file.write(QByteArray::number(8250 + 2 * i) + (i < 45 ? " 0.1\n" : " 1.1\n"));
        }
    }
}

/// The path of a folder of spectrum files. The first call creates it.
const QString& folder()
{
    static const QTemporaryDir files;
    static const QString path = [] {
        for (int i = 0; i < fileCount; ++i) {
            writeFile(files.filePath(QStringLiteral("spectrum_%1.dat").arg(i, 5, 10, QChar('0'))));
        }
        return files.path();
    }();
    return path;
}

/// The load that an action causes.
struct Load {
    double stallMs = 0.0;     ///< longest single action or call of processEvents()
    double processorMs = 0.0; ///< processor time of all threads
};

/// Runs the event loop and measures the load since the construction of this object. run()
/// continues for at least @p spanMs and until the process has been nearly idle for half a
/// second.
class Watch
{
public:
    void run(int spanMs)
    {
        QElapsedTimer span;
        span.start();
        double idleSince = processorMs();
        QElapsedTimer idle;
        idle.start();
        while (span.elapsed() < spanMs || idle.elapsed() < 500) {
            runAction([] { QCoreApplication::processEvents(); });
            QThread::msleep(2);
            if (processorMs() - idleSince > 0.02 * static_cast<double>(idle.elapsed()) + 2.0) {
                idleSince = processorMs();
                idle.restart();
            }
        }
    }

    /// Runs one action and measures its duration. The event loop cannot process other events
    /// during this time.
    template <class Action>
    void runAction(Action action)
    {
        QElapsedTimer length;
        length.start();
        action();
        m_stallMs = std::max(m_stallMs, 1e-6 * static_cast<double>(length.nsecsElapsed()));
    }

    Load load() const { return {m_stallMs, processorMs() - m_startMs}; }

private:
    double m_stallMs = 0.0;
    double m_startMs = processorMs();
};

void report(benchmark::State& state, const Load& load)
{
    state.counters["stall_ms"] = load.stallMs;
    state.counters["processor_ms"] = load.processorMs;
}

/// A visible panel that has processed all its events.
struct PanelSetup {
    PanelSetup()
    {
        panel.show();
        Watch().run(0);
    }

    /// Opens the dialog of the first reference, changes to the folder, and waits until
    /// the dialog has read it.
    void openFolder() const
    {
        row->SelectB->click();
        dialog->setDirectory(folder());
        Watch().run(0);
    }

    /// Selects the first file, which the panel then loads, and closes the dialog.
    void chooseFile() const
    {
        Q_EMIT dialog->currentChanged(folder() + QStringLiteral("/spectrum_00000.dat"));
        dialog->close();
    }

    FourPs panel;
    AFileSelect* row = panel.XafsFiles.first();
    QFileDialog* dialog = row->findChild<QFileDialog*>(QStringLiteral("dialog"));
};

void qtDialog(benchmark::State& state)
{
    for (auto run : state) {
        QFileDialog dialog;
        dialog.show();
        Watch watch;
        watch.runAction([&] { dialog.setDirectory(folder()); });
        watch.run(0);
        report(state, watch.load());
    }
}

void firstFile(benchmark::State& state)
{
    for (auto run : state) {
        const PanelSetup setup;
        setup.openFolder();
        Watch watch;
        watch.runAction([&] { setup.chooseFile(); });
        watch.run(0);
        report(state, watch.load());
    }
}

void write(benchmark::State& state)
{
    for (auto run : state) {
        const PanelSetup setup;
        setup.openFolder();
        setup.chooseFile();
        Watch().run(0);
        setup.panel.ui.SaveFSelect->FileName->setText(folder() + QStringLiteral("/result.dat"));
        Watch watch;
        watch.runAction([&] { setup.panel.ui.WriteB->click(); });
        watch.run(500);
        report(state, watch.load());
    }
}

void newFiles(benchmark::State& state)
{
    for (auto run : state) {
        const PanelSetup setup;
        setup.openFolder();
        setup.chooseFile();
        Watch().run(0);
        Watch watch;
        for (int i = 0; i < newFileCount; ++i) {
            writeFile(folder() + QStringLiteral("/arrived_%1.dat").arg(i));
            QElapsedTimer pause;
            pause.start();
            while (pause.elapsed() < newFileIntervalMs) {
                watch.runAction([] { QCoreApplication::processEvents(); });
                QThread::msleep(2);
            }
        }
        watch.run(500);
        report(state, watch.load());
        for (int i = 0; i < newFileCount; ++i) {
            QFile::remove(folder() + QStringLiteral("/arrived_%1.dat").arg(i));
        }
    }
}

void buildPanel(benchmark::State& state)
{
    for (auto run : state) {
        auto panel = std::make_unique<FourPs>();
        state.PauseTiming();
        panel.reset();
        state.ResumeTiming();
    }
}

void buildRow(benchmark::State& state)
{
    for (auto run : state) {
        auto row = std::make_unique<AFileSelect>();
        state.PauseTiming();
        row.reset();
        state.ResumeTiming();
    }
}

void add(const char* name, void (*function)(benchmark::State&))
{
    benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond);
}

void addOnce(const char* name, void (*function)(benchmark::State&))
{
    benchmark::RegisterBenchmark(name, function)->Unit(benchmark::kMillisecond)->Iterations(1);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QApplication application(argc, argv);
    folder(); // creates the folder before the measurements
    add("buildPanel", buildPanel);
    add("buildRow", buildRow);
    addOnce("qtDialog", qtDialog);
    addOnce("firstFile", firstFile);
    addOnce("write", write);
    addOnce("newFiles", newFiles);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
