// Ignores the signals that would end the program when a write fails.
#pragma once

/// Functions for the start of the program.
namespace app
{

/// Ignores SIGPIPE (write to a pipe without a reader) and SIGXFSZ (write beyond the
/// maximum file size of the process). The write then fails with an error instead. For
/// the debug log the error has no effect; for a result file it is reported to the user.
void ignoreSignals();

} // namespace app
