#include "rows/AEPoint.h"

#include "data/FileAccess.h"
#include "data/MapTextReader.h"
#include "data/PixelFile.h"
#include "data/TDData0.h"
#include "display/LineEditText.h"
#include "display/WaitCursor.h"

#include <QFile>

namespace
{

double mutIn(const QList<QLineEdit*>& edits, int i)
{
    const QLineEdit* edit = edits.value(i);
    return edit != nullptr ? display::numberIn(edit) : 0.0;
}

} // namespace

AEPoint::AEPoint(QWidget* parent)
    : QFrame(parent)
{
    setupUi(this);
    mutEdits = {Mut1, Mut2, Mut3, Mut4};

    connect(FileSelect, &AFileSelect::newDir, this, &AEPoint::newDir);
    connect(FileSelect, &AFileSelect::newFilePath, this, &AEPoint::loadData);
    connect(Energy, &QLineEdit::editingFinished, this, &AEPoint::inNewEnergy);
    // clicked(), not toggled(): when code checks a check box, no calculation must start.
    connect(UseCB, &QCheckBox::clicked, this, &AEPoint::changedCB);
    connect(LCFCB, &QCheckBox::clicked, this, &AEPoint::changedCB);
    connect(VPointCB, &QCheckBox::clicked, this, &AEPoint::changedCB);
}

void AEPoint::energyAndMuts(int i, int j, double* e, double* mi, double* mj) const
{
    *e = display::numberIn(Energy);
    *mi = mutIn(mutEdits, i);
    *mj = mutIn(mutEdits, j);
}

void AEPoint::loadData(QString path)
{
    const display::WaitCursor cursor;
    if (TDData0::isTDData0File(path)) {
        load2dProcData(path);
        return;
    }
    loaded = false;
    QFile file(path);
    if (!data::openForReading(file)) {
        return;
    }
    const auto showEnergy = [this](const QString& text) {
        Energy->setText(text);
        Energy->setCursorPosition(0);
        inNewEnergy();
    };
    if (data::readMapText(file, *this, showEnergy)) {
        loaded = true;
        Q_EMIT newData();
    }
}

void AEPoint::load2dProcData(QString path)
{
    const display::WaitCursor cursor;
    // On purpose the row counts as loaded even if reading fails; the map is then 0 by 0.
    data::appendPixelFile(path, *this);
    loaded = true;
    Q_EMIT newData();
}

void AEPoint::inNewEnergy()
{
    Q_EMIT newEnergy(display::numberIn(Energy));
}
