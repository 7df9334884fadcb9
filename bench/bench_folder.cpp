// Times the file dialogs of a panel in a folder of 5,000 files: choosing the first file,
// a "Write" into the folder, and new files that arrive in it during a measurement; also
// the construction of a panel.

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
const int arrivingCount = bench::amount(50, 5);
constexpr int arrivalMs = 40;

/// Processor time of the whole process so far, ms: the dialogs read the folder in other
/// threads.
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

/// A folder of spectrum files, created on the first call.
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

/// Measurements of the event loop.
struct Load {
    double stallMs = 0.0;     ///< longest time without processing events
    double processorMs = 0.0; ///< processor time of all threads
};

/// Runs the event loop for @p spanMs, and then until the process has been idle for half a
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
            turn([] { QCoreApplication::processEvents(); });
            QThread::msleep(2);
            if (processorMs() - idleSince > 0.02 * static_cast<double>(idle.elapsed()) + 2.0) {
                idleSince = processorMs();
                idle.restart();
            }
        }
    }

    /// Runs one action and records its duration as a possible stall.
    template <class Action>
    void turn(Action action)
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

/// A shown panel without pending work.
struct PanelSetup {
    PanelSetup()
    {
        panel.show();
        Watch().run(0);
    }

    /// Opens the dialog of the first reference in the folder and waits until it has read
    /// it.
    void openFolder() const
    {
        row->SelectB->click();
        dialog->setDirectory(folder());
        Watch().run(0);
    }

    /// Highlights the first file, which the panel loads at once, and closes the dialog.
    void takeFile() const
    {
        Q_EMIT dialog->currentChanged(folder() + QStringLiteral("/spectrum_00000.dat"));
        dialog->close();
    }

    FourPs panel;
    AFileSelect* row = panel.XafsFiles.first();
    QFileDialog* dialog = row->findChild<QFileDialog*>(QStringLiteral("dialog"));
};

void oneDialog(benchmark::State& state)
{
    for (auto run : state) {
        QFileDialog dialog;
        dialog.show();
        Watch watch;
        watch.turn([&] { dialog.setDirectory(folder()); });
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
        watch.turn([&] { setup.takeFile(); });
        watch.run(0);
        report(state, watch.load());
    }
}

void write(benchmark::State& state)
{
    for (auto run : state) {
        const PanelSetup setup;
        setup.openFolder();
        setup.takeFile();
        Watch().run(0);
        setup.panel.ui.SaveFSelect->FileName->setText(folder() + QStringLiteral("/result.dat"));
        Watch watch;
        watch.turn([&] { setup.panel.ui.WriteB->click(); });
        watch.run(500);
        report(state, watch.load());
    }
}

void arriving(benchmark::State& state)
{
    for (auto run : state) {
        const PanelSetup setup;
        setup.openFolder();
        setup.takeFile();
        Watch().run(0);
        Watch watch;
        for (int i = 0; i < arrivingCount; ++i) {
            writeFile(folder() + QStringLiteral("/arrived_%1.dat").arg(i));
            QElapsedTimer pause;
            pause.start();
            while (pause.elapsed() < arrivalMs) {
                watch.turn([] { QCoreApplication::processEvents(); });
                QThread::msleep(2);
            }
        }
        watch.run(500);
        report(state, watch.load());
        for (int i = 0; i < arrivingCount; ++i) {
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
    folder(); // creates the folder before the first measurement
    add("buildPanel", buildPanel);
    add("buildRow", buildRow);
    addOnce("oneDialog", oneDialog);
    addOnce("firstFile", firstFile);
    addOnce("write", write);
    addOnce("arriving", arriving);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
