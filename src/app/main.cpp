// Starts the program: the language, the main window and the event loop.

#include "app/Body.h"
#include "app/Language.h"
#include "app/Signals.h"

#include <QApplication>
#include <QTranslator>

int main(int argc, char* argv[])
{
    app::ignoreSignals();
    QApplication application(argc, argv);
    const app::Language language = app::languageFromArguments(QCoreApplication::arguments().mid(1));
    QTranslator translator;
    app::installLanguage(language, translator);

    Body body;
    body.show();
    return QApplication::exec();
}
