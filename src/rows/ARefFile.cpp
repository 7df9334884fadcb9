#include "rows/ARefFile.h"

ARefFile::ARefFile(QWidget* parent)
    : QFrame(parent)
{
    setupUi(this);
    connect(UseCB, &QRadioButton::toggled, this, &ARefFile::changedUse);
    connect(XafsFS, &AXafsFileSelect::selectedFile, this, &ARefFile::selectedFile);
    connect(XafsFS, &AXafsFileSelect::foundNewEdge, this, &ARefFile::foundNewEdge);
}

void ARefFile::setUse(bool f)
{
    const bool before = UseCB->isChecked();
    UseCB->setChecked(f);
    if (before == f) {
        return;
    }
    // In addition to the signal caused by toggled(): receivers run twice on purpose.
    Q_EMIT changedUse(f);
}
