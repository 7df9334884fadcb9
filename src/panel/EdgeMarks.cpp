#include "panel/EdgeMarks.h"

#include "display/Displays.h"
#include "display/MarkLine.h"
#include "display/MarkLines.h"
#include "panel/Widgets.h"
#include "rows/AEPoint.h"
#include "ui_FourPs.h"

namespace panel
{

namespace
{

constexpr int vertical = 0;

/// Makes a set of vertical marker lines, one for each edit. The numbers in the second and
/// the third edit are offsets from the number in the first edit.
MarkLines* edgeSet(const QList<QLineEdit*>& edits)
{
    auto* set = new MarkLines;
    for (QLineEdit* edit : edits) {
        auto* line = new MarkLine(edit, vertical);
        line->index = static_cast<int>(set->lines.size());
        line->relative = line->index == 1 || line->index == 2;
        line->baseIndex = line->relative ? 0 : -1;
        set->add(line);
    }
    return set;
}

} // namespace

EdgeMarks makeEdgeMarks(const Widgets& widgets)
{
    const Ui_FourPs& form = *widgets.form;
    const QList<QLineEdit*> edgeEdits{form.EdgeE, form.PreEEndDE, form.PostEStartDE};
    QList<QLineEdit*> allEdits = edgeEdits;
    for (const AEPoint* row : widgets.points) {
        allEdits.append(row->Energy);
    }
    const EdgeMarks marks{edgeSet(allEdits), edgeSet(edgeEdits)};
    widgets.graphs->frame(Displays::DMuts)->DispA->markLines = marks.allSpectra;
    for (const auto id : {Displays::DRef1, Displays::DRef2, Displays::DTarget}) {
        widgets.graphs->frame(id)->DispA->markLines = marks.singleSpectrum;
    }
    return marks;
}

} // namespace panel
