// Runs a random user on the real main window and checks the program after each action.
//
//   random_user SEED ACTIONS [--only 3,17,40] [--log FILE] [--say]
//
// --only runs only the listed actions, --log writes the number and kind of the current
// action to a file, --say prints each action. The exit status is 0 if every check passes, 1
// after the first failed check, 2 for an invalid command line or if the temporary folder
// cannot be created, and 3 if an action and its checks take more than a minute. The actions depend
// only on SEED, but the timing of Qt's threads can change what an action does in a file dialog.
// scripts/random runs this program and reduces a failing list of actions.

#include "app/Body.h"
#include "panel/FourPs.h"
#include "random/ActionLog.h"
#include "random/AllocatedMemory.h"
#include "random/MainWindowUser.h"
#include "random/PanelChecks.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>

#include <cstdio>
#include <ctime>
#include <sys/prctl.h>
#include <unistd.h>

namespace
{

struct Options {
    unsigned seed = 0;
    QList<int> actions;
    QString log;
    bool says = false;
};

/// Running time and memory use of the actions.
struct Measurements {
    double slowest = 0.0; ///< processor time in seconds
    int slowestAction = 0;
    double memoryBefore = 0.0; ///< bytes in use after the first quarter of the actions
};

/// Reads the command line; returns false if it is invalid.
bool readOptions(const QStringList& arguments, Options& options)
{
    QCommandLineParser parser;
    parser.addPositionalArgument("SEED", "seed of all random choices");
    parser.addPositionalArgument("ACTIONS", "number of actions");
    parser.addOptions({{"only", "runs only these actions", "3,17,40"},
                       {"log", "writes the current action to a file", "FILE"},
                       {"say", "prints each action"}});
    bool seedIsGood = false;
    bool countIsGood = false;
    if (!parser.parse(arguments) || parser.positionalArguments().size() != 2) {
        return false;
    }
    options.seed = parser.positionalArguments().at(0).toUInt(&seedIsGood);
    const int count = parser.positionalArguments().at(1).toInt(&countIsGood);
    for (int i = 0; i < count; ++i) {
        options.actions.append(i);
    }
    if (parser.isSet("only")) {
        options.actions.clear();
        const QStringList numbers = parser.value("only").split(u',', Qt::SkipEmptyParts);
        for (const QString& number : numbers) {
            options.actions.append(number.toInt());
        }
    }
    options.log = parser.value("log");
    options.says = parser.isSet("say");
    return seedIsGood && countIsGood;
}

/// Gives up root's rights, because file permissions do not apply to root. Then makes the
/// process dumpable again, because LeakSanitizer can inspect only a dumpable process.
void dropRootRights()
{
    if (::geteuid() == 0) {
        constexpr uid_t nobody = 65534;
        if (::setresgid(nobody, nobody, nobody) == 0 && ::setresuid(nobody, nobody, nobody) == 0) {
            ::prctl(PR_SET_DUMPABLE, 1, 0, 0, 0);
        }
    }
}

/// The limit of the processor time of an action in seconds: 2 s plus 5 us per pixel,
/// multiplied by the slowness of the build. The limit is generous, because the test must
/// detect hanging actions, not slow actions.
double longestTime(double pixels)
{
    return tests::slowness * (2.0 + pixels * 5e-6);
}

class Run
{
public:
    Run(Body& body, tests::RandomFiles& files, const Options& options)
        : m_options(options)
        , m_user(body, files, options.seed)
        , m_checks(*body.findChild<FourPs*>())
        , m_log(options.log, options.seed)
    {
        // Repaints the visible surfaces, so that their memory is allocated before the actions.
        m_checks.afterAction({});
    }

    /// Runs the actions until a check fails; returns whether all checks passed.
    bool run()
    {
        const qsizetype first = m_options.actions.size() / 4;
        for (qsizetype i = 0; i < m_options.actions.size(); ++i) {
            if (i == first) {
                m_user.resetToFixedState();
                m_checks.afterAction({});
                m_measured.memoryBefore = memoryInUse();
            }
            if (!doAction(m_options.actions.at(i))) {
                return false;
            }
        }
        return finish();
    }

private:
    bool doAction(int action)
    {
        m_log.begin(action, m_user.kindOf(action));
        m_checks.beforeAction(action);
        const double pixels = m_user.pixels();
        const std::clock_t start = std::clock();
        const QString done = m_user.act(action);
        const double seconds = double(std::clock() - start) / CLOCKS_PER_SEC;
        if (m_options.says) {
            std::printf("%6d  %s\n", action, qPrintable(done));
            std::fflush(stdout);
        }
        if (seconds > m_measured.slowest) {
            m_measured.slowest = seconds;
            m_measured.slowestAction = action;
        }
        QStringList wrong = m_checks.afterAction(m_user.takeStalePictures());
        if (seconds > longestTime(pixels + m_user.pixels())) {
            wrong.append(QStringLiteral("the action took %1 s").arg(seconds));
        }
        if (!wrong.isEmpty()) {
            printError(action, done, wrong.first());
            return false;
        }
        m_user.tidy();
        return true;
    }

    /// Allocated bytes without the memory that MainWindowUser::keptByFields() returns.
    double memoryInUse() const { return tests::allocatedBytes() - m_user.keptByFields(); }

    bool finish()
    {
        m_log.begin(int(m_options.actions.size()), QStringLiteral("the end"));
        m_user.resetToFixedState();
        m_checks.afterAction({});
        // 3 MB plus 1 kB per action, because the caches of Qt grow slowly during the run.
        const double allowed = 3e6 + 1e3 * double(m_options.actions.size());
        const double grown = memoryInUse() - m_measured.memoryBefore;
        std::printf("seed %u: %d actions, %d results of %d calculations, slowest action %d with "
                    "%.2f s, memory grew by %.0f kB\n",
                    m_options.seed, int(m_options.actions.size()), m_checks.results(),
                    m_checks.calculations(), m_measured.slowestAction, m_measured.slowest,
                    grown / 1000.0);
        if (grown > allowed) {
            printError(int(m_options.actions.size()), QStringLiteral("the end"),
                       QStringLiteral("memory grew by %1 bytes").arg(grown));
            return false;
        }
        return true;
    }

    void printError(int action, const QString& done, const QString& wrong) const
    {
        std::fprintf(stderr, "seed %u, action %d: %s: %s\n", m_options.seed, action,
                     qPrintable(done), qPrintable(wrong));
    }

    const Options& m_options;
    tests::MainWindowUser m_user;
    tests::PanelChecks m_checks;
    tests::ActionLog m_log;
    Measurements m_measured;
};

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    dropRootRights();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    // Prints no warnings, because warnings about unreadable files are expected.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtCriticalMsg || type == QtFatalMsg) {
            std::fprintf(stderr, "%s\n", qPrintable(text));
        }
    });
    Options options;
    tests::RandomFiles files;
    if (!readOptions(QApplication::arguments(), options) || !files.isReady()) {
        std::fputs("random_user SEED ACTIONS [--only 3,17,40] [--log FILE] [--say]\n", stderr);
        return 2;
    }
    QDir::setCurrent(files.folder()); // files with relative names are written to this folder
    QElapsedTimer timer;
    timer.start();
    Body body;
    const bool isGood = Run(body, files, options).run();
    std::printf("%.1f s\n", double(timer.elapsed()) / 1000.0);
    QApplication::closeAllWindows();
    return isGood ? 0 : 1;
}
