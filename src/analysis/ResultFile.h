// A result map as a file.
#pragma once

#include "analysis/ResultText.h"

#include <QString>

namespace analysis
{

/// Writes the result map to the file @p path by writeResultMap(), over one that is
/// there.
///
/// @return false when the file cannot be opened, as data::openForWriting() tells, or
///         cannot be written to its end
bool writeResultFile(const QString& path, const A2DData& map, const ValenceMix& mix,
                     const std::array<bool, columnCount>& wanted);

} // namespace analysis
