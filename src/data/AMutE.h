// An XAFS spectrum, its background lines, and functions to read and evaluate it.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <array>

class QIODevice;

/// A point of a spectrum.
struct MutPoint {
    double angle = 0.0;  ///< monochromator angle, degrees; NaN if the energy has no angle
    double energy = 0.0; ///< photon energy, eV; dE is not subtracted
    double mut = 0.0;    ///< absorbance mu*t, dimensionless
};

namespace data
{

/// Coefficients of the Victoreen formula V(L) = c + a L^3 + b L^4, which describes
/// the absorbance away from an edge; L is the wavelength in angstrom.
struct VictoreenLine {
    double c = 0.0;
    double a = 0.0;
    double b = 0.0;
};

} // namespace data

/// An XAFS spectrum in memory.
///
/// The points keep the order of the file. The working energy of a point is its energy
/// minus @c dE. Do not use the points or the background lines while @c valid is false.
class AMutE
{
public:
    // The values of the parameter kind. m is the absorbance at working energy E, pre(E)
    // the pre-edge line and post(E) the post-edge line.
    static constexpr int raw = 0;               ///< m
    static constexpr int minusPreEdge = 1;      ///< m - pre(E)
    static constexpr int minusPostEdge = 2;     ///< m - post(E)
    static constexpr int byEdgeJump = 3;        ///< (m - pre(E)) / edgeJump()
    static constexpr int normalisedByLines = 4; ///< (m - pre(E)) / (post(E) - pre(E))

    /// Planck's constant times the speed of light, eV times angstrom.
    static constexpr double hcEvAngstrom = 12398.424360387684;

    /// Reads a spectrum file in one of two formats: the beamline format, which starts
    /// with "9809", or two plain columns of energy (eV) and mut. An unparsable number
    /// reads as 0.
    ///
    /// If @p path is not a readable file, nothing changes. If the file contains no
    /// points, or is refused, @c filePath and @c fileName name the file, @c points is empty
    /// and @c valid is false. A file is refused, with a line in the debug log, if it exceeds
    /// a bound of data/ReadBounds.h or does not fit into memory.
    ///
    /// @return whether points were read; both background lines are then fitted
    bool readFile(const QString& path);

    /// readFile() for a seekable device that is open for reading. The text starts at the
    /// current position. @c filePath and @c fileName are not changed.
    bool readDevice(QIODevice& device);

    /// Whether the first line of the file starts with "9809" after its white space
    /// is simplified. False, with a line in the debug log, if the file cannot be opened.
    bool is9809(const QString& path) const;

    /// is9809() for a device in text mode.
    bool is9809(QIODevice& device) const;

    /// Reads a file in the beamline format. Returns the same as readFile(), but does
    /// not change @c filePath and @c fileName. A file that cannot be opened changes
    /// nothing and is reported to the debug log.
    ///
    /// The data lines follow the "Offset" line. The energy is calculated from the angle,
    /// mut from the counts of the channels. A "Mode" line states the mode of each channel;
    /// mode 1 is the incident intensity I0. The first mode of 2 or more selects the formula:
    /// with 2 (transmission), mut is ln(I0 / I) of the first channel of mode 2; with 3
    /// (fluorescence), mut is the sum of I / I0 over the channels of mode 3; with any other
    /// mode, mut is 0.0. A data line of fewer than five words or without a count of I0 is
    /// skipped, so no points are read from a file without an I0 channel.
    bool read9809(const QString& path);

    /// read9809() for a device in text mode.
    bool read9809(QIODevice& device);

    /// Reads a file of two plain columns, energy (eV) and mut. Skips lines that start with
    /// "#" and lines of fewer than two words. The return value and the handling of errors
    /// are as for read9809().
    bool readPlain(const QString& path);

    /// readPlain() for a device in text mode.
    bool readPlain(QIODevice& device);

    /// Index of the first token equal to @p word; -1 if there is none.
    static int findToken(const QStringList& tokens, const QString& word);

    /// Value of the pre-edge line at working energy @p E, eV. Infinite or NaN if @p E
    /// is 0.
    double preValue(double E) const;

    /// Value of the post-edge line at working energy @p E, eV. Infinite or NaN if @p E is 0.
    double postValue(double E) const;

    /// The edge jump: post-edge line minus pre-edge line at @c edgeEnergy.
    double edgeJump() const;

