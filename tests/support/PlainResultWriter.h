// Reference implementation of the result map writer.
#pragma once

#include <QString>

#include <array>

class A2DData;
class QIODevice;

namespace tests
{

/// The valences of the references as texts of line edits. The writer parses them again for
/// each pixel.
struct PlainValences {
    int validReferences = 0;
    QString first;
    QString second;
};

/// Writes a result map through a text stream, line by line in file order. Each number is
/// formatted separately by QString::arg().
///
/// @return whether the status of the stream is QTextStream::Ok after the last line
bool writePlainResultMap(QIODevice& device, const A2DData& map, const PlainValences& valences,
                         const std::array<bool, 13>& wanted);

} // namespace tests
