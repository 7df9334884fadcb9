// The tab order of the panel.
#pragma once

class QWidget;

namespace panel
{

struct Widgets;

/// Sets the focus chain of the fields and buttons inside @p panel. The order is:
/// references; other spectra and processing; energy rows; actions and messages. The
/// order within each group is not changed.
void orderFocusChain(QWidget* panel, const Widgets& widgets);

} // namespace panel
