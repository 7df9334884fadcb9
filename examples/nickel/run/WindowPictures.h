// Pictures of the program's windows.
#pragma once

#include <QDir>
#include <QList>
#include <QSize>
#include <QString>

class QWidget;

/// Shows a window at a size and saves the picture of it, as a user would see it.
/// @return false when the file could not be written
bool savePicture(QWidget* window, const QSize& size, const QString& path);

/// Saves every window at its own size as "<object name>.png" in @p folder.
/// @return false when one of them could not be written
bool savePictures(const QList<QWidget*>& windows, const QDir& folder);
