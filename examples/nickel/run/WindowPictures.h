// Saves pictures of the program's windows.
#pragma once

#include <QDir>
#include <QList>
#include <QSize>
#include <QString>

class QWidget;

/// Shows a window at the given size and saves its picture.
/// @return false if the file cannot be written
bool savePicture(QWidget* window, const QSize& size, const QString& path);

/// Saves a picture of every window at its current size as "<object name>.png" in
/// @p folder.
/// @return false if any of the files cannot be written
bool savePictures(const QList<QWidget*>& windows, const QDir& folder);
