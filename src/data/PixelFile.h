// A binary map file, open for reading its pixels.
#pragma once

#include "data/A2DData.h"
#include "data/TDData0.h"

#include <QFile>

#include <span>

namespace data
{

/// Reads the pixels of a file of the form that TDData0 has, as many at a time as the
/// caller wants.
class PixelFile
{
public:
    /// Opens the file and reads its header.
    ///
    /// @return false, with a line in the debug log, if the file is not of this form,
    ///         or if its size is negative or data::isSizeTooLarge() for the pixels
    ///         that it holds
    bool open(const QString& path);

    const TDData0Header& header() const { return m_header; }
    qsizetype pixelCount() const { return qsizetype{m_header.width} * m_header.height; }

    /// Reads the next values, or flags, which follow the last value, as many as
    /// @p out takes. What the file does not have keeps its value there.
    void readValues(std::span<double> out);
    void readFlags(std::span<bool> out);

private:
    QFile m_file;
    TDData0Header m_header;
};

/// Puts the pixels of the file at @p path behind the rows of @p map as ready values
/// of mut (i0 = 0), and takes its size. What earlier files left stays in front and
/// keeps its positions. Valid flags play no part: every pixel becomes a row, those
/// that the file leaves out with the value 0.
///
/// @param most  the rows that @p map may hold in all. No position reaches further,
///              and loading again and again does not fill the memory.
/// @return false, with the rows as they were, the size 0 by 0 and a line in the debug
///         log, when PixelFile::open() fails or there is no memory for the rows
bool appendPixelFile(const QString& path, A2DData& map, qsizetype most = maxMapPixels);

} // namespace data
