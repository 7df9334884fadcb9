// Measures a drag of the edge marker over 12,000 moves with small maps, from each mouse
// event to the repainted windows. During the drag the comparison plot collects points and
// the visible message field collects lines, so late moves could become slower. This
// benchmark therefore compares the last hundred moves with the first hundred, and prints the
// memory of the process. Each printed time is the median processor time of a move, taken over a
// hundred moves. The only argument is the number of moves. It is rounded down to full hundreds;
// less than 100 counts as 100.

#include "support/DragPanel.h"
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

/// Processor time of the process so far, ms.
double processorTime()
{
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return 1e3 * static_cast<double>(now.tv_sec) + 1e-6 * static_cast<double>(now.tv_nsec);
}

/// The entry @p name of /proc/self/status, in MB; 0 if there is none.
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
    bench::DragPanel setup(true, 20);
    setup.panel.show();
    const int start = setup.edgePixel();
    setup.send(QEvent::MouseButtonPress, start);
    printMemory("before");
    std::vector<double> times; // median processor time per move (ms), one value per hundred moves
    std::vector<double> sums;  // total processor time (ms), one value per hundred moves
    for (int i = 0; i < moves / hundred; ++i) {
        std::array<double, hundred> single{};
        for (int k = 0; k < hundred; ++k) {
            const double before = processorTime();
            setup.send(QEvent::MouseMove, start + (k + i) % 41);
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
    setup.send(QEvent::MouseButtonRelease, start);
    printMemory("after");
    std::printf("longDrag %d lines in the box, %d points\n",
                setup.panel.ui.Message->document()->blockCount() - 1,
                static_cast<int>(setup.panel.LCFvs4PS.size()));
    std::printf("longDrag last hundred / first hundred = %.2f (all of their time: %.2f)\n",
                times.back() / times.front(), sums.back() / sums.front());
    return 0;
}
