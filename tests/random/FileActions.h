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
    /// Opens each dialog once. A dialog keeps the memory of its first use, which would
    /// otherwise be counted as memory growth later. @p files must be ready and must
    /// outlive the actions.
    FileActions(PanelWindows& windows, RandomFiles& files);

    QList<ActionKind> kinds();

    /// Loads valid files into the rows and sets the options that a calculation needs.
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
