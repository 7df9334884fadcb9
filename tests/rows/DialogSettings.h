// The toolkit's file dialog keeps settings of its own.
#pragma once

#include <QSettings>
#include <QTemporaryDir>

namespace tests
{

/// Sends the settings of all file dialogs into @p folder, so that a test
/// neither reads nor changes those of the person who runs it.
inline void keepDialogSettingsIn(const QTemporaryDir& folder)
{
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path());
}

} // namespace tests
