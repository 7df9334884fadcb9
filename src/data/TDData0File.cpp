#include "data/TDData0.h"

#include "data/FileAccess.h"
#include "data/MemoryCheck.h"
#include "data/PixelFile.h"
#include "data/ReadBounds.h"
#include "data/TextItems.h"
#include "data/Utf8Blocks.h"

#include <QByteArrayView>
#include <QDebug>
#include <QFile>
#include <QStringDecoder>
#include <QTextStream>

#include <algorithm>
#include <optional>
#include <string_view>

namespace
{

constexpr qsizetype firstLineSize = 64; ///< characters, without the line feed
constexpr qint64 headerBlock = 256;     ///< bytes

constexpr QLatin1String formatName("2dData");

/// The first firstLineSize bytes of a file, decoded, or fewer if the file is shorter.
/// nullopt, with a line in the debug log, if the file cannot be opened.
std::optional<QString> readFirstLine(const QString& path)
{
    QFile file(path);
    if (!data::openForReading(file)) {
        qDebug().noquote() << "can't open" << path;
        return std::nullopt;
    }
    return QString::fromUtf8(file.read(firstLineSize));
}

int headerSizeIn(const QString& firstLine)
{
    QString rest = firstLine;
    QString item;
    for (int i = 0; i < 3; ++i) {
        rest = data::nextItem(rest, item);
    }
    return item.toInt();
}

void readHeaderLine(const QString& line, TDData0Header& header)
{
    QString key;
    const QString value = data::nextItem(line, key).mid(1);
    if (key == QLatin1String("WIDTH:")) {
        header.width = value.toInt();
    } else if (key == QLatin1String("HEIGHT:")) {
        header.height = value.toInt();
    } else if (key == QLatin1String("DATA_ID:")) {
        header.dataId = value;
    } else if (key == QLatin1String("MIN_VAL:")) {
        header.minVal = value.toDouble();
    } else if (key == QLatin1String("MAX_VAL:")) {
        header.maxVal = value.toDouble();
    }
}

/// The ten lines of the header. The first line consists of blanks; withFirstLine()
/// overwrites its start.
QString headerLines(const TDData0& map)
{
    QString text;
    QTextStream out(&text);
    out << QString(firstLineSize, u' ') << '\n';
    out << "WIDTH: " << map.width << '\n';
    out << "HEIGHT: " << map.height << '\n';
    out << "DATA_ID: " << map.dataId << '\n';
    out << "DATA_STRUCTURE: Header of Size ( HeaderSize: ), "
           "Row Double Data Block of pixels ( WIDTH: * HEIGHT ), "
           "Row Bool Valid Flag Block of pixels ( WIDTH: * HEIGHT ) \n";
    out << "SIZE_OF_DOUBLE: " << sizeof(double) << '\n';
    out << "SIZE_OF_BOOL: " << sizeof(bool) << '\n';
    out << "MIN_VAL: " << map.minVal << '\n';
    out << "MAX_VAL: " << map.maxVal << '\n';
    out << "END_OF_HEADER:\n";
    return text;
}

// Writes the size of the header into the first line. The line has a fixed length, so the
// size of the header does not depend on how many digits this number has.
QString withFirstLine(const QString& lines, qint64 headerSize)
{
    const QString first =
        formatName + QLatin1String("-V0.0 HeaderSize: ") + QString::number(headerSize);
    return first + lines.sliced(first.size());
}

bool write(QFile& file, const void* bytes, qint64 size)
{
    return file.write(static_cast<const char*>(bytes), size) == size;
}

/// Decodes a line of a header and drops a carriage return at its end.
QString headerLine(std::string_view line)
{
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    // A byte order mark is decoded as a character, not skipped.
    QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
    return decode(QByteArrayView(line.data(), static_cast<qsizetype>(line.size())));
}

/// Reads all lines of a header; false if a line is longer than data::longestLine bytes.
bool readHeaderLines(data::Utf8Blocks& blocks, TDData0Header& header)
{
    constexpr auto maxBytes = static_cast<std::size_t>(data::longestLine);
    while (blocks.next()) {
        for (std::string_view rest = blocks.lines(); !rest.empty();) {
            const std::string_view line = rest.substr(0, rest.find('\n'));
            if (line.size() > maxBytes) {
                return false;
            }
            readHeaderLine(headerLine(line), header);
            rest.remove_prefix(line.size() + 1);
        }
    }
    return !blocks.isLineTooLong();
}

} // namespace

bool TDData0::isTDData0File(const QString& path)
{
    const std::optional<QString> firstLine = readFirstLine(path);
    return firstLine && firstLine->startsWith(formatName);
}

bool TDData0::readHeader(TDData0Header& h, const QString& path)
{
    const std::optional<QString> firstLine = readFirstLine(path);
    if (!firstLine || !firstLine->startsWith(formatName)) {
        return false;
    }
    TDData0Header header = h;
    header.valid = true;
    header.headerSize = headerSizeIn(*firstLine);
    QFile file(path);
    if (data::openForReading(file)) {
        if (!data::canAllocate(data::memoryToRead(file))) {
            data::reportRefusal("no memory to read it");
            return false;
        }
        constexpr std::size_t blockSize = 4 * data::Utf8Blocks::pieceSize;
        data::Utf8Blocks blocks(file, blockSize, std::max(header.headerSize, qint64{0}));
        if (!readHeaderLines(blocks, header)) {
            data::reportRefusal("a line is longer than a line may be");
            return false;
        }
    }
    h = header;
    return true;
}

bool TDData0::load(const QString& path)
{
    data::PixelFile file;
    if (!file.open(path)) {
        return false;
    }
    const qsizetype pixels = file.pixelCount();
    // A growing list can allocate up to twice the required memory.
    constexpr qint64 bytesOfAPixel = 2 * (sizeof(double) + sizeof(bool));
    if (!data::canAllocate(pixels * bytesOfAPixel)) {
        data::reportRefusal("no memory for its pixels");
        return false;
    }
    minVal = file.header().minVal;
    maxVal = file.header().maxVal;
    width = file.header().width;
    height = file.header().height;
    dataId = file.header().dataId;
    data.resize(pixels);
    validFlags.resize(pixels);
    file.readValues(data);
    file.readFlags(validFlags);
    return true;
}

bool TDData0::save(const QString& path) const
{
    const QString lines = headerLines(*this);
    const qint64 headerSize = (lines.size() / headerBlock + 1) * headerBlock;
    const QString header = withFirstLine(lines, headerSize);
    qDebug().noquote() << "2dData save:" << header << header.size();

    QFile file(path);
    if (data::openForWriting(file, QIODevice::NotOpen)) {
        const QByteArray text = header.toLatin1();
        const bool written = write(file, text.constData(), text.size()) && file.seek(headerSize) &&
                             write(file, data.constData(), data.size() * qint64{sizeof(double)}) &&
                             write(file, validFlags.constData(), validFlags.size());
        file.close(); // flushes the buffer, so that write errors are detected
        if (written && file.error() == QFileDevice::NoError) {
            return true;
        }
    }
    qDebug().noquote() << "can't open" << path << "to save 2dData";
    return false;
}
