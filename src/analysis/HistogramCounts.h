// Counting of values into equal bins.
#pragma once

#include <QByteArray>
#include <QList>

namespace analysis
{

/// A histogram's limits and counts. From and To of the user are the centres of
/// the first and the last bin, so the outer edges lie half a bin beyond them.
/// Limits are in the unit of what is counted: valence, or thickness relative to
/// the references.
struct HistogramCounts {
    /// The most bins that are counted, whatever number was asked for.
    static constexpr int maxBoxes = 1'000'000;

    /// 2^31, the first number that is too large for the index of a bin.
    static constexpr double beyondInt = 2147483648.0;

    /// The number of bins that a number typed by the user stands for: truncated,
    /// 0 below 1 and for NaN, at most maxBoxes.
    static int boxesFrom(double number);

    /// Sets limits and bin width, and zeroes all counts. @p boxCount is held to 0
    /// to maxBoxes. One bin divides by zero: every value then counts below the
    /// range. No bin has a width of from - to, and every value counts outside.
    void start(double from, double to, int boxCount);

    /// Counts one value. The bin number is truncated toward zero, so values
    /// less than one bin below the lower edge fall into bin 0. NaN and what is
    /// beyond the integer range count below the range, also above it.
    void add(double value)
    {
        const double place = (value - minV) / step;
        if (!(place > -1.0 && place < beyondInt)) {
            ++under;
            return;
        }
        const int bin = static_cast<int>(place);
        if (bin >= boxes) {
            ++over;
            return;
        }
        const int count = ++bins[bin];
        total = count > total ? count : total;
    }

    /// The text of a histogram file: a line for each bin, and one before and
    /// after them for what lay outside; lower edge, centre, upper edge, count.
    /// Numbers as QString::arg(double) gives them.
    QByteArray fileText() const;

    double minV = 0.0; ///< lower edge of bin 0
    double maxV = 0.0; ///< upper edge of the last bin
    double step = 0.0; ///< width of one bin
    int boxes = 0;
    int total = 0; ///< the highest count of any bin
    QList<int> bins;
    int under = 0;
    int over = 0;
};

} // namespace analysis
