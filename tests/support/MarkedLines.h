// A set of marker lines together with the edits that hold their values.
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
    /// Adds a line with its own edit. Its value is relative to line @p base unless that
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

    /// Selects a line, as a mouse press next to it does.
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
