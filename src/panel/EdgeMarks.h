// The marker lines in the plots of spectra.
#pragma once

class MarkLines;

namespace panel
{

struct Widgets;

/// The two sets of marker lines. The number in a line edit determines the position of each
/// marker line. The sets exist until the process ends.
struct EdgeMarks {
    /// Lines at the edge, at the end of the pre-edge region, at the start of the post-edge
    /// region, and at the energy of each energy row.
    MarkLines* allSpectra = nullptr;
    /// Lines at the edge, at the end of the pre-edge region and at the start of the post-edge
    /// region.
    MarkLines* singleSpectrum = nullptr;
};

/// Makes both sets of marker lines from the fields of the panel and assigns them to plots.
/// EdgeMarks::allSpectra is used in the plot of all spectra, EdgeMarks::singleSpectrum in
/// the plots of Ref 1, Ref 2 and the target. On purpose the plots of Ref 3 and Ref 4 have
/// no marker lines.
EdgeMarks makeEdgeMarks(const Widgets& widgets);

} // namespace panel
