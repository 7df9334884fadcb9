// A histogram with bins of equal width.
#pragma once

#include <QByteArray>
#include <QList>

namespace analysis
{

/// The limits and counts of a histogram.
///
/// The user's limits "From" and "To" are the centres of the first and the last bin, so
/// the outer edges are half a bin further out. Limits have the unit of the counted
/// quantity, for example valence or thickness relative to the references.
struct HistogramCounts {
    /// The maximum number of bins.
    static constexpr int maxBoxes = 1'000'000;

    /// 2^31, the smallest positive integer that does not fit into an int.
    static constexpr double beyondInt = 2147483648.0;

    /// Converts a number typed by the user to a number of bins: truncated, at most
    /// maxBoxes, and 0 for numbers below 1 and for NaN.
    static int boxesFrom(double number);

    /// Sets limits and bin width, and zeroes all counts.
    ///
    /// The bin width is (to - from) / (boxCount - 1). With one bin, this is a division by
    /// zero, and every value counts as below the range. The same is true if from equals to,
    /// because the width is then 0. Without bins, the width is from - to, and every value
    /// counts as below or above the range.
    ///
    /// @param from,to   centres of the first and the last bin
    /// @param boxCount  number of bins, clamped to 0 ... maxBoxes
    void start(double from, double to, int boxCount);

    /// Counts one value.
    ///
    /// The bin index (value - minV) / step is truncated toward zero, so values less than
    /// one bin width below the lower edge fall into bin 0. NaN, and every index outside
    /// the range of int on either side, counts as below the range.
    void add(double value)
    {
        const double position = (value - minV) / step;
        if (!(position > -1.0 && position < beyondInt)) {
            ++under;
            return;
        }
        const int bin = static_cast<int>(position);
        if (bin >= boxes) {
            ++over;
            return;
        }
        const int count = ++bins[bin];
        total = count > total ? count : total;
    }

    /// The text of a histogram file.
    ///
    /// The first line is for the values below the range and the last line for the values
    /// above it. Between them there is one line per bin. Each line has lower edge, centre,
    /// upper edge and count. Numbers are formatted like QString::arg(double).
    QByteArray fileText() const;

    double minV = 0.0; ///< lower edge of bin 0
    double maxV = 0.0; ///< upper edge of the last bin
    double step = 0.0; ///< width of one bin
    int boxes = 0;     ///< number of bins
    int total = 0;     ///< the highest count of any bin
    QList<int> bins;   ///< counts of the bins
    int under = 0;     ///< number of values below the range
    int over = 0;      ///< number of values above the range
};

} // namespace analysis
