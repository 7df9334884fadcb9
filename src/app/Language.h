// The language of the program's text, as the command line asks for it.
#pragma once

#include <QStringList>

class QTranslator;

namespace app
{

enum class Language { Japanese, English };

/// The language that @p arguments (without the program's name) ask for.
///
/// "-j" is Japanese, "-e" English, the later of the two wins; both are
/// compared exactly, and any other argument is ignored. Japanese when neither
/// is given.
Language languageFromArguments(const QStringList& arguments);

/// Has the application speak @p language from now on: windows have to be built
/// after it. English is the language of the sources, for which nothing is
/// installed. A Japanese text that cannot be loaded leaves English, silently.
///
/// @param translator  holds the text; has to live as long as the application
///                    speaks it
void speak(Language language, QTranslator& translator);

} // namespace app
