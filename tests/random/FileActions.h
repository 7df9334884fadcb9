// What a random user does with files, file rows and their dialogs.
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
    /// Opens the dialogs once, since each keeps memory from then on. @p files must be
    /// ready and must outlive the actions.
    FileActions(PanelWindows& windows, RandomFiles& files);

    QList<ActionKind> kinds();

    /// Loads good files into the rows, so that every calculation runs.
    QString loadEverything(Draw& draw);

    /// Has all dialogs closed.
    void closeDialogs();

private:
    QString goodFile(bool ofASpectrum, Draw& draw);
    QString loadGood(Draw& draw);
    QString loadHostile(Draw& draw);
    QString loadSpoilt(Draw& draw);
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
