// The two text forms of a spectrum.
#include "data/AMutE.h"

#include "data/FileAccess.h"
#include "data/LineWords.h"

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
// As short as this on purpose: angles and energies stay those of earlier data.
constexpr double shortPi = 3.1415926535;
constexpr double degreesInPi = 180.0;

/// Views of the words of one line; they live as long as the line.
using Tokens = QList<QStringView>;

bool openText(QFile& file)
{
    if (!data::openForReading(file)) {
        qDebug().noquote() << "Can't open a XAFS file" << file.fileName();
        return false;
    }
    file.setTextModeEnabled(true);
    return true;
}

/// Puts the next line of @p stream with its blanks folded into @p line; false
/// at the end, or when the device fails.
bool nextLine(QTextStream& stream, QString* line)
{
    // QTextStream counts the characters of a line in an int.
    constexpr qint64 longestLine = 1 << 30;
    if (!stream.readLineInto(line, longestLine)) {
        return false;
    }
    *line = std::move(*line).simplified();
    return true;
}

/// The words of a line whose blanks are folded.
void split(QStringView line, Tokens* tokens)
{
    tokens->clear();
    data::TextWords words(line);
    while (words.next()) {
        tokens->append(words.word());
    }
}

template <class List>
qsizetype indexOfToken(const List& tokens, QStringView word)
{
    const auto found = std::find(tokens.cbegin(), tokens.cend(), word);
    return found == tokens.cend() ? -1 : found - tokens.cbegin();
}

/// Energy and mut of a line of the plain form; nothing for a comment and for
/// a line of one word.
std::optional<MutPoint> plainPoint(const QString& line, Tokens* tokens)
{
    if (line.startsWith(u'#')) {
        return {};
    }
    split(line, tokens);
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

/// A "9809" file as far as it has been read.
class BeamlineReader
{
public:
    /// Takes one line: the point that it holds, if any, and what it tells
    /// about the lines that follow.
    std::optional<MutPoint> take(const Tokens& tokens)
    {
        const auto point = started ? pointOf(tokens) : std::nullopt;
        takeModes(tokens);
        // The numbers beside the word are no part of the counts: no offset is
        // subtracted.
        started = started || indexOfToken(tokens, u"Offset") != -1;
        takeSpacing(tokens);
        return point;
    }

private:
    enum Mode { Incident = 1, Transmission = 2, Fluorescence = 3 };
    static constexpr qsizetype firstChannel = 3; ///< token of channel 0

    /// Nothing for a short row, and for one whose I0 channel is not there or
    /// not known.
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

    /// Channels that have both a count and a mode.
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

    /// A second such line refills the list, moves the I0 column if it names
    /// one, and leaves the kind as the first one set it.
    void takeModes(const Tokens& tokens)
    {
        if (indexOfToken(tokens, u"Mode") == -1) {
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

    void takeSpacing(const Tokens& tokens)
    {
        const qsizetype at = indexOfToken(tokens, u"D=");
        if (at != -1 && at + 1 < tokens.size()) {
            d = tokens.at(at + 1).toDouble();
        }
    }

    double d = defaultD; ///< spacing of the crystal planes, angstrom
    QList<int> modes;    ///< one for each channel
    int kind = -1;       ///< the mode that mut is made by, below 0 while unknown
    qsizetype i0Column = -1;
    bool started = false; ///< whether the header is over
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
    return is9809(path) ? read9809(path) : readPlain(path);
}

bool AMutE::is9809(const QString& path) const
{
    QFile file(path);
    if (!openText(file)) {
        return false;
    }
    QTextStream stream(&file);
    QString line;
    return nextLine(stream, &line) && line.startsWith(u"9809");
}

bool AMutE::read9809(const QString& path)
{
    QFile file(path);
    if (!openText(file)) {
        return false;
    }
    beginRead();
    QTextStream stream(&file);
    BeamlineReader reader;
    QString line;
    Tokens tokens;
    while (nextLine(stream, &line)) {
        split(line, &tokens);
        if (const auto point = reader.take(tokens)) {
            appendPoint(*point);
        }
    }
    return finishRead();
}

bool AMutE::readPlain(const QString& path)
{
    QFile file(path);
    if (!openText(file)) {
        return false;
    }
    beginRead();
    QTextStream stream(&file);
    QString line;
    Tokens tokens;
    while (nextLine(stream, &line)) {
        if (const auto point = plainPoint(line, &tokens)) {
            appendPoint(*point);
        }
    }
    return finishRead();
}

int AMutE::findToken(const QStringList& tokens, const QString& word)
{
    return static_cast<int>(indexOfToken(tokens, word));
}
