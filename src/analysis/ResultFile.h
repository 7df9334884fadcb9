// Writes a result map to a file.
#pragma once

#include "analysis/ResultText.h"

#include <QString>

namespace analysis
{

/// Writes the result map @p map to the file @p path; an existing file is overwritten. See
/// writeResultMap() for the format and the other parameters.
///
/// @return false if the file cannot be opened (see data::openForWriting()) or a write fails;
///         after a failed write the file is incomplete
bool writeResultFile(const QString& path, const A2DData& map, const ValenceMix& mix,
                     const std::array<bool, columnCount>& wanted);

} // namespace analysis
