#include "panel/FocusOrder.h"

#include "panel/Widgets.h"
#include "rows/ARefFile.h"
#include "rows/RefFiles.h"
#include "ui_FourPs.h"

#include <algorithm>

namespace panel
{

// By default the focus chain has the order in which the widgets were added to the panel. The
// reference rows and the energy rows are added after the widgets of the form, although they are
// shown above many of these widgets. So the Tab key would not follow the layout.
void orderFocusChain(QWidget* panel, const Widgets& widgets)
{
    QList<QWidget*> references;
    QList<QWidget*> spectraAndProcessing;
    QList<QWidget*> energyRows;
    QList<QWidget*> actions;
    const Ui_FourPs& form = *widgets.form;
    const QList<ARefFile*>& rows = widgets.references->RefRows;
    const auto isReference = [&rows](const QWidget* widget) {
        return std::any_of(rows.cbegin(), rows.cend(),
                           [widget](const ARefFile* row) { return row->isAncestorOf(widget); });
    };
    for (QWidget* widget = panel->nextInFocusChain(); widget != panel;
         widget = widget->nextInFocusChain()) {
        if (!panel->isAncestorOf(widget) || widget->focusPolicy() == Qt::NoFocus) {
            continue;
        }
        if (isReference(widget)) {
            references.append(widget);
        } else if (form.FourPsFiles->isAncestorOf(widget)) {
            energyRows.append(widget);
        } else if (form.FourPsAction->isAncestorOf(widget) || widget == form.Message) {
            actions.append(widget);
        } else {
            spectraAndProcessing.append(widget);
        }
    }
    const QList<QWidget*> order = references + spectraAndProcessing + energyRows + actions;
    for (qsizetype i = 1; i < order.size(); ++i) {
        QWidget::setTabOrder(order.at(i - 1), order.at(i));
    }
}

} // namespace panel
