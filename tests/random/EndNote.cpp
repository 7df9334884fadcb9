#include "random/EndNote.h"

#include "random/AllocatedMemory.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <string_view>
#include <unistd.h>

#ifdef AELK_ASKS_THE_SANITIZER
// Of the sanitizers; not every compiler brings their headers.
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

/// Prints the note, the first time alone: several of the ends may follow each other.
void printNote(std::string_view end)
{
    if (isPrinted == 0) {
        isPrinted = 1;
        print({noteText.data(), noteSize});
        print(end);
    }
}

// The program ends as it would have without it: the signal comes again.
void onFault(int signal)
{
    printNote(": the program ended here\n");
    ::raise(signal);
}

#ifndef AELK_ASKS_THE_SANITIZER
/// For a fault that has used up the stack.
std::array<char, 65536> otherStack;
#endif

void onAlarm(int)
{
    printNote(": it never ends\n");
    ::_exit(3);
}

/// Calls @p handler once for @p signal, and leaves the next one to the system.
void follow(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_ONSTACK;
    ::sigaction(signal, &action, nullptr);
}

} // namespace

void printNoteAtEnd()
{
    follow(SIGALRM, onAlarm);
    follow(SIGABRT, onFault);
#ifdef AELK_ASKS_THE_SANITIZER
    __sanitizer_set_death_callback([] { printNote(": the sanitizer ended the program here\n"); });
#else
    stack_t stack = {};
    stack.ss_sp = otherStack.data();
    stack.ss_size = otherStack.size();
    ::sigaltstack(&stack, nullptr);
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) {
        follow(signal, onFault);
    }
#endif
}

void setEndNote(const QByteArray& note)
{
    noteSize = std::min(static_cast<std::size_t>(note.size()), noteText.size());
    std::copy_n(note.cbegin(), noteSize, noteText.begin());
}

} // namespace tests

#ifdef AELK_ASKS_THE_SANITIZER
// Called before each report of undefined behaviour: with gcc the end after it calls
// nothing.
extern "C" void __ubsan_on_report()
{
    tests::printNote(": undefined behaviour\n");
}
#endif
