// Creates the files that a random user loads and writes.
#pragma once

#include "random/Draw.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace tests
{

/// Files in a temporary folder. Each call creates its file again and replaces what is
/// there, so an action does not depend on earlier ones. There are only a few names, so
/// the folder stays small.
class RandomFiles
{
public:
    RandomFiles() = default;

    /// Whether the folder could be created.
    bool isReady() const { return m_dir.isValid(); }

    QString folder() const { return m_dir.path(); }

    /// A valid spectrum; @p which is 0 to 2.
    QString goodSpectrum(int which);

    /// A valid text map. @p which 0 to 4: 8 by 6 pixels; 5: smaller; 6: larger; 7 and 8:
    /// with an energy in the header.
    QString goodMap(int which);

    /// A valid binary map.
    QString goodBinaryMap(int which);

    /// A path to something that is neither a valid spectrum nor a valid map; not always a
    /// file.
    QString hostileFile(Draw& draw);

    /// Damages the file at @p path: truncates it, removes its permissions, or replaces it
    /// by a different kind of file, a folder, a pipe, a link to itself, or nothing.
    ///
    /// @return what was done
    QString damage(const QString& path, Draw& draw);

    /// A path to write to: some are writable, some of them with older histogram files
    /// beside them; others cannot be written.
    QString placeToWrite(Draw& draw);

private:
    QString make(const QString& name, const QByteArray& content);
    void removeFileOrFolder(const QString& path);
    QString hostileTarget(Draw& draw);

    QTemporaryDir m_dir;
};

} // namespace tests
