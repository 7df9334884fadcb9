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
    /// Opens each dialog once. A dialog allocates memory at its first use and keeps it;
    /// without this first use the memory would later be counted as growth. @p files must be
    /// ready and must outlive this object.
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
