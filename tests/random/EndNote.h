// What is printed where the program ends by a fault.
#pragma once

#include <QByteArray>

namespace tests
{

/// From now on a sanitizer's report, a crash, an abort and an alarm print the latest
/// note, followed by what ended the program. Only text that is ready is written then:
/// memory may be broken.
void printNoteAtEnd();

/// Sets the note, of one line; what is beyond some hundred bytes is left out.
void setEndNote(const QByteArray& note);

} // namespace tests
