// A remedy for arithmetic that is slow after a paint.
#pragma once

namespace data
{

/// Clears the upper halves of the processor's vector registers where it has wide
/// ones; changes no value that the program uses.
///
/// The toolkit's fill of a rectangle works with wide instructions and leaves
/// those halves in use. On many processors each change between wide and narrow
/// instructions then waits longer than a logarithm takes, until somebody clears
/// them: a map calculation after a paint took seven times as long, and so did a
/// series of small fills. Called ahead of long loops of arithmetic, and between
/// small fills.
void cleanVectorRegisters();

} // namespace data
