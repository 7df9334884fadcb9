// Checks the files that "Write" writes.
#pragma once

#include <QString>

#include <array>

class FourPs;

namespace tests
{

/// Compares the written files with the result and the histograms of a panel. Call
/// ignoreOldMessages() first and whenever the message box was cleared, and check() after
/// each write.
class WrittenFiles
{
public:
    explicit WrittenFiles(const FourPs& panel)
        : m_panel(panel)
    {
    }

    /// Ignores the present text of the message box in the next check().
    void ignoreOldMessages();

    /// Describes what is wrong after a write; empty if all is correct. A write that the
    /// panel reported as failed must really have been impossible.
    QString check();

private:
    std::array<bool, 13> wantedColumns() const;
    QByteArray expectedMap() const;
    QString checkHistogram(const QString& path, int which) const;

    const FourPs& m_panel;
    qsizetype m_messagesBefore = 0; ///< length of the old messages
};

} // namespace tests
