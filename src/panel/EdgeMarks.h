// The marker lines in the plots of spectra.
#pragma once

class MarkLines;

namespace panel
{

struct Widgets;

/// The two sets of marker lines. The position of a line is the text of a line edit. The
/// sets exist until the process ends.
struct EdgeMarks {
    /// The edge, the ends of the background lines, and the energy of each energy row.
    MarkLines* allSpectra = nullptr;
    /// The edge and the ends of the background lines.
    MarkLines* singleSpectrum = nullptr;
};

/// Makes both sets from the fields of the panel and assigns them to plots:
/// @c allSpectra to the plot of all spectra, @c singleSpectrum to the plots of Ref 1,
/// Ref 2 and the target. The plots of Ref 3 and Ref 4 have no lines, on purpose.
EdgeMarks makeEdgeMarks(const Widgets& widgets);

} // namespace panel
