#include "analysis/PixelWalk.h"

#include "data/VectorRegisters.h"

namespace analysis
{

void startResult(A2DData& result, const A2DData& base)
{
    result.clear();
    result.xNum = base.xNum;
    result.yNum = base.yNum;
    result.headerLines = base.headerLines;
    const qsizetype pixels = base.xNum > 0 && base.yNum > 0 ? qsizetype{base.xNum} * base.yNum : 0;
    if (result.rows.capacity() / 2 > pixels) {
        result.rows = {}; // gives back the room of a much larger map
    }
    result.rows.reserve(pixels);
    data::cleanVectorRegisters(); // a paint may have come before
}

} // namespace analysis
