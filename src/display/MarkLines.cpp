#include "display/MarkLines.h"

#include "display/LineEditText.h"
#include "display/MarkLine.h"

void MarkLines::add(MarkLine* line)
{
    lines.append(line);
}

void MarkLines::clear()
{
    lines.clear();
    selected = false;
    selectedIndex = -1;
}

double MarkLines::value(int i) const
{
    const MarkLine* line = lines.value(i);
    return line ? display::numberIn(line->edit) + baseValue(i) : 0.0;
}

double MarkLines::baseValue(int i) const
{
    const MarkLine* line = lines.value(i);
    const MarkLine* base = line && line->relative ? lines.value(line->baseIndex) : nullptr;
    return base ? display::numberIn(base->edit) : 0.0;
}
