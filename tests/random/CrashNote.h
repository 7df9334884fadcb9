// Prints a note about the current action when the program crashes or hangs.
#pragma once

#include <QByteArray>

namespace tests
{

/// Installs handlers for sanitizer reports, crashes, aborts and alarms. They print the
/// latest note and the cause. The handlers write only text that is already in memory and
/// do not allocate, because the heap can be corrupt.
void installCrashNote();

/// Sets the note, a single line. Only its first 300 bytes are used.
void setCrashNote(const QByteArray& note);

} // namespace tests
