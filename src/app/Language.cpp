#include "app/Language.h"

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

} // namespace app
