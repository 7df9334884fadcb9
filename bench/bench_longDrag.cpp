// A drag of the edge marker over 12,000 moves, from each mouse event to the
// repainted windows, with small maps: what a move costs at the end beside one at
// the start, and the memory that the process has. Comparison points and lines of
// the message box pile up meanwhile, and the panel shows its box. A move costs the
// median processor time of its hundred. Takes the number of moves as its one
// argument.

#include "support/PanelDesk.h"
#include "support/Shortest.h"

#include <QApplication>
#include <QFile>
#include <QLoggingCategory>
#include <QTextDocument>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <numeric>
#include <vector>

namespace
{

constexpr int hundred = 100;
const int usualMoves = bench::amount(12000, hundred);

/// Processor time of the process, ms.
double processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return 1e3 * static_cast<double>(now.tv_sec) + 1e-6 * static_cast<double>(now.tv_nsec);
}

/// A size from the system's account of this process, MB.
double memory(const char* name)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly)) {
        return 0.0;
    }
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(name)) {
            return line.simplified().split(' ').value(1).toDouble() / 1024.0;
        }
    }
    return 0.0;
}

void printMemory(const char* when)
{
    std::printf("longDrag memory %s: %.1f MB, at most %.1f MB\n", when, memory("VmRSS:"),
                memory("VmHWM:"));
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    const QApplication application(argc, argv);
    const int moves = argc > 1 ? std::max(std::atoi(argv[1]), hundred) : usualMoves;
    bench::PanelDesk desk(true, 20);
    desk.panel.show();
    const int start = desk.edgePixel();
    desk.send(QEvent::MouseButtonPress, start);
    printMemory("before");
    std::vector<double> times; // of the median move in each hundred
    std::vector<double> sums;  // of each hundred
    for (int i = 0; i < moves / hundred; ++i) {
        std::array<double, hundred> single{};
        for (int k = 0; k < hundred; ++k) {
            const double before = processorTime();
            desk.send(QEvent::MouseMove, start + (k + i) % 41);
            single.at(static_cast<std::size_t>(k)) = processorTime() - before;
        }
        sums.push_back(std::accumulate(single.begin(), single.end(), 0.0));
        std::nth_element(single.begin(), single.begin() + hundred / 2, single.end());
        times.push_back(single.at(hundred / 2));
        if ((i + 1) % 20 == 0) {
            std::printf("longDrag moves to %d: %.2f ms each\n", hundred * (i + 1), times.back());
            std::fflush(stdout);
        }
    }
    desk.send(QEvent::MouseButtonRelease, start);
    printMemory("after");
    std::printf("longDrag %d lines in the box, %d points\n",
                desk.panel.ui.Message->document()->blockCount() - 1,
                static_cast<int>(desk.panel.LCFvs4PS.size()));
    std::printf("longDrag last hundred / first hundred = %.2f (all of their time: %.2f)\n",
                times.back() / times.front(), sums.back() / sums.front());
    return 0;
}
