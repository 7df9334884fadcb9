// A two-dimensional map with a valid flag for each pixel, and its binary file.
#pragma once

#include "data/Limits.h"

#include <QList>
#include <QObject>
#include <QRect>
#include <QString>

class MaskItem;

/// What the header of a map file says.
struct TDData0Header {
    bool valid = false;    ///< whether the rest was read from a file
    qint64 headerSize = 0; ///< bytes before the first pixel; may be any int
    int width = 0;         ///< unchecked: may be negative or past any file
    int height = 0;
    QString dataId;
    double minVal = data::noLimits.low;
    double maxVal = data::noLimits.high;
};

/// A map of doubles with one valid flag for each pixel, an identifier, its
/// extremes and an optional region of interest.
///
/// Row-major, `index = y * width + x`. The fields are open to the caller;
/// operations pass over pixels that the size claims and a list does not hold.
///
/// The file: a text header, the pixels as IEEE 754 doubles, and one byte for
/// each flag, all little-endian. The region and the mask items are not in it.
class TDData0 : public QObject
{
    Q_OBJECT

public:
    /// A map of @p w by @p h invalid pixels of 0.0, as of setSize().
    TDData0(int w, int h, QObject* parent = nullptr);
    ~TDData0() override;

    /// Whether @p path is a readable regular file that begins with "2dData".
    /// A file that cannot be opened is reported to the debug log.
    static bool isTDData0File(const QString& path);

    /// Reads the header of a file into @p h.
    ///
    /// What converts to no number reads as 0, and unknown lines are passed
    /// over. Reading runs to the end of the header block: of two lines with the
    /// same key the later one counts.
    ///
    /// @return false, with @p h as it was, if the file is not of this form, if a
    ///         line is past data::longestLine, or if there is no memory to read it
    static bool readHeader(TDData0Header& h, const QString& path);

    /// Reads a file. Region and mask items stay, and so do pixels and flags,
    /// by their index, that a short file leaves out.
    ///
    /// @return false, with the object as it was and a line in the debug log, if
    ///         the file is not of this form, if its size is negative or
    ///         data::isSizeTooLarge() for the pixels that it holds, or if there is
    ///         no memory for them
    bool load(const QString& path);

    /// Writes a file, in place of one that is there.
    ///
    /// @c dataId is written as Latin-1, the extremes with 6 significant digits.
    /// The gap between the header's text and the first pixel is left out, not
    /// filled, so that a map without pixels ends with its text.
    ///
    /// @return false, with a line in the debug log, if @p path cannot be opened
    ///         or is a pipe, or if not all could be written
    bool save(const QString& path) const;

    /// Makes this a map of @p w by @p h invalid pixels of 0.0; a side below 0
    /// counts as 0. With pixels the extremes widen to take in 0; they are not
    /// set anew.
    void setSize(int w, int h);

    /// Copies values and flags of the pixels in @p r, its last column and line
    /// included, to the same place in @p dest, or to its origin.
    ///
    /// The extremes of @p dest widen by every value copied, valid or not. It
    /// takes the identifier, and the region or, where none is set, this whole
    /// map. The caller keeps @p r inside both maps; pixels outside are skipped.
    void copyBlockTo(TDData0* dest, const QRect& r, bool toOrigin) const;

    /// Appends a copy of every mask item to those of @p dest.
    void copyMaskItemsTo(TDData0* dest) const;

    /// Writes to @p dest, another map, the mean of the valid pixels at most
    /// @p n columns away on the same line, for every valid pixel.
    ///
    /// The extremes of @p dest widen by every mean; pixels without one stay as
    /// they are in @p dest. The mean runs: a NaN or an infinity that was in the
    /// window stays in the sum to the end of the line. Nothing is written for
    /// @p n below 0.
    void smoothAlongX(TDData0* dest, int n) const;

    /// smoothAlongX() with lines and columns exchanged.
    void smoothAlongY(TDData0* dest, int n) const;

    /// A new map, owned by the caller, smoothed with @p nx columns and then
    /// with @p ny lines to each side; below 1 leaves that direction out. Only
    /// where both are left out does it take the identifier, the region and the
    /// mask items.
    TDData0* smoothed(int nx, int ny) const;

    /// The identifier for use in a file name: each "/" becomes "div", then each
    /// "__" becomes "_" in a single pass, so that four leave two.
    QString fileSafeId() const;

    QString dataId; ///< what the map shows
    int width = 0;  ///< pixels on a line
    int height = 0; ///< lines
    QList<double> data;
    QList<bool> validFlags;             ///< whether a pixel holds data
    double minVal = data::noLimits.low; ///< extreme values; 1e300 and -1e300 without pixels
    double maxVal = data::noLimits.high;
    QRect region;               ///< region of interest
    bool regionSet = false;     ///< whether @c region is in force
    QList<MaskItem*> maskItems; ///< owned

public Q_SLOTS:
    /// Puts @p rR in force as the region.
    void setRegion(QRect rR);

    /// Puts the region out of force; @c region keeps its value.
    void regionCleared();

private:
    /// The pixels of one line or one column: indices first + i * step.
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
