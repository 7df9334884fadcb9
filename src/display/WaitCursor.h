// The wait cursor, shown as long as a piece of work lasts.
#pragma once

namespace display
{

/// Shows the wait cursor over all windows of the program from construction to
/// destruction, however the scope is left. Guards may be nested: the
/// outermost one alone sets the cursor and takes it away again.
///
/// No events are processed. GUI thread only.
class [[nodiscard]] WaitCursor
{
public:
    /// @param isWanted  false for work that is over before the user would see
    ///                  the cursor change; the guard then does nothing
    explicit WaitCursor(bool isWanted = true);
    ~WaitCursor();

    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;

private:
    bool m_isWanted;
};

} // namespace display
