// aelk on the nickel sample: aelk_sample FOLDER
//
// With a display the windows stay open; without one it runs off screen. Either
// way it writes the result maps into out/ and says how near they come to the
// truth; the exit status is 0 when all of them are within their bounds.
#include "MapErrors.h"
#include "SampleRun.h"

#include "app/Body.h"
#include "panel/FourPs.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

namespace
{

bool hasDisplay()
{
    if (qEnvironmentVariable("QT_QPA_PLATFORM") == QLatin1String("offscreen")) {
        return false;
    }
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

void print(const FormOutcome& outcome)
{
    std::printf("\n%s: %s\n", qPrintable(outcome.form), outcome.isGood() ? "good" : "OFF");
    std::printf("  %-40s %10s %10s\n", "", "measured", "bound");
    for (const SampleCheck& check : outcome.checks) {
        std::printf("  %-40s %10.4f %10.4f%s\n", qPrintable(check.what), check.measured,
                    check.bound, check.isGood() ? "" : "  OFF");
    }
    std::printf("  result map: %s%s\n", qPrintable(outcome.resultPath),
                outcome.written ? "" : "  NOT WRITTEN");
}

bool runAllForms(SampleRun& run)
{
    bool good = true;
    run.load();
    for (const nickel::MapForm& form : nickel::mapForms()) {
        const FormOutcome outcome = run.calculate(form);
        print(outcome);
        good = good && outcome.isGood();
    }
    std::printf("\n%s\n", good ? "All results are within the bounds that the noise allows."
                               : "Some results are further off than the noise allows.");
    std::fflush(stdout);
    return good;
}

} // namespace

int main(int argc, char** argv)
{
    const bool display = hasDisplay();
    if (!display) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2) { // further ones are ignored, as by aelk
        std::fputs("usage: aelk_sample FOLDER\n", stderr);
        return EXIT_FAILURE;
    }
    const QString output = QDir::current().filePath(QStringLiteral("out"));
    if (!QDir().mkpath(output)) {
        std::fprintf(stderr, "aelk_sample: cannot make the folder %s\n", qPrintable(output));
        return EXIT_FAILURE;
    }

    Body body;
    body.show();
    auto* panel = body.findChild<FourPs*>();
    if (panel == nullptr) {
        std::fputs("aelk_sample: the main window has no panel\n", stderr);
        return EXIT_FAILURE;
    }
    SampleRun run(*panel, QDir(arguments.at(1)), QDir(output));
    const bool good = runAllForms(run);
    if (display) {
        QApplication::exec();
    }
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
