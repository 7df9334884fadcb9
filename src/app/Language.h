// The language of the user interface, which the command line selects.
#pragma once

#include <QStringList>

class QTranslator;

namespace app
{

/// The languages of the user interface.
enum class Language { Japanese, English };

/// Returns the language that the command line selects.
///
/// "-j" selects Japanese and "-e" English; the last of these options counts. They must match
/// exactly, and all other arguments are ignored. The default is Japanese.
///
/// @param arguments  the command line without the name of the program
Language languageFromArguments(const QStringList& arguments);

/// Installs the translation into @p language. Call this before constructing any window.
///
/// The texts in the sources are English, so nothing is installed for English. If the
/// Japanese translation cannot be loaded, the texts remain English, without a message.
///
/// @param translator  receives the translation; must exist while texts are translated
void installLanguage(Language language, QTranslator& translator);

} // namespace app
