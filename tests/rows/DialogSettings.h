// The toolkit's file dialog keeps settings of its own.
#pragma once

#include <QSettings>
#include <QTemporaryDir>

namespace tests
{

/// Keeps the settings of all file dialogs in a folder of its own, so that a test
/// neither reads nor changes those of the person who runs it.
class DialogSettings
{
public:
    DialogSettings()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder.path());
    }

private:
    const QTemporaryDir m_folder;
};

} // namespace tests
