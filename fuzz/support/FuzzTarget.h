// What each fuzz target gives to its driver.
#pragma once

#include <QByteArray>

namespace fuzz
{

/// Tries one input and checks the properties of the target. Each target defines
/// it once; libFuzzer and the replay driver call it through Entry.cpp. It keeps
/// nothing from one call to the next, so that an input alone reproduces a failure.
void tryInput(const QByteArray& bytes);

/// Ends the process with a report: @p what did not hold.
[[noreturn]] void fail(const char* what, const char* file, int line);

} // namespace fuzz

// A property that must hold for every input.
#define FUZZ_REQUIRE(condition)                                                                    \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            fuzz::fail(#condition, __FILE__, __LINE__);                                            \
        }                                                                                          \
    } while (false)
