#include "data/TDData0.h"

#include "data/A2DData.h"
#include "data/FileAccess.h"
#include "data/TextItems.h"

#include <QDebug>
#include <QFile>
#include <QStringDecoder>
#include <QTextStream>

#include <algorithm>
#include <bit>
#include <optional>

static_assert(std::endian::native == std::endian::little && sizeof(double) == 8 &&
                  sizeof(bool) == 1,
              "pixels and flags are moved between lists and file as they are");

namespace
{

constexpr qsizetype firstLineSize = 64; ///< characters, the line feed left out
constexpr qint64 headerBlock = 256;     ///< bytes

constexpr QLatin1String formName("2dData");

/// The characters of the first line of a file, or less where the file is
/// shorter; nothing, with a report, where it cannot be opened.
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

/// The header block, or what the file has of it: the size is the file's claim
/// and is not allocated on its word.
QByteArray readHeaderBlock(const QString& path, qint64 headerSize)
{
    QFile file(path);
    if (!data::openForReading(file)) {
        return {};
    }
    return file.read(std::clamp<qint64>(headerSize, 0, file.size()));
}

void takeHeaderLine(const QString& line, TDData0Header& header)
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

/// Lines 1 to 10 of the header, the first as blanks.
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

// The size of the header stands in its first line, which is of a fixed length
// so that the size does not depend on its own digits.
QString withFirstLine(const QString& lines, qint64 headerSize)
{
    const QString first =
        formName + QLatin1String("-V0.0 HeaderSize: ") + QString::number(headerSize);
    return first + lines.sliced(first.size());
}

bool write(QFile& file, const void* bytes, qint64 size)
{
    return file.write(static_cast<const char*>(bytes), size) == size;
}

void readPixels(QFile& file, QList<double>& pixels)
{
    file.read(reinterpret_cast<char*>(pixels.data()), pixels.size() * qint64{sizeof(double)});
}

void readFlags(QFile& file, QList<bool>& flags)
{
    char* const bytes = reinterpret_cast<char*>(flags.data());
    file.read(bytes, flags.size());
    // A bool may not hold what any byte of a file may.
    std::transform(bytes, bytes + flags.size(), bytes,
                   [](char byte) { return static_cast<char>(byte != 0); });
}

} // namespace

bool TDData0::isTDData0File(const QString& path)
{
    const std::optional<QString> firstLine = readFirstLine(path);
    return firstLine && firstLine->startsWith(formName);
}

bool TDData0::readHeader(TDData0Header& h, const QString& path)
{
    const std::optional<QString> firstLine = readFirstLine(path);
    if (!firstLine || !firstLine->startsWith(formName)) {
        return false;
    }
    h.valid = true;
    h.headerSize = headerSizeIn(*firstLine);
    // Decoded in one go: a stream on bytes grows its buffer along a long line.
    QString block = QStringDecoder(QStringDecoder::Utf8)(readHeaderBlock(path, h.headerSize));
    QTextStream lines(&block, QIODevice::ReadOnly);
    QString line;
    while (lines.readLineInto(&line)) {
        takeHeaderLine(line, h);
    }
    return true;
}

bool TDData0::load(const QString& path)
{
    TDData0Header header;
    if (!readHeader(header, path) || header.width < 0 || header.height < 0 ||
        data::isSizeTooLarge(header.width, header.height)) {
        qDebug().noquote() << path << "is not a TDData0 file.";
        return false;
    }
    minVal = header.minVal;
    maxVal = header.maxVal;
    width = header.width;
    height = header.height;
    dataId = header.dataId;
    const qsizetype pixels = qsizetype{width} * height;
    data.resize(pixels);
    validFlags.resize(pixels);

    QFile file(path);
    if (data::openForReading(file) && file.seek(header.headerSize)) {
        readPixels(file, data);
        readFlags(file, validFlags);
    }
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
        file.close(); // writes what is still buffered
        if (written && file.error() == QFileDevice::NoError) {
            return true;
        }
    }
    qDebug().noquote() << "can't open" << path << "to save 2dData";
    return false;
}
