// One XAFS spectrum: its points, their extremes and its two background lines.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <array>

class QIODevice;

/// One point of a spectrum.
struct MutPoint {
    double angle = 0.0;  ///< monochromator angle, degrees; NaN where it has none
    double energy = 0.0; ///< photon energy, eV, as read: dE is not applied
    double mut = 0.0;    ///< absorbance mu*t, dimensionless
};

namespace data
{

/// Coefficients of a Victoreen line V(L) = c + a L^3 + b L^4, L in angstrom.
struct VictoreenLine {
    double c = 0.0;
    double a = 0.0;
    double b = 0.0;
};

} // namespace data

/// One XAFS spectrum in memory.
///
/// The points keep the order of the file, and their energies the values of the
/// file; the working energy of a point is its energy less @c dE. With @c valid
/// false the contents are not to be used.
class AMutE
{
public:
    /// Presentations of a spectrum, the kinds of value() and valueAt(): as read,
    /// less either background line, in units of the edge jump, and between the
    /// two lines.
    static constexpr int raw = 0;
    static constexpr int lessPreEdge = 1;
    static constexpr int lessPostEdge = 2;
    static constexpr int byEdgeJump = 3;
    static constexpr int normalisedByLines = 4;

    /// Planck's constant times the speed of light, eV times angstrom.
    static constexpr double hcEvAngstrom = 12398.424360387684;

    /// Reads a spectrum file in either form: the beamline form that opens with
    /// "9809", or two plain columns of energy and mut. Words where numbers
    /// belong read as 0.
    ///
    /// @return whether the file gave points; background lines are then fitted.
    ///         A path that is no readable file changes nothing. A file that
    ///         gives no points names itself in @c filePath and leaves the
    ///         record empty and @c valid false. So does one past a bound of
    ///         data/ReadBounds.h, with the reason in the debug log.
    bool readFile(const QString& path);

    /// The same from a device that is open for reading and can seek; the text
    /// begins at its position. The names stay.
    bool readDevice(QIODevice& device);

    /// Whether the first line of the file begins with "9809" after blanks are
    /// folded. False, with a line in the debug log, when it cannot be opened.
    bool is9809(const QString& path) const;

    /// The same for a device in text mode.
    bool is9809(QIODevice& device) const;

    /// The two readers behind readFile(), by path or from a device in text mode;
    /// same result, and they leave the names alone. A file that cannot be opened
    /// changes nothing and is told in the debug log.
    ///
    /// In the beamline form mut is made of the counts of the channels by the
    /// modes that a "Mode" line gives them: 1 is the incident intensity I0, 2
    /// transmission, ln(I0 / I) of the first such channel, 3 fluorescence, the
    /// sum of I / I0. A row whose I0 column is not there or not known is
    /// skipped, so a file without I0 gives no points.
    bool read9809(const QString& path);
    bool read9809(QIODevice& device);
    bool readPlain(const QString& path);
    bool readPlain(QIODevice& device);

    /// Index of the first token equal to @p word, -1 when there is none.
    static int findToken(const QStringList& tokens, const QString& word);

    /// The pre-edge and the post-edge line at working energy @p E, eV. Infinite
    /// or NaN at 0.
    double preValue(double E) const;
    double postValue(double E) const;

    /// The edge jump: post-edge less pre-edge line at @c edgeEnergy.
    double edgeJump() const;

    /// Fits both lines to the points strictly below @c preEdgeEnd and strictly
    /// above @c postEdgeStart, in working energies: least squares by the normal
    /// equations. Does nothing without points; a range without points gives a
    /// NaN line. No other operation refits.
    void fitLines();

    /// The energy of the steepest rise, as the midpoint of its two working
    /// energies; the first of equal steps, be they flat or falling, wins. Half
    /// the first working energy when every step falls by 1 or more or there
    /// is one point; 0.0 without points.
    double findEdge() const;

    /// Index of the lower point of the pair that brackets working energy @p E;
    /// 0 below the first point, n - 2 above the last one (-1 with one point),
    /// 0 when nothing brackets it or there are no points.
    int indexBelow(double E) const;

    /// indexBelow() of each of many energies, in their order. Takes n log n
    /// time where a search for each energy would take n^2, also for points whose
    /// energies fall, repeat or jump.
    QList<int> indicesBelow(const QList<double>& energies) const;

    /// Raw mut at working energy @p E on straight lines; the end segments are
    /// extended. 0.0 with fewer than 2 points; infinite or NaN between points
    /// of equal energy.
    double mutAt(double E) const;

    /// Point @p i presented as @p kind (raw to normalisedByLines). 0.0 for any
    /// other kind or an index outside the points.
    double value(int kind, int i) const;
    double checkedValue(int kind, int i) const;

    /// value() interpolated at working energy @p E like mutAt().
    double valueAt(int kind, double E) const;

    /// Between the two lines at working energy @p E.
    double normalisedAt(double E) const;

    /// The same at each of many energies, by indicesBelow().
    QList<double> normalisedAt(const QList<double>& energies) const;

    /// Lowers @p min and raises @p max by the values of the given kind whose
    /// working energy lies in [from, to]. The caller seeds both.
    void valueRange(int kind, double from, double to, double* min, double* max) const;

    /// The mut of the spectrum at energy @p E less its post-edge line
    /// (@p subPost) or its pre-edge line.
    ///
    /// The segment is the one that ends at the first point, in file order,
    /// whose working energy is at or above @p E. Before the first point it
    /// starts at energy 0, mut 0, so an energy at or below the first point is
    /// interpolated from the origin.
    ///
    /// @return false, with @p out left alone, when no point reaches @p E
    bool backgroundSubtractedAt(double E, bool subPost, double* out) const;

    bool valid = false;
    bool switchedOn = true; ///< drawn among all spectra; toggled in their legend
    QString filePath;
    QString fileName;
    double minAngle = 0.0;
    double maxAngle = 0.0;
    double minEnergy = 0.0;
    double maxEnergy = 0.0;
    double minMut = 0.0;
    double maxMut = 0.0;
    QList<MutPoint> points;
    double preEdgeEnd = 8000.0;    ///< eV, absolute
    double edgeEnergy = 0.0;       ///< eV
    double postEdgeStart = 8500.0; ///< eV, absolute
    double dE = 0.0;               ///< eV, subtracted from every energy on use
    data::VictoreenLine preLine;
    data::VictoreenLine postLine;

private:
    double workingEnergy(qsizetype i) const { return points.at(i).energy - dE; }
    double onSegment(int kind, int i, double E) const;
    void beginRead();
    // Why the point is refused, null when it is taken; besides: memory to leave, bytes.
    const char* appendPoint(const MutPoint& point, qint64 besides);
    bool finishRead();

    template <typename PointOf>
    bool readLines(QIODevice& device, const PointOf& pointOf);
};
