// Prints a note when the program crashes.
#pragma once

#include <QByteArray>

namespace tests
{

/// Installs handlers: a sanitizer's report, a crash, an abort and an alarm print the
/// latest note, followed by the cause. The handlers only write existing text and do not
/// allocate, because the heap may be corrupt.
void installCrashNote();

/// Sets the note, a single line. It is cut after 300 bytes.
void setCrashNote(const QByteArray& note);

} // namespace tests
