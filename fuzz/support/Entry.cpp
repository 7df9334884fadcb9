// The function that libFuzzer and the driver call for each input, and fuzz::fail().

#include "support/FuzzTarget.h"

#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace
{

void dropMessage(QtMsgType, const QMessageLogContext&, const QString&) {}

} // namespace

void fuzz::fail(const char* what, const char* file, int line)
{
    std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, what);
    std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // Discards the messages of the program, because millions of invalid inputs produce too
    // many of them.
    [[maybe_unused]] static const auto former = qInstallMessageHandler(dropMessage);
    // A copy in its own allocation, so that a sanitizer detects reads past the end of the
    // allocation. It does not detect reads of the terminating null that QByteArray adds, or of
    // an unused byte after it.
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    fuzz::tryInput(bytes);
    return 0;
}
