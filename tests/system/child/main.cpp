// Runs the steps given as command-line arguments. Each step is a name followed by its own
// arguments; all words are percent-encoded. Example:
// system_child map /tmp/a%20map.dat write /tmp/result.dat
//
// The parent process can set limits for memory and file sizes; see
// tests/support/ChildProcess.h.

#include "Steps.h"

#include <QApplication>

#if __has_include("app/Signals.h")
#include "app/Signals.h"
#else
#include <csignal>
namespace app
{
static void ignoreSignals()
{
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}
} // namespace app
#endif

int main(int argc, char* argv[])
{
    app::ignoreSignals();
    QList<QByteArray> words;
    for (int i = 1; i < argc; ++i) {
        words.append(QByteArray::fromPercentEncoding(argv[i]));
    }
    const QApplication application(argc, argv);
    Steps steps;
    return steps.run(words) ? 0 : 2;
}
