// The interface between a fuzz target and its driver.
#pragma once

#include <QByteArray>

namespace fuzz
{

/// Runs one input and checks properties of the results. Each target defines this function;
/// libFuzzer and the driver call it through Entry.cpp. Whether a check fails must not
/// depend on earlier calls, so that a single input reproduces a failure.
void tryInput(const QByteArray& bytes);

/// Reports that the condition @p what failed and ends the process.
[[noreturn]] void fail(const char* what, const char* file, int line);

} // namespace fuzz

// Calls fuzz::fail() if @p condition is false.
#define FUZZ_REQUIRE(condition)                                                                    \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            fuzz::fail(#condition, __FILE__, __LINE__);                                            \
        }                                                                                          \
    } while (false)
