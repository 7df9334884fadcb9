// A scope guard that shows the wait cursor during a calculation.
#pragma once

namespace display
{

/// Shows the wait cursor over all windows of the program from construction to
/// destruction. Guards can be nested: only the outermost one sets and restores the
/// cursor.
///
/// The guard processes no events. Use it in the GUI thread only.
class [[nodiscard]] WaitCursor
{
public:
    /// @param isWanted  false makes the guard a no-op, for a short calculation
    explicit WaitCursor(bool isWanted = true);
    ~WaitCursor();

    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    bool m_isWanted;
};

} // namespace display
