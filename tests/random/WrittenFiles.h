// What "Write" has to leave on the disk.
#pragma once

#include <QString>

#include <array>

class FourPs;

namespace tests
{

/// Compares the files of the save row with the result and the histograms of a
/// panel; call forget() first, and after the message box was cleared,
/// and check() after each write.
class WrittenFiles
{
public:
    explicit WrittenFiles(const FourPs& panel)
        : m_panel(panel)
    {
    }

    /// Takes what is in the message box for old.
    void forget();

    /// What is wrong after a write that has just ended; empty when nothing is. A
    /// write that the panel complained about must not have been possible.
    QString check();

private:
    std::array<bool, 13> wantedColumns() const;
    QByteArray expectedMap() const;
    QString checkHistogram(const QString& path, int which) const;

    const FourPs& m_panel;
    qsizetype m_messagesBefore = 0; ///< length of their text
};

} // namespace tests
