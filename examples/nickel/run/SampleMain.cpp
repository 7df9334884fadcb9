// Analyses the nickel sample with aelk. Usage: aelk_sample FOLDER [-e | -j]
// The windows are in English with -e, otherwise in Japanese.
//
// With a display it shows the windows of SampleRun::windows() and runs until they are closed.
// Without a display it saves pictures of them to out/. In both cases it writes the result maps to
// out/ and prints the differences between the results and their expected values. The exit status is
// 0 if all results are within their bounds and all result maps and pictures are written.
#include "CombinationErrors.h"
#include "MapErrors.h"
#include "SampleRun.h"
#include "ShareErrors.h"
#include "WindowPictures.h"

#include "app/Body.h"
#include "app/Language.h"
#include "app/Signals.h"
#include "panel/FourPs.h"

#include <QApplication>
#include <QTranslator>

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

bool report(const SampleOutcome& outcome)
{
    outcome.print();
    // The readers print warnings to stderr, which is unbuffered. Flushing stdout keeps the
    // results and the warnings in their order.
    std::fflush(stdout);
    return outcome.isGood();
}

/// Runs all methods: the non-equivalent method, the linear combination fit and the
/// four-point family. Then calls SampleRun::restart(). Returns whether all checks passed
/// and all result maps were written.
bool runAllMethods(SampleRun& run)
{
    const auto& shares = nickel::shareForms();
    bool good = true;
    run.load();
    for (const nickel::CombinationForm& fit : nickel::combinationForms()) {
        for (const nickel::ShareForm& form : shares) {
            if (form.references == fit.references) {
                good &= report(run.calculate(form));
            }
        }
        good &= report(run.calculate(fit));
    }
    for (const nickel::MapForm& form : nickel::mapForms()) {
        good &= report(run.calculate(form));
    }
    run.restart();
    std::printf("\n%s\n", good ? "All results are within the bounds that the noise allows."
                               : "Some results are further off than the noise allows.");
    std::fflush(stdout);
    return good;
}

} // namespace

int main(int argc, char** argv)
{
    app::ignoreSignals();
    const bool display = hasDisplay();
    if (!display) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 2) { // unknown arguments after FOLDER are ignored
        std::fputs("usage: aelk_sample FOLDER [-e | -j]\n", stderr);
        return EXIT_FAILURE;
    }
    const QString output = QDir::current().filePath(QStringLiteral("out"));
    if (!QDir().mkpath(output)) {
        std::fprintf(stderr, "aelk_sample: cannot make the folder %s\n", qPrintable(output));
        return EXIT_FAILURE;
    }
    QTranslator translator;
    app::installLanguage(app::languageFromArguments(arguments.mid(2)), translator);

    Body body;
    body.show();
    auto* panel = body.findChild<FourPs*>();
    if (panel == nullptr) {
        std::fputs("aelk_sample: the main window has no panel\n", stderr);
        return EXIT_FAILURE;
    }
    SampleRun run(*panel, QDir(arguments.at(1)), QDir(output));
    bool good = runAllMethods(run);
    if (display) {
        for (QWidget* window : run.windows()) {
            window->show();
        }
        QApplication::exec();
    } else if (savePictures(run.windows(), QDir(output))) {
        std::printf("Pictures of all windows are in %s\n", qPrintable(output));
    } else {
        std::fprintf(stderr, "aelk_sample: cannot save pictures in %s\n", qPrintable(output));
        good = false;
    }
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
