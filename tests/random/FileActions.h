// Random actions with files, file rows and their dialogs.
#pragma once

#include "random/ActionKind.h"
#include "random/ModalBoxes.h"
#include "random/PanelWindows.h"
#include "random/RandomFiles.h"

class AFileSelect;

namespace rows
{
class FileDialog;
}

namespace tests
{

class FileActions
{
public:
    /// Opens and closes each dialog that the actions use. A dialog allocates memory when it
    /// is first opened and keeps it. If an action were the first to open it, this memory would
    /// be counted as growth. @p windows and @p files must outlive this object, and @p files
    /// must be ready.
    FileActions(PanelWindows& windows, RandomFiles& files);

    QList<ActionKind> kinds();

    /// Loads valid files, sets the options that a calculation needs, and calculates the result
    /// map. Spectra are loaded into the target row and at least two of the reference rows.
    QString loadEverything(Draw& draw);

    void closeDialogs();

private:
    QString validFile(bool ofASpectrum, Draw& draw);
    QString loadValid(Draw& draw);
    QString loadInvalid(Draw& draw);
    QString loadThenDamage(Draw& draw);
    QString loadSeveral(Draw& draw);
    QString drop(Draw& draw);
    QString write(Draw& draw);
    QString useDialog(Draw& draw);
    QString useOpenDialog(AFileSelect* row, Draw& draw);
    QList<AFileSelect*> rowsWithDialogs() const;
    AFileSelect* someRow(bool ofASpectrum, Draw& draw) const;

    PanelWindows& m_windows;
    RandomFiles& m_files;
    ModalBoxes m_boxes;
};

} // namespace tests
