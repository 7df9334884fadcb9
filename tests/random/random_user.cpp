// A random user on the real main window, and checks after each action.
//
//   random_user SEED ACTIONS [--only 3,17,40] [--log FILE] [--say]
//
// --only leaves out all other actions, --log keeps the number and the kind of the
// action under way in a file, --say prints what each action does. The result is 0
// when every check holds, and 1 after the first that does not. The actions follow
// from SEED, except where the toolkit's threads have a part: those of file dialogs.
// scripts/random runs this program, and shortens the list of actions that fails.

#include "app/Body.h"
#include "panel/FourPs.h"
#include "random/ActionLog.h"
#include "random/AllocatedMemory.h"
#include "random/PanelChecks.h"
#include "random/RestlessUser.h"

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

/// What the actions took.
struct Figures {
    double slowest = 0.0; ///< s
    int slowestAction = 0;
    double memoryBefore = 0.0; ///< bytes, after the first actions
};

/// The options of the command line; false when there is something wrong.
bool readOptions(const QStringList& arguments, Options& options)
{
    QCommandLineParser parser;
    parser.addPositionalArgument("SEED", "of all draws");
    parser.addPositionalArgument("ACTIONS", "how many");
    parser.addOptions({{"only", "these actions alone", "3,17,40"},
                       {"log", "keeps the action under way", "FILE"},
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

/// Permissions mean nothing to root. The memory of a process that gave up its
/// rights could not be looked at for leaks without the second call.
void giveUpRights()
{
    if (::geteuid() == 0) {
        constexpr uid_t nobody = 65534;
        if (::setresgid(nobody, nobody, nobody) == 0 && ::setresuid(nobody, nobody, nobody) == 0) {
            ::prctl(PR_SET_DUMPABLE, 1, 0, 0, 0);
        }
    }
}

/// The time of an action may grow with what it calculates and paints. Generous: an
/// action that hangs is looked for, no slow one.
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
        m_checks.afterAction({}); // the first pictures
    }

    /// Whether all checks hold.
    bool run()
    {
        const qsizetype first = m_options.actions.size() / 4;
        for (qsizetype i = 0; i < m_options.actions.size(); ++i) {
            if (i == first) {
                m_user.settle();
                m_checks.afterAction({});
                m_figures.memoryBefore = memoryInUse();
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
        if (seconds > m_figures.slowest) {
            m_figures.slowest = seconds;
            m_figures.slowestAction = action;
        }
        QStringList wrong = m_checks.afterAction(m_user.takeLeftBehind());
        if (seconds > longestTime(pixels + m_user.pixels())) {
            wrong.append(QStringLiteral("it took %1 s").arg(seconds));
        }
        if (!wrong.isEmpty()) {
            complain(action, done, wrong.first());
            return false;
        }
        m_user.tidy();
        return true;
    }

    /// Bytes, without what fields keep by the design of the toolkit.
    double memoryInUse() const { return tests::allocatedBytes() - m_user.keptByFields(); }

    bool finish()
    {
        m_log.begin(int(m_options.actions.size()), QStringLiteral("the end"));
        m_user.settle();
        m_checks.afterAction({});
        // Bytes; caches of the toolkit fill slowly.
        const double allowed = 3e6 + 1e3 * double(m_options.actions.size());
        const double grown = memoryInUse() - m_figures.memoryBefore;
        std::printf("seed %u: %d actions, %d results of %d calculations, slowest action %d with "
                    "%.2f s, memory grew by %.0f kB\n",
                    m_options.seed, int(m_options.actions.size()), m_checks.results(),
                    m_checks.calculations(), m_figures.slowestAction, m_figures.slowest,
                    grown / 1000.0);
        if (grown > allowed) {
            complain(int(m_options.actions.size()), QStringLiteral("the end"),
                     QStringLiteral("memory grew by %1 bytes").arg(grown));
            return false;
        }
        return true;
    }

    void complain(int action, const QString& done, const QString& wrong) const
    {
        std::fprintf(stderr, "seed %u, action %d: %s: %s\n", m_options.seed, action,
                     qPrintable(done), qPrintable(wrong));
    }

    const Options& m_options;
    tests::RestlessUser m_user;
    tests::PanelChecks m_checks;
    tests::ActionLog m_log;
    Figures m_figures;
};

} // namespace

int main(int argc, char* argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    giveUpRights();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    // Remarks on files that cannot be read are expected.
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
    QDir::setCurrent(files.folder()); // a name without a folder is written there
    QElapsedTimer timer;
    timer.start();
    Body body;
    const bool isGood = Run(body, files, options).run();
    std::printf("%.1f s\n", double(timer.elapsed()) / 1000.0);
    QApplication::closeAllWindows();
    return isGood ? 0 : 1;
}
