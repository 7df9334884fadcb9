// Checks the files that "Write" writes.
#pragma once

#include <QString>

#include <array>

class FourPs;

namespace tests
{

/// Compares the written files with the result and the histograms of a panel. Call
/// ignoreOldMessages() before the first write and after each clearing of the message field.
/// Call check() after each write.
class WrittenFiles
{
public:
    explicit WrittenFiles(const FourPs& panel)
        : m_panel(panel)
    {
    }

    /// Makes the next check() ignore the present text of the message box.
    void ignoreOldMessages();

    /// Checks the files after a write. Returns a description of the first error, or an empty
    /// text. If the panel reported that it cannot open the result file, it is an error if
    /// this file exists and is writable; the other files are then not checked.
    QString check();

private:
    std::array<bool, 13> wantedColumns() const;
    QByteArray expectedMap() const;
    QString checkHistogram(const QString& path, int which) const;

    const FourPs& m_panel;
    qsizetype m_messagesBefore = 0; ///< length of the old messages in characters
};

} // namespace tests
