// Start-up: the language, the main window, the event loop.

#include "app/Body.h"
#include "app/Language.h"

#include <QApplication>
#include <QTranslator>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const app::Language language = app::languageFromArguments(QCoreApplication::arguments().mid(1));

    QTranslator translator;
    if (language == app::Language::Japanese) {
        // A translation that cannot be loaded leaves the program in English;
        // that is no reason to stop or to complain.
        static_cast<void>(translator.load(QStringLiteral(":qelk_ja_JP"),
                                          QCoreApplication::applicationDirPath(), QString(),
                                          QString()));
        QCoreApplication::installTranslator(&translator);
    }

    Body body;
    body.show();
    return QApplication::exec();
}
