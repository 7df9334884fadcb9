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
    // setChecked() has already emitted changedUse() through toggled(). On purpose it is emitted
    // again, so that receivers run twice.
    Q_EMIT changedUse(f);
}
