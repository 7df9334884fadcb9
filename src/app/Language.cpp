#include "app/Language.h"

#include <QCoreApplication>
#include <QTranslator>

namespace app
{

Language languageFromArguments(const QStringList& arguments)
{
    Language language = Language::Japanese;
    for (const QString& argument : arguments) {
        if (argument == QLatin1String("-j")) {
            language = Language::Japanese;
        } else if (argument == QLatin1String("-e")) {
            language = Language::English;
        }
    }
    return language;
}

void speak(Language language, QTranslator& translator)
{
    if (language == Language::English) {
        return;
    }
    // Null strings: with an empty suffix that is not null the name of the
    // resource would be taken as it stands, and nothing has that name. Whether
    // the text loaded is no reason to stop or to complain.
    static_cast<void>(translator.load(QStringLiteral(":qelk_ja_JP"),
                                      QCoreApplication::applicationDirPath(), QString(),
                                      QString()));
    QCoreApplication::installTranslator(&translator);
}

} // namespace app
