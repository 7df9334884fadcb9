// Files that are dropped on a widget.
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

/// Drags @p mime over @p widget and lets it go.
inline void dropMime(QWidget* widget, const QMimeData& mime)
{
    // Only a widget that took the drag gets the drop.
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &enter);
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &drop);
}

/// Drags a local file over @p widget and lets it go.
inline void dropFile(QWidget* widget, const QString& path)
{
    QMimeData mime;
    mime.setUrls({QUrl::fromLocalFile(path)});
    dropMime(widget, mime);
}

/// The same with a list of URLs as another program hands it on: a line for each,
/// which ends in CR LF.
inline void dropUrls(QWidget* widget, const QByteArray& list)
{
    QMimeData mime;
    mime.setData(QStringLiteral("text/uri-list"), list);
    dropMime(widget, mime);
}

} // namespace tests
