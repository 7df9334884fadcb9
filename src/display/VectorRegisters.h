// A remedy for slow small fills.
#pragma once

namespace display
{

/// Clears the upper halves of the processor's vector registers where it has
/// wide ones; changes no value that the program uses.
///
/// The toolkit's fill of a rectangle by wide instructions leaves those halves in
/// use, and on many processors each change between wide and narrow instructions
/// then costs more than the fill of a small rectangle itself. Called after each
/// fill of a long series it takes two thirds off its time (bench_mapPaint).
void cleanVectorRegisters();

} // namespace display
