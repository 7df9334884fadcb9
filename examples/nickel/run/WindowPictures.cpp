#include "WindowPictures.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QWidget>

bool savePicture(QWidget* window, const QSize& size, const QString& path)
{
    window->show();
    window->resize(size);
    // Moving or resizing a window posts further events, so the events are processed more
    // than once.
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
    }
    constexpr int smallestFile = 0;
    const QImage picture = window->grab().toImage().convertToFormat(QImage::Format_RGB888);
    return picture.save(path, "PNG", smallestFile);
}

bool savePictures(const QList<QWidget*>& windows, const QDir& folder)
{
    bool good = true;
    for (QWidget* window : windows) {
        const QString file = window->objectName() + QStringLiteral(".png");
        good &= savePicture(window, window->size(), folder.filePath(file));
    }
    return good;
}
