// The interface between a fuzz target and its driver.
#pragma once

#include <QByteArray>

namespace fuzz
{

/// Tries one input and checks the properties of the target. Each target defines this
/// function; libFuzzer and the replay driver call it through Entry.cpp. It must not keep
/// state between calls, so that an input alone reproduces a failure.
void tryInput(const QByteArray& bytes);

/// Ends the process and reports that the condition @p what failed.
[[noreturn]] void fail(const char* what, const char* file, int line);

} // namespace fuzz

// Checks a property that must hold for every input.
#define FUZZ_REQUIRE(condition)                                                                    \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            fuzz::fail(#condition, __FILE__, __LINE__);                                            \
        }                                                                                          \
    } while (false)
