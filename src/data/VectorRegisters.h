// Avoids the penalty for a transition from AVX to SSE instructions after a paint.
#pragma once

namespace data
{

/// Clears the upper halves of the vector registers (instruction vzeroupper) if the
/// processor has AVX; otherwise does nothing. Changes no value that the program uses.
///
/// When Qt fills a rectangle, it uses AVX instructions and leaves the upper halves in
/// use. On many processors, until the halves are cleared, each transition between AVX and
/// SSE instructions is slower than the calculation of a logarithm. In measurements without
/// this function, a map calculation after a paint took seven times as long; a series of
/// small fills also took seven times as long. Call the function before long loops of
/// arithmetic and between small fills.
void clearUpperVectorHalves();

} // namespace data
