// A separate settings folder for Qt's file dialog.
#pragma once

#include <QSettings>
#include <QTemporaryDir>

namespace tests
{

/// Redirects the settings of all file dialogs to a temporary folder, so that a test
/// neither reads nor changes the user's own settings.
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
