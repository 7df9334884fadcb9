// What a folder of 5,000 files costs the file dialogs of a panel: the first
// file from there, a "Write" into it, files that arrive in it while a
// measurement runs; and what a panel costs to build.

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

/// Processor time of the whole process so far, ms: the dialogs read their
/// folder in threads of their own.
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

/// A folder of spectrum files, made once.
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

/// What the event loop did while it was watched.
struct Load {
    double stallMs = 0.0;     ///< the longest time without a look at the events
    double processorMs = 0.0; ///< of all threads
};

/// Runs the event loop for @p spanMs, then until the process has been idle for
/// half a second.
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

    /// One thing that the event loop waits for.
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

/// A shown panel, at rest.
struct Desk {
    Desk()
    {
        panel.show();
        Watch().run(0);
    }

    /// "Sel." of the first reference, and its folder is read.
    void openFolder() const
    {
        row->SelectB->click();
        dialog->setDirectory(folder());
        Watch().run(0);
    }

    /// The first file is highlighted and taken.
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
        const Desk desk;
        desk.openFolder();
        Watch watch;
        watch.turn([&] { desk.takeFile(); });
        watch.run(0);
        report(state, watch.load());
    }
}

void write(benchmark::State& state)
{
    for (auto run : state) {
        const Desk desk;
        desk.openFolder();
        desk.takeFile();
        Watch().run(0);
        desk.panel.ui.SaveFSelect->FileName->setText(folder() + QStringLiteral("/result.dat"));
        Watch watch;
        watch.turn([&] { desk.panel.ui.WriteB->click(); });
        watch.run(500);
        report(state, watch.load());
    }
}

void arriving(benchmark::State& state)
{
    for (auto run : state) {
        const Desk desk;
        desk.openFolder();
        desk.takeFile();
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
    folder(); // before the first measurement
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
