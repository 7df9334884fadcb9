#include "random/CrashNote.h"

#include "random/AllocatedMemory.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <string_view>
#include <unistd.h>

#ifdef AELK_WITH_ADDRESS_SANITIZER
// Declared here because not every compiler ships the sanitizers' headers.
extern "C" void __sanitizer_set_death_callback(void (*callback)());
extern "C" void __ubsan_on_report();
#endif

namespace tests
{

namespace
{

std::array<char, 300> noteText;
std::size_t noteSize = 0;
volatile std::sig_atomic_t isPrinted = 0;

void print(std::string_view text)
{
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
}

/// Prints the note and @p end. Only the first call prints, because several handlers can
/// run one after another.
void printNote(std::string_view end)
{
    if (isPrinted == 0) {
        isPrinted = 1;
        print({noteText.data(), noteSize});
        print(end);
    }
}

// Prints the note and raises the signal again. SA_RESETHAND has already restored the
// default action, so the program ends as it would without this handler.
void onFault(int signal)
{
    printNote(": the program ended here\n");
    ::raise(signal);
}

#ifndef AELK_WITH_ADDRESS_SANITIZER
/// Stack of the handlers. After a stack overflow the normal stack has no space for them.
std::array<char, 65536> alternateStack;
#endif

void onAlarm(int)
{
    printNote(": the action did not return in time\n");
    ::_exit(3);
}

/// Installs @p handler for one delivery of @p signal. After that, the default action
/// applies again.
void handleOnce(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_ONSTACK;
    ::sigaction(signal, &action, nullptr);
}

} // namespace

void installCrashNote()
{
    handleOnce(SIGALRM, onAlarm);
    handleOnce(SIGABRT, onFault);
#ifdef AELK_WITH_ADDRESS_SANITIZER
    __sanitizer_set_death_callback([] { printNote(": the sanitizer ended the program here\n"); });
#else
    stack_t stack = {};
    stack.ss_sp = alternateStack.data();
    stack.ss_size = alternateStack.size();
    ::sigaltstack(&stack, nullptr);
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) {
        handleOnce(signal, onFault);
    }
#endif
}

void setCrashNote(const QByteArray& note)
{
    noteSize = std::min(static_cast<std::size_t>(note.size()), noteText.size());
    std::copy_n(note.cbegin(), noteSize, noteText.begin());
}

} // namespace tests

#ifdef AELK_WITH_ADDRESS_SANITIZER
// UBSan calls this function before each report. It is needed because GCC's UBSan ends the
// program without calling the death callback.
extern "C" void __ubsan_on_report()
{
    tests::printNote(": undefined behaviour\n");
}
#endif
