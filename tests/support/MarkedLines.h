// A set of marker lines and the line edits for their values.
#pragma once

#include "display/MarkLine.h"
#include "display/MarkLines.h"

#include <QLineEdit>

#include <memory>
#include <vector>

namespace tests
{

inline constexpr int vertical = 0;
inline constexpr int horizontal = 1;

class MarkedLines
{
public:
    /// Adds a marker line with its own line edit, whose text is @p text. The value is
    /// relative to the value of the marker line with index @p base, or absolute if @p base
    /// is -1.
    MarkLine* add(const QString& text, int direction = vertical, int base = -1)
    {
        m_edits.push_back(std::make_unique<QLineEdit>(text));
        auto* line = new MarkLine(m_edits.back().get(), direction, &set);
        line->index = static_cast<int>(set.lines.size());
        line->relative = base >= 0;
        line->baseIndex = base;
        set.add(line);
        return line;
    }

    QString text(int line) const { return set.lines.at(line)->edit->text(); }

    /// Selects the marker line with index @p line, as a mouse press close to it does.
    void hold(int line)
    {
        set.selected = true;
        set.selectedIndex = line;
    }

    MarkLines set;

private:
    std::vector<std::unique_ptr<QLineEdit>> m_edits;
};

} // namespace tests
