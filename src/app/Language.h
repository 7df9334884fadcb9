// The language of the user interface, which the command line selects.
#pragma once

#include <QStringList>

class QTranslator;

namespace app
{

/// The languages of the user interface.
enum class Language { Japanese, English };

/// The language that @p arguments, without the name of the program, select.
///
/// "-j" selects Japanese and "-e" English; the last of them counts. They are compared
/// exactly, and all other arguments are ignored. The default is Japanese.
Language languageFromArguments(const QStringList& arguments);

/// Installs the translation to @p language. Call this before constructing any window.
///
/// The texts in the sources are English, so nothing is installed for English. If the
/// Japanese translation cannot be loaded, the texts remain English, without a message.
///
/// @param translator  receives the translation; must live as long as the application
void installLanguage(Language language, QTranslator& translator);

} // namespace app
