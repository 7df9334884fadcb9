// Reads the pixels and valid flags of a binary map file.
#pragma once

#include "data/A2DData.h"
#include "data/TDData0.h"

#include <QFile>

#include <span>

namespace data
{

/// Reads the values and valid flags of a file in the format of TDData0, in blocks of any
/// size.
class PixelFile
{
public:
    /// Opens the file and reads its header.
    ///
    /// @return false, with a line in the debug log, if TDData0::readHeader() fails, if
    ///         width or height is negative, or if data::isSizeTooLarge() is true for this
    ///         size and the number of pixels stored in the file
    bool open(const QString& path);

    /// The header of the open file.
    const TDData0Header& header() const { return m_header; }

    /// Number of pixels according to the size in the header; the file can contain fewer.
    qsizetype pixelCount() const { return qsizetype{m_header.width} * m_header.height; }

    /// Fills @p out with the next values of the file. If the file is too short, the
    /// remaining bytes of @p out are unchanged.
    void readValues(std::span<double> out);

    /// Fills @p out with the next flags, which state whether a pixel is valid. In the file,
    /// the flags follow the values, so read pixelCount() values first. If the file is too
    /// short, the remaining elements of @p out are unchanged.
    void readFlags(std::span<bool> out);

private:
    QFile m_file;
    TDData0Header m_header;
};

/// Appends the pixels of the file at @p path to the rows of @p map and sets the size of
/// the map to the size in the file. The values of the file become the intensities, with
/// i0 = 0, which by convention marks them as absorbances; x and y are the column and the
/// image line.
///
/// The pixels of earlier files keep their indices, and the new pixels follow them. Valid
/// flags are ignored: every pixel becomes a row. Pixels missing from the file have the
/// value 0.
///
/// @param maxRows  largest number of rows in @p map; further pixels are dropped. No map
///                 size needs more rows, and without this limit, repeated loading would
///                 fill the memory
/// @return false if PixelFile::open() fails or if there is not enough memory. The rows
///         are then unchanged and the size is 0 by 0; the debug log states the reason
bool appendPixelFile(const QString& path, A2DData& map, qsizetype maxRows = maxMapPixels);

} // namespace data
