// Readers of the two text formats of a spectrum.
#include "data/AMutE.h"

#include "data/FileAccess.h"
#include "data/LineWords.h"
#include "data/MemoryCheck.h"
#include "data/ReadBounds.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
#include <QStringView>
#include <QTextStream>

#include <algorithm>
#include <cmath>
#include <optional>

namespace
{

constexpr double hcKevAngstrom = 12.398424360387684;
constexpr double defaultTwoD = 6.2710632; // angstrom
constexpr double defaultD = 3.1355316;    // angstrom
// Pi, truncated on purpose: with more digits, angles and energies would differ from
// earlier results.
constexpr double shortPi = 3.1415926535;
constexpr double degreesInPi = 180.0;

/// The words of a line; valid while the line exists.
class Tokens
{
public:
    /// @param line  words separated by single spaces, no space at the start or the end
    void split(QStringView line)
    {
        m_line = line;
        m_ends.clear();
        qsizetype end = -1;
        data::TextWords words(line);
        while (words.next()) {
            end += 1 + words.word().size();
            m_ends.append(static_cast<int>(end));
        }
    }

    qsizetype size() const { return m_ends.size(); }

    QStringView at(qsizetype i) const
    {
        const qsizetype begin = i == 0 ? 0 : m_ends.at(i - 1) + 1;
        return m_line.sliced(begin, m_ends.at(i) - begin);
    }

    /// Index of the first word equal to @p word; -1 if there is none.
    qsizetype indexOf(QStringView word) const
    {
        for (qsizetype i = 0; i < size(); ++i) {
            if (at(i) == word) {
                return i;
            }
        }
        return -1;
    }

private:
    QStringView m_line;
    /// End index of each word: 4 bytes instead of the 16 bytes of a view, because a line
    /// can have millions of words.
    QList<int> m_ends;
};

bool openText(QFile& file)
{
    if (!data::openForReading(file)) {
        qDebug().noquote() << "Can't open a XAFS file" << file.fileName();
        return false;
    }
    file.setTextModeEnabled(true);
    return true;
}

/// The lines of a spectrum file, with their white space simplified.
class Lines
{
public:
    explicit Lines(QIODevice& device)
        : m_stream(&device)
    {
    }

    /// Reads the next line; false at the end, if the device fails, or if the line is
    /// longer than data::longestLine.
    bool next()
    {
        // One character more than allowed is requested, to detect a line that is too long.
        if (m_isTooLong || !m_stream.readLineInto(&m_line, data::longestLine + 1)) {
            return false;
        }
        m_isTooLong = m_line.size() > data::longestLine;
        m_line = std::move(m_line).simplified();
        return !m_isTooLong;
    }

    const QString& line() const { return m_line; }
    bool isTooLong() const { return m_isTooLong; }

private:
    QTextStream m_stream;
    QString m_line;
    bool m_isTooLong = false;
};

/// The point on a line of the plain format; nullopt for a comment line and for a line of
/// fewer than two words.
std::optional<MutPoint> plainPoint(const QString& line, Tokens* tokens)
{
    if (line.startsWith(u'#')) {
        return {};
    }
    tokens->split(line);
    if (tokens->size() < 2) {
        return {};
    }
    MutPoint point;
    point.energy = tokens->at(0).toDouble();
    point.mut = tokens->at(1).toDouble();
    point.angle =
        std::asin((AMutE::hcEvAngstrom / point.energy) / defaultTwoD) / shortPi * degreesInPi;
    return point;
}

/// Reads a "9809" file line by line.
class BeamlineReader
{
public:
    /// Reads one line. Returns its point, if it has one, and stores its settings, which
    /// apply to the following lines.
    std::optional<MutPoint> readLine(const Tokens& tokens)
    {
        const auto point = started ? pointOf(tokens) : std::nullopt;
        readModes(tokens);
        // The numbers on the "Offset" line are ignored: no offset is subtracted
        // from the counts.
        started = started || tokens.indexOf(u"Offset") != -1;
        readSpacing(tokens);
        return point;
    }

private:
    enum Mode { Incident = 1, Transmission = 2, Fluorescence = 3 };
    static constexpr qsizetype firstChannel = 3; ///< index of the word of channel 0

    /// The point on a data line; nullopt if the line has fewer than five words, if no
    /// "Mode" line has stated the I0 column, or if the line does not contain this column.
    std::optional<MutPoint> pointOf(const Tokens& tokens) const
    {
        constexpr qsizetype shortestRow = 5;
        if (tokens.size() < shortestRow || i0Column < 0 || i0Column >= tokens.size()) {
            return {};
        }
        MutPoint point;
        point.angle = tokens.at(1).toDouble();
        point.energy =
            (hcKevAngstrom / ((d + d) * std::sin((point.angle / degreesInPi) * shortPi))) * 1000.0;
        point.mut = mutOf(tokens);
        return point;
    }

