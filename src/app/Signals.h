// Signals that would end the program at a failed write.
#pragma once

namespace app
{

/// Ignores the signals of a write to a pipe whose reader has gone and of a write
/// past the largest file that the process may have. They become failed writes: of
/// the debug log, which nobody reads any more, and of a result, which is told.
void ignoreSignals();

} // namespace app
