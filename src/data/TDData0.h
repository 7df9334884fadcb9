// A two-dimensional map with a valid flag for each pixel, and its binary file format.
#pragma once

#include "data/Limits.h"

#include <QList>
#include <QObject>
#include <QRect>
#include <QString>

class MaskItem;

/// The header of a binary map file as read; the values are not checked.
struct TDData0Header {
    bool valid = false;    ///< whether the other members were read from a file
    qint64 headerSize = 0; ///< bytes before the first pixel; can be negative
    int width = 0;         ///< can be negative or too large for the pixels in the file
    int height = 0;        ///< can be negative or too large for the pixels in the file
    QString dataId;
    double minVal = data::emptyLimits.low;
    double maxVal = data::emptyLimits.high;
};

/// A map of doubles with one valid flag for each pixel, an identifier, its
/// extremes and an optional region of interest.
///
/// Row-major, `index = y * width + x`. Callers can change the members directly, so the
/// lists can be shorter than width * height; the functions that copy or smooth pixels skip
/// the missing ones.
///
/// The file consists of a text header, the pixels as little-endian IEEE 754 doubles,
/// and one byte for each flag. It does not contain the region and the mask items.
class TDData0 : public QObject
{
    Q_OBJECT

public:
    /// Creates a map of @p w by @p h invalid pixels with the value 0.0; see setSize().
    TDData0(int w, int h, QObject* parent = nullptr);
    ~TDData0() override;

    /// Whether @p path is a readable regular file that starts with "2dData". A file
    /// that cannot be opened is reported to the debug log.
    static bool isTDData0File(const QString& path);

    /// Reads the header of a file into @p h.
    ///
    /// An unparsable number reads as 0 and unknown lines are ignored. The whole header
    /// block is read: if a key occurs twice, the later line counts. If a key is missing, its
    /// member of @p h keeps its value.
    ///
    /// @return false, with @p h unchanged, if the file cannot be opened or does not have this
    ///         format, if a line is longer than data::longestLine bytes, or if there is not
    ///         enough memory
    static bool readHeader(TDData0Header& h, const QString& path);

    /// Reads a file in the format that save() writes. The region and the mask items are
    /// not changed. If the file is too short, the missing pixels and flags keep the
    /// values that this map has at their indices; if it has none, they are 0.0 and invalid.
    ///
    /// @return false, with this map unchanged and a line in the debug log, if
    ///         readHeader() fails, if width or height is negative, if
    ///         data::isSizeTooLarge() is true for this size and the number of pixels
    ///         stored in the file, or if there is not enough memory
    bool load(const QString& path);

    /// Writes a file, replacing an existing one.
    ///
    /// @c dataId is written as Latin-1, the extremes with 6 significant digits. The gap
    /// between the text of the header and the first pixel is skipped, not filled, so
    /// the file of a map without pixels ends with the text.
    ///
    /// @return false, with a line in the debug log, if @p path cannot be opened or is a
    ///         pipe, or if not all bytes could be written
    bool save(const QString& path) const;

    /// Sets the size to @p w by @p h and all pixels to invalid with the value 0.0. A
    /// negative @p w or @p h counts as 0. If there are pixels, the extremes are extended
    /// to include 0; they are not reset.
    void setSize(int w, int h);

    /// Copies the values and flags of the pixels in @p r, including its last column and
    /// line, to @p dest: to the same position or, if @p toOrigin, with the top left
    /// corner of @p r at the origin. Pixels outside either map are skipped.
    ///
    /// The extremes of @p dest are extended by each copied value, valid or not. The
    /// identifier is also copied. The region of @p dest becomes the region of this map or,
    /// if none is set, the rectangle of this whole map.
    void copyBlockTo(TDData0* dest, const QRect& r, bool toOrigin) const;

    /// Appends a copy of each mask item to the mask items of @p dest.
    void copyMaskItemsTo(TDData0* dest) const;

    /// Moving average along the image lines: for each valid pixel, writes to @p dest the
    /// mean of the valid pixels at most @p n columns away on the same line. Does nothing
    /// if @p n is below 0.
    ///
    /// The extremes of @p dest are extended by each mean. All other pixels of @p dest are
    /// left unchanged. The mean uses a running sum: once the NaN or infinity of a valid
    /// pixel has entered the sum, all further means of the line are NaN or infinite.
    ///
    /// @param dest  must not be this map
    void smoothAlongX(TDData0* dest, int n) const;

    /// Moving average along the columns: for each valid pixel, writes to @p dest the mean
    /// of the valid pixels at most @p n lines away in the same column. In all other
    /// respects it is like smoothAlongX().
    void smoothAlongY(TDData0* dest, int n) const;

    /// Returns a new map, owned by the caller, smoothed by smoothAlongX() with @p nx
    /// and then by smoothAlongY() with @p ny. A number below 1 skips its direction.
    /// The identifier, the region and the mask items are copied only if both
    /// directions are skipped.
    TDData0* smoothed(int nx, int ny) const;

    /// The identifier for use in a file name: each "/" is replaced by "div", then each
    /// "__" by "_". The replacement is not repeated, so "____" becomes "__".
    QString fileSafeId() const;

    QString dataId; ///< the quantity that the map shows
    int width = 0;  ///< number of pixels per image line
    int height = 0; ///< number of image lines
    QList<double> data;
    QList<bool> validFlags;                 ///< whether each pixel has data
    double minVal = data::emptyLimits.low;  ///< lower extreme; 1e300 if there was no pixel yet
    double maxVal = data::emptyLimits.high; ///< upper extreme; -1e300 if there was no pixel yet
    QRect region;                           ///< region of interest
    bool regionSet = false;                 ///< whether @c region is in use
    QList<MaskItem*> maskItems;             ///< owned

public Q_SLOTS:
    /// Sets the region of interest.
    void setRegion(QRect rR);

    /// Marks the region as not in use; @c region keeps its value.
    void regionCleared();

private:
    /// The pixels of a line or of a column, at the indices first + i * step.
    struct Run {
        qint64 first;
        qint64 step;
        int length;
    };

    bool hasPixel(qint64 index) const;
    bool holdsData(qint64 index) const;
    void widenExtremes(double value);
    void setMean(qint64 index, double mean);
    void smoothRun(TDData0* dest, const Run& from, const Run& to, int n) const;
};