    double mutOf(const Tokens& tokens) const
    {
        const double i0 = tokens.at(i0Column).toDouble();
        switch (kind) {
        case Transmission:
            return transmission(tokens, i0);
        case Fluorescence:
            return fluorescence(tokens, i0);
        default:
            return 0.0;
        }
    }

    /// Number of channels that have a mode and also a count in @p tokens.
    qsizetype channelCount(const Tokens& tokens) const
    {
        return std::min(modes.size(), tokens.size() - firstChannel);
    }

    double transmission(const Tokens& tokens, double i0) const
    {
        const auto channel = modes.indexOf(Transmission);
        if (channel == -1 || channel >= channelCount(tokens)) {
            return 0.0;
        }
        return std::log(i0 / tokens.at(firstChannel + channel).toDouble());
    }

    double fluorescence(const Tokens& tokens, double i0) const
    {
        double sum = 0.0;
        for (qsizetype i = 0; i < channelCount(tokens); ++i) {
            if (modes.at(i) == Fluorescence) {
                sum += tokens.at(firstChannel + i).toDouble() / i0;
            }
        }
        return sum;
    }

    /// Reads a "Mode" line. A second "Mode" line replaces the list of modes, and also the
    /// I0 column if it states one. A kind of measurement that is already known is not
    /// replaced.
    void readModes(const Tokens& tokens)
    {
        if (tokens.indexOf(u"Mode") == -1) {
            return;
        }
        modes.clear();
        for (qsizetype t = firstChannel; t < tokens.size(); ++t) {
            const int mode = tokens.at(t).toInt();
            modes.append(mode);
            if (mode == Incident) {
                i0Column = t;
            } else if (kind < 0 && mode >= Transmission) {
                kind = mode;
            }
        }
    }

    void readSpacing(const Tokens& tokens)
    {
        const qsizetype at = tokens.indexOf(u"D=");
        if (at != -1 && at + 1 < tokens.size()) {
            d = tokens.at(at + 1).toDouble();
        }
    }

    double d = defaultD; ///< lattice spacing of the monochromator crystal, angstrom
    QList<int> modes;    ///< the mode of each channel
    /// Kind of measurement, which selects the formula for mut: the first mode of 2 or
    /// more; -1 until a "Mode" line sets it.
    int kind = -1;
    qsizetype i0Column = -1; ///< index of the word with the count of I0; -1 if unknown
    bool started = false;    ///< whether the data lines have started
};

} // namespace

bool AMutE::readFile(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isFile() || !info.isReadable()) {
        return false;
    }
    filePath = path;
    fileName = info.fileName();
    QFile file(path);
    return openText(file) && readDevice(file);
}

bool AMutE::readDevice(QIODevice& device)
{
    const bool wasTextMode = device.isTextModeEnabled();
    const qint64 start = device.pos();
    device.setTextModeEnabled(true);
    const bool isBeamline = is9809(device);
    device.seek(start);
    const bool isRead = isBeamline ? read9809(device) : readPlain(device);
    device.setTextModeEnabled(wasTextMode);
    return isRead;
}

bool AMutE::is9809(const QString& path) const
{
    QFile file(path);
    return openText(file) && is9809(file);
}

bool AMutE::is9809(QIODevice& device) const
{
    Lines lines(device);
    return lines.next() && lines.line().startsWith(u"9809");
}

bool AMutE::read9809(const QString& path)
{
    QFile file(path);
    return openText(file) && read9809(file);
}

bool AMutE::read9809(QIODevice& device)
{
    Tokens tokens;
    BeamlineReader reader;
    return readLines(device, [&](const QString& line) {
        tokens.split(line);
        return reader.readLine(tokens);
    });
}

bool AMutE::readPlain(const QString& path)
{
    QFile file(path);
    return openText(file) && readPlain(file);
}

bool AMutE::readPlain(QIODevice& device)
{
    Tokens tokens;
    return readLines(device, [&](const QString& line) { return plainPoint(line, &tokens); });
}

template <typename PointOf>
bool AMutE::readLines(QIODevice& device, const PointOf& pointOf)
{
    beginRead();
    Lines lines(device);
    const qint64 bytesToReserve = data::memoryToRead(device);
    const char* refusal = data::canAllocate(bytesToReserve) ? nullptr : "no memory to read it";
    while (refusal == nullptr && lines.next()) {
        if (const auto point = pointOf(lines.line())) {
            refusal = appendPoint(*point, bytesToReserve);
        }
    }
    if (lines.isTooLong()) {
        refusal = "a line is longer than a line may be";
    }
    if (refusal != nullptr) {
        data::reportRefusal(refusal);
        beginRead();
        points = {};
    }
    return finishRead();
}

int AMutE::findToken(const QStringList& tokens, const QString& word)
{
    return static_cast<int>(tokens.indexOf(word));
}
