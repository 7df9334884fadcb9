// The result map's text made the plain way, to compare the product with.
#pragma once

#include <QString>

#include <array>

class A2DData;
class QIODevice;

namespace tests
{

/// Where a valence comes from: texts of line edits, read for each pixel anew.
struct PlainValences {
    int validReferences = 0;
    QString first;
    QString second;
};

/// Writes a result map number by number through QString::arg and a text
/// stream, line by line in the order of the file.
/// @return whether the stream is still well after the last line
bool writePlainResultMap(QIODevice& device, const A2DData& map, const PlainValences& valences,
                         const std::array<bool, 13>& wanted);

} // namespace tests
