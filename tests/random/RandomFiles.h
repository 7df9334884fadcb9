// Creates the files that a random user loads, and the paths to which it writes.
#pragma once

#include "random/Draw.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace tests
{

/// Creates files in a temporary folder. Before it creates a file, it removes the file or
/// folder that has the same name, so the new file does not depend on earlier actions. The
/// class uses only a few names, so the folder remains small.
class RandomFiles
{
public:
    RandomFiles() = default;

    /// Whether the folder could be created.
    bool isReady() const { return m_dir.isValid(); }

    QString folder() const { return m_dir.path(); }

    /// Path of a valid spectrum. @p which is 0 to 2.
    QString validSpectrum(int which);

    /// Path of a valid text map. The maps with @p which = 0 to 4 have 8 by 6 pixels, map 5 is
    /// smaller, map 6 is larger, and maps 7 and 8 have an energy in the header.
    QString validMap(int which);

    /// Path of a valid binary map: 8 by 6 pixels if @p which is 0, otherwise 5 by 6 pixels.
    QString validBinaryMap(int which);

    /// Path for a read that often fails: a file with unusual content, a damaged map, a
    /// missing file, a folder or a device. The path can also be empty or too long.
    QString invalidFile(Draw& draw);

    /// Damages the file at @p path: truncates it, removes its permissions, deletes it, or
    /// replaces it with an unusual file, a folder, a pipe or a link to itself.
    ///
    /// @return a description of the damage
    QString damage(const QString& path, Draw& draw);

    /// A path for the result file. It can be writable, not writable or empty. For some of
    /// the writable paths, older histogram files are in the same folder.
    QString placeToWrite(Draw& draw);

private:
    QString make(const QString& name, const QByteArray& content);
    void removeFileOrFolder(const QString& path);
    QString unusualTarget(Draw& draw);

    QTemporaryDir m_dir;
};

} // namespace tests