    /// Fits the pre-edge line to the points strictly below @c preEdgeEnd and the
    /// post-edge line to the points strictly above @c postEdgeStart, all in working
    /// energies, by least squares with the normal equations. Does nothing without points.
    /// If a range contains no points, the coefficients of its line are NaN. After a
    /// change of the limits or of @c dE, the caller must call this function again.
    void fitLines();

    /// Energy of the steepest rise, eV: the mean of the working energies of the two
    /// neighbouring points with the largest increase of mut. The increase is not divided
    /// by the energy step. If two increases are equal, the first pair is used. If there is
    /// only one point, or if mut falls by 1 or more at every step, the result is half the
    /// first working energy. Without points the result is 0.0.
    double findEdge() const;

    /// Index i of the first pair of points i and i + 1 that brackets working energy @p E.
    /// If @p E is below the first point: 0. If @p E is above the last of n points: n - 2,
    /// which is -1 for one point. 0 if no pair brackets @p E or if there are no points.
    int indexBelow(double E) const;

    /// The result of indexBelow() for each of @p energies, in their order. For n energies
    /// and n points this needs O(n log n) instead of O(n^2) time, even if the energies
    /// of the points fall, repeat or jump.
    QList<int> indicesBelow(const QList<double>& energies) const;

    /// Raw mut at working energy @p E by linear interpolation; outside the points
    /// the first or the last segment is extrapolated. 0.0 with fewer than 2 points;
    /// infinite or NaN on a segment between two points of equal energy.
    double mutAt(double E) const;

    /// Value at point @p i of the kind @p kind (raw to normalisedByLines). 0.0 if @p kind
    /// is any other number or if @p i is not a valid index.
    ///
    /// In the descriptions of the kinds, m is the absorbance at working energy E, pre(E)
    /// the pre-edge line and post(E) the post-edge line.
    double value(int kind, int i) const;

    /// Same as value().
    double checkedValue(int kind, int i) const;

    /// value() at working energy @p E, interpolated like mutAt().
    double valueAt(int kind, double E) const;

    /// Absorbance normalised by both background lines at working energy @p E, eV: valueAt()
    /// of the kind normalisedByLines.
    double normalisedAt(double E) const;

    /// The result of normalisedAt() for each of @p energies, in their order. Uses
    /// indicesBelow(), so it is fast for many energies.
    QList<double> normalisedAt(const QList<double>& energies) const;

    /// Extends the range from @p min to @p max so that it contains the values of the
    /// given kind at all points whose working energies are in the closed interval [from,
    /// to]. The caller initialises @p min and @p max.
    void valueRange(int kind, double from, double to, double* min, double* max) const;

    /// The mut of the spectrum at working energy @p E minus the post-edge line if
    /// @p subPost, otherwise minus the pre-edge line.
    ///
    /// mut is interpolated between the first point, in file order, whose working energy
    /// is @p E or more, and its predecessor. Point 0 has no predecessor; energy 0 and
    /// mut 0 are used instead.
    ///
    /// @return false, with @p out unchanged, if no point has a working energy of @p E or more
    bool backgroundSubtractedAt(double E, bool subPost, double* out) const;

    bool valid = false;
    bool switchedOn = true; ///< whether the graph of all spectra draws this one
    QString filePath;
    QString fileName;
    double minAngle = 0.0;
    double maxAngle = 0.0;
    double minEnergy = 0.0;
    double maxEnergy = 0.0;
    double minMut = 0.0;
    double maxMut = 0.0;
    QList<MutPoint> points;
    double preEdgeEnd = 8000.0;    ///< working energy, eV
    double edgeEnergy = 0.0;       ///< working energy, eV
    double postEdgeStart = 8500.0; ///< working energy, eV
    double dE = 0.0;               ///< eV, subtracted from each energy when it is used
    data::VictoreenLine preLine;
    data::VictoreenLine postLine;

private:
    double workingEnergy(qsizetype i) const { return points.at(i).energy - dE; }
    double onSegment(int kind, int i, double E) const;
    void beginRead();
    // Returns the reason if the point is refused, otherwise null; bytesToReserve is
    // the memory that must remain available.
    const char* appendPoint(const MutPoint& point, qint64 bytesToReserve);
    bool finishRead();

    template <typename PointOf>
    bool readLines(QIODevice& device, const PointOf& pointOf);
};
