// Pointers to the widgets and windows of the panel.
#pragma once

#include <QList>

class AEPoint;
class AFileSelect;
class AXafsFileSelect;
class Displays;
class DispMBase;
class QButtonGroup;
class QLineEdit;
class RefFiles;
class Ui_FourPs;

namespace panel
{

/// The widgets and windows of the panel, for its parts that read widgets, draw into
/// windows or make connections. The objects are not owned and outlive these parts. No row
/// is added or removed after the panel is constructed.
struct Widgets {
    const Ui_FourPs* form = nullptr;
    const RefFiles* references = nullptr; ///< the four reference rows
    QList<AXafsFileSelect*> spectra;      ///< Ref 1 to Ref 4, then the target
    QList<AEPoint*> points;               ///< the eight energy rows
    QLineEdit* energyList = nullptr;      ///< field for a list of energies, one per energy row
    AFileSelect* mapFiles = nullptr;      ///< file row that selects several maps at once
    Displays* graphs = nullptr;           ///< the graph window
    DispMBase* resultMap = nullptr;       ///< the window of the result map
    DispMBase* dataMap = nullptr;         ///< the window of the measured map
    QButtonGroup* mapRadios = nullptr;    ///< buttons for the quantity of the result map
    QButtonGroup* mapRows = nullptr;      ///< buttons for the energy row of the measured map
    QButtonGroup* normRadios = nullptr;   ///< normalisation buttons of the graph of all spectra
};

} // namespace panel
