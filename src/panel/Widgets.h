// The widgets and windows that the parts of the panel work on.
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

/// What the panel is put together from, for those of its parts that read widgets,
/// draw into windows or make connections. Nothing here is owned, all of it outlives the
/// parts, and no row comes or goes once the panel is constructed.
struct Widgets {
    const Ui_FourPs* form = nullptr;
    const RefFiles* references = nullptr; ///< with the four reference rows
    QList<AXafsFileSelect*> spectra;      ///< Ref 1 to Ref 4, then the target
    QList<AEPoint*> points;               ///< the eight energy rows
    QLineEdit* energyList = nullptr;      ///< a list of energies for all rows
    AFileSelect* mapFiles = nullptr;      ///< several maps at once
    Displays* graphs = nullptr;           ///< the graph window
    DispMBase* resultMap = nullptr;       ///< the window of the result map
    DispMBase* dataMap = nullptr;         ///< the window of the measured map
    QButtonGroup* mapRadios = nullptr;    ///< the quantity that the result map shows
    QButtonGroup* mapRows = nullptr;      ///< the energy row that the measured map shows
    QButtonGroup* normRadios = nullptr;   ///< the presentation of all spectra
};

} // namespace panel
