// The language of the program's text, as the command line asks for it.
#pragma once

#include <QStringList>

namespace app
{

enum class Language { Japanese, English };

/// The language that @p arguments (without the program's name) ask for.
///
/// "-j" is Japanese, "-e" English, the later of the two wins; both are
/// compared exactly, and any other argument is ignored. Japanese when neither
/// is given.
Language languageFromArguments(const QStringList& arguments);

} // namespace app
