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

void installLanguage(Language language, QTranslator& translator)
{
    if (language == Language::English) {
        return;
    }
    // A null suffix means ".qm". With an empty suffix that is not null, the translator
    // would look for a resource without the extension, which does not exist. The return
    // value of load() is ignored: without the translation the program runs in English.
    static_cast<void>(translator.load(QStringLiteral(":qelk_ja_JP"),
                                      QCoreApplication::applicationDirPath(), QString(),
                                      QString()));
    QCoreApplication::installTranslator(&translator);
}

} // namespace app
