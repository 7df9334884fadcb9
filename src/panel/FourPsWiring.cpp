// Every connection of the panel. They are made once and never change.

#include "panel/FourPs.h"

#include "rows/AEPoint.h"
#include "rows/ARefFile.h"

void FourPs::wire()
{
    wireReferences();
    wireEnergyRows();
    wireFileRows();
    wireButtons();
}

void FourPs::wireReferences()
{
    for (ARefFile* row : std::as_const(Refs.RefRows)) {
        connect(row, &ARefFile::changedUse, &Refs, &RefFiles::changedUse);
        connect(row, &ARefFile::selectedFile, &Refs, &RefFiles::selectedFile);
        connect(row, &ARefFile::foundNewEdge, this, &FourPs::noticedNewEdge);
    }
    connect(&Refs, &RefFiles::changedUse, this, &FourPs::calcBoth);
}

void FourPs::wireEnergyRows()
{
    for (AEPoint* row : std::as_const(EPoints)) {
        connect(row, &AEPoint::newDir, this, &FourPs::receiveNewDir);
        connect(row, &AEPoint::newEnergy, this, &FourPs::receiveNewEnergy);
        connect(row, &AEPoint::changedCB, this, &FourPs::calcBoth);
    }
    connect(MultiEnergys, &QLineEdit::editingFinished, this, &FourPs::newMultiEnergys);
}

void FourPs::wireFileRows()
{
    for (AXafsFileSelect* row : std::as_const(XafsFiles)) {
        connect(row, &AFileSelect::newDir, this, &FourPs::receiveNewDir);
        connect(row, &AFileSelect::newFilePath, this, &FourPs::receiveNewFile);
        connect(row, &AXafsFileSelect::updated, this, &FourPs::calcBoth);
    }
    connect(ui.DispFSelect, &AFileSelect::newDir, this, &FourPs::receiveNewDir);
    connect(ui.DispFSelect, &AFileSelect::newFilePaths, this, &FourPs::receiveNewDispFiles);
    connect(MultiFiles, &AFileSelect::newDir, this, &FourPs::receiveNewDir);
    connect(MultiFiles, &AFileSelect::newFilePaths, this, &FourPs::receiveNewPaths);
    connect(ui.RemoveAFile, &QPushButton::clicked, this, &FourPs::removeAFile);
}

void FourPs::wireButtons()
{
    connect(ui.WriteB, &QPushButton::clicked, this, &FourPs::calcAndWrite);
    connect(ui.CalcTargetB, &QPushButton::clicked, this, &FourPs::calcTarget);
    connect(ui.LCFB, &QPushButton::clicked, this, &FourPs::lcf);
    connect(ui.CalcMapB, &QPushButton::clicked, this, &FourPs::calcMap);
    connect(ui.TypeNonEquiv, &QRadioButton::toggled, this, &FourPs::calcBoth);
    connect(ui.NonEquivBGLinear, &QRadioButton::toggled, this, &FourPs::calcBoth);
    for (QLineEdit* edit : {ui.EdgeE, ui.PreEEndDE, ui.PostEStartDE}) {
        connect(edit, &QLineEdit::editingFinished, this, &FourPs::setEdge);
    }
    connect(ui.SubPostEforRef, &QRadioButton::toggled, this, &FourPs::changedSubBGTypeForRef);
    connect(ui.SubPostEforTarget, &QRadioButton::toggled, this, &FourPs::changedSubBGTypeForTarget);
    connect(ui.DispCondsB, &QCheckBox::toggled, this, &FourPs::dispCalcConditions);
}
