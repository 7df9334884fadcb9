// The marker lines of the plots of spectra.
#pragma once

class MarkLines;

namespace panel
{

struct Widgets;

/// The two sets of marker lines, which live until the process ends. A line has no
/// place of its own: it is the text of a line edit.
struct EdgeMarks {
    MarkLines* allSpectra = nullptr;     ///< the edge and its limits, and each energy row
    MarkLines* singleSpectrum = nullptr; ///< the edge and its limits
};

/// Makes the sets from the fields of the panel and gives them to their plots: one to
/// the plot of all spectra, the other to those of the first two references and of the
/// target. Ref 3 and Ref 4 carry no lines, on purpose.
EdgeMarks makeEdgeMarks(const Widgets& widgets);

} // namespace panel
