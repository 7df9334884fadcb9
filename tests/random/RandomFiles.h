// The files that a random user loads and writes.
#pragma once

#include "random/Draw.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace tests
{

/// Files in a folder of their own, which is deleted at the end. Every call makes
/// its file anew, whatever is in its place, so that what an action finds does
/// not depend on earlier ones. There are few names, so that the folder stays small.
class RandomFiles
{
public:
    RandomFiles() = default;

    /// Whether the folder could be made.
    bool isReady() const { return m_dir.isValid(); }

    QString folder() const { return m_dir.path(); }

    /// A spectrum that can be read, @p which from 0 to 2.
    QString goodSpectrum(int which);

    /// A text map that can be read: of 8 by 6 pixels for @p which 0 to 4, of other
    /// sizes, of a larger one or with an energy for 5 to 8.
    QString goodMap(int which);

    /// A binary map of ready values.
    QString goodBinaryMap(int which);

    /// A file, or something else, that is no good spectrum and no good map.
    QString hostileFile(Draw& draw);

    /// Makes the place of @p path something else: shorter, another kind of file,
    /// without rights, a folder, a link to itself, or nothing.
    /// @return what was done
    QString spoil(const QString& path, Draw& draw);

    /// A path to write to: good ones, some with older histogram files beside them,
    /// and ones that cannot be written.
    QString placeToWrite(Draw& draw);

private:
    QString make(const QString& name, const QByteArray& content);
    void removeWhateverIs(const QString& path);
    QString hostileTarget(Draw& draw);

    QTemporaryDir m_dir;
};

} // namespace tests
