// The order in which Tab goes through the panel.
#pragma once

class QWidget;

namespace panel
{

struct Widgets;

/// Sets the focus chain of the fields and buttons inside @p panel: references, the
/// other spectra and the processing, energy rows, actions and messages. The order
/// within each of these groups stays as it is.
void orderFocusChain(QWidget* panel, const Widgets& widgets);

} // namespace panel
