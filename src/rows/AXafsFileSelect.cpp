#include "rows/AXafsFileSelect.h"

#include "display/DispABase.h"
#include "display/LineEditText.h"
#include "display/WaitCursor.h"

#include <QDebug>

AXafsFileSelect::AXafsFileSelect(QWidget* parent)
    : AFileSelect(parent)
{
    connect(this, &AFileSelect::newFilePath, this, &AXafsFileSelect::newFile);
}

void AXafsFileSelect::attach(DispABase* f)
{
    if (frame) {
        disconnect(frame, &DispABase::draw, this, &AXafsFileSelect::draw);
    }
    frame = f;
    if (frame) {
        connect(frame, &DispABase::draw, this, &AXafsFileSelect::draw);
        connect(frame, &DispABase::mPressed, this, &AXafsFileSelect::mPressed);
        connect(frame, &DispABase::mReleased, this, &AXafsFileSelect::mReleased);
        connect(frame, &DispABase::mDragging, this, &AXafsFileSelect::mDragging);
    }
    showDE(true);
    connect(this, &AFileSelect::newDE, this, &AXafsFileSelect::setNewDE, Qt::UniqueConnection);
}

bool AXafsFileSelect::MutAt(double E, double* out) const
{
    return backgroundSubtractedAt(E, subPost, out);
}

void AXafsFileSelect::newFile(QString path)
{
    const display::WaitCursor cursor;
    if (frame) {
        frame->clearScale();
    }
    // Checks the result, not `valid`: if the path is not a file, the earlier spectrum
    // remains valid, but there is no new edge to propose.
    if (readFile(path)) {
        Q_EMIT foundNewEdge(findEdge());
    }
}

void AXafsFileSelect::setNewDE()
{
    // On purpose, the background lines are not fitted again.
    AMutE::dE = display::numberIn(AFileSelect::dE);
    qDebug() << "set new de";
    if (valid) {
        qDebug() << "bb";
        Q_EMIT updated();
    }
}
