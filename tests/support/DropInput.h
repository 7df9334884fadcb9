// Simulates drag and drop on a widget.
#pragma once

#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QString>
#include <QUrl>
#include <QWidget>

namespace tests
{

/// Drags @p mime over @p widget and drops it there.
inline void dropMime(QWidget* widget, const QMimeData& mime)
{
    // Qt delivers a drop event only to a widget that received a drag-enter event before.
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &enter);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &drop);
}

/// Drags a local file over @p widget and drops it there.
inline void dropFile(QWidget* widget, const QString& path)
{
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(path)});
    dropMime(widget, mime);
}

/// Drops @p list as text/uri-list, the MIME type of dragged files. @p list must contain one
/// URL per line, and each line must end in CR LF.
inline void dropUrls(QWidget* widget, const QByteArray& list)
{
    QMimeData mime;
    mime.setData(QStringLiteral("text/uri-list"), list);
    dropMime(widget, mime);
}

} // namespace tests
