#include "random/RandomFiles.h"

#include "support/MapText.h"
#include "support/SpectrumText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace tests
{

namespace
{

/// A binary map with @p pixels values that depend on @p seed. Its header states the size
/// @p width by @p height, which can differ from the number of values.
QByteArray binaryMap(const QByteArray& width, const QByteArray& height, int pixels, int seed)
{
    QByteArray bytes = QByteArrayLiteral("2dData-V0.0 HeaderSize: 512").leftJustified(64, ' ');
    bytes += "\nWIDTH: " + width + "\nHEIGHT: " + height + "\nDATA_ID: mut\nEND_OF_HEADER:\n";
    bytes = bytes.leftJustified(512, '\0');
    for (int i = 0; i < pixels; ++i) {
        const double value = ((i * 31 + seed * 17) % 97) * 0.02;
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    return bytes + QByteArray(pixels, '\1');
}

/// A spectrum of 30 points in the beamline format (9809). @p modes is inserted before the
/// word "Offset"; it can state the crystal spacing, for example "D= 3.13 A".
QByteArray beamlineText(const QByteArray& modes)
{
    QByteArray text = "9809     SPring-8\n test\n  Angle(c)  Angle(o)  time\n Mode 0 0 1 2\n" +
                      modes + " Offset 0 0 0 0\n";
    for (int i = 0; i < 30; ++i) {
        text += " 13." + QByteArray::number(700 - 10 * i) + " 13." +
                QByteArray::number(700 - 10 * i) + " 1.0 " + QByteArray::number(90000 + i) + ' ' +
                QByteArray::number(i < 15 ? 80000 : 40000 + 10 * i) + '\n';
    }
    return text;
}

QByteArray manyWords(const QByteArray& words, int times)
{
    QByteArray text;
    for (int i = 0; i < times; ++i) {
        text += words;
    }
    return text;
}

/// File contents with, for example, wrong sizes, extreme numbers, long lines or unusual
/// encodings. Some are valid, such as a small binary map and a spectrum with CRLF line ends.
const QList<QByteArray>& invalidTexts()
{
    static const QList<QByteArray> texts{
        {},
        "no number\n",
        "\xef\xbb\xbf" + mapText(4, 3, 1, {}),
        mapText(6, 4, 2, "nan").replace("\n", "\r\n"),
        mapText(6, 5, 3, "1e308").replace(" 400\n", " 0\n"),
        "# X-NUM 5\n# Y-NUM 2\n" + manyWords("nan inf nan 1e308\n0 0 inf nan\n", 5),
        "# X-NUM 9\n# Y-NUM 9\n0 0 1 2\n0 1 1\n",
        "# X-NUM -3\n# Y-NUM 7\n0 0 1 2\n",
        "# X-NUM 2147483648\n# Y-NUM 2147483647\n0 0 1 2\n",
        "# 2003901\n# I0 : 0\n# I : 1\n" + manyWords("1 2 500 300\n2 2 500 250\n", 6),
        "# 2003901\n# I0 : -7\n# I : 900\n1 2 500 300\n1 3 500 300\n",
        "# 1306\n# AXIS 0 a b c d 5\n# AXIS 1 a b c d 3\n" + manyWords("1 1 90 400\n", 24),
        manyWords("# ENERGY : 8381\n", 40) + "# X-NUM 2\n# Y-NUM 1\n1 1 2 3\n2 1 2 3\n",
        QByteArray(100000, '1') + "\n" + mapText(3, 2, 1, {}),
        "# " + QByteArray(100000, 'x') + "\n" + mapText(3, 2, 1, {}),
        manyWords("8000 nan\n8100 inf\n8200 -inf\n8400 1e308\n", 8),
        "8000 1\n8000 1\n8000 2\n8000 3\n8000 5\n",
        manyWords("9000 1\n8000 2\n", 10),
        spectrumText("0.5", "2", "1.5", "1").replace("\n", "\r\n"),
        "\xef\xbb\xbf" + spectrumText("0.5", "2", "1.5", "1"),
        spectrumText("1e308", "-1e308", "0", "1e308"),
        beamlineText("D= 3.13 A"),
        beamlineText("D= 0 A"),
        beamlineText({}).left(60),
        "9809",
        binaryMap("5", "4", 20, 1),
        binaryMap("5", "4", 7, 1),
        binaryMap("-5", "4", 20, 1),
        binaryMap("65536", "65536", 3, 1),
        binaryMap("x", "y", 3, 1),
        binaryMap("5", "4", 20, 1).left(100),
        binaryMap("5", "4", 20, 1).replace("512", "-12"),
        QByteArray(3000, '\0'),
        QByteArray("\xff\xfe\x31\x00\x20\x00\x32\x00\xd8\xd8\x0a\x00", 12),
        "\xe3\x83\x8b\xe3\x83\x83\xe3\x82\xb1\xe3\x83\xab 1 2 3\n",
    };
    return texts;
}

} // namespace

QString RandomFiles::validSpectrum(int which)
{
    const QList<QByteArray> texts{spectrumText("0.5", "2", "1.5", "1"),
                                  spectrumText("0.25", "0.5", "1.75", "1.5"),
                                  spectrumText("0.75", "1.25", "1", "0.5")};
    return make(QStringLiteral("spectrum%1.dat").arg(which), texts.at(which % 3));
}

QString RandomFiles::validMap(int which)
{
    QByteArray text = mapText(8, 6, which, {});
    if (which == 5) {
        text = mapText(5, 4, which, {});
    } else if (which == 6) {
        text = mapText(12, 10, which, {});
    } else if (which > 6) {
        text = mapText(8, 6, which, which == 7 ? "8381" : "8404.5");
    }
    return make(QStringLiteral("map%1.dat").arg(which), text);
}

QString RandomFiles::validBinaryMap(int which)
{
    return make(QStringLiteral("map%1.2dp").arg(which),
                binaryMap(which == 0 ? "8" : "5", "6", which == 0 ? 48 : 30, which));
}

QString RandomFiles::invalidFile(Draw& draw)
{
    const int texts = static_cast<int>(invalidTexts().size());
    const int which = draw.upTo(texts + 12);
    if (which < texts) {
        return make(QStringLiteral("invalid%1.dat").arg(which), invalidTexts().at(which));
    }
    if (which < texts + 6) {
        const QString path = validMap(draw.upTo(3));
        damage(path, draw);
        return path;
    }
    const QList<QString> paths{
        QString(),           m_dir.filePath(QStringLiteral("missing/missing.dat")),
        m_dir.path(),        QStringLiteral("/dev/null"),
        QString(4096, u'x'), m_dir.filePath(QString(QChar(0xd800)) + QStringLiteral(".dat"))};
    return paths.at(which - texts - 6);
}

QString RandomFiles::damage(const QString& path, Draw& draw)
{
    const int kind = draw.upTo(8);
    const QByteArray name = QFile::encodeName(path);
    QFile file(path);
    switch (kind) {
    case 0:
        file.resize(file.size() / 2);
        return QStringLiteral("truncated to half its size");
    case 1:
        file.resize(0);
        return QStringLiteral("emptied");
    case 2:
        file.setPermissions({});
        return QStringLiteral("without permissions");
    default:
        break;
    }
    removeFileOrFolder(path);
    switch (kind) {
    case 3:
        QDir().mkpath(path);
        return QStringLiteral("now a folder");
    case 4:
        return ::symlink(name.constData(), name.constData()) == 0 ? "now a link to itself"
                                                                  : "removed";
    case 5:
        return ::mkfifo(name.constData(), 0600) == 0 ? "now a pipe" : "removed";
    case 6:
        make(QFileInfo(path).fileName(), draw.oneOf(invalidTexts()));
        return QStringLiteral("a different kind of file");
    default:
        return QStringLiteral("removed");
    }
}

QString RandomFiles::placeToWrite(Draw& draw)
{
    const int which = draw.upTo(12);
    if (which < 2) {
        return make(QStringLiteral("result%1.dat").arg(which), "an older result\n");
    }
    if (which < 5) {
        const QString base = QStringLiteral("counted%1").arg(which);
        make(base + QStringLiteral("_HGAlpha.dat"), "older\n");
        make(base + QStringLiteral("_HGThick.dat"), QByteArray(10000, 'x'));
        return make(base + QStringLiteral(".dat"), QByteArray(20000, 'x'));
    }
    if (which < 7) {
        const QString path = m_dir.filePath(QStringLiteral("new%1.dat").arg(which));
        removeFileOrFolder(path);
        return path;
    }
    return unusualTarget(draw);
}

QString RandomFiles::unusualTarget(Draw& draw)
{
    const QString path = m_dir.filePath(QStringLiteral("target.dat"));
    switch (draw.upTo(9)) {
    case 0:
        make(QStringLiteral("target.dat"), "kept\n");
        QFile(path).setPermissions(QFileDevice::ReadOwner);
        return path;
    case 1:
        return QStringLiteral("/dev/full");
    case 2:
        return m_dir.path();
    case 3:
        return m_dir.filePath(QStringLiteral("missing/target.dat"));
    case 4:
        removeFileOrFolder(path);
        return ::mkfifo(QFile::encodeName(path).constData(), 0600) == 0 ? path : QString();
    case 5:
        return m_dir.filePath(QString::fromUtf8("\xe7\xb5\x90\xe6\x9e\x9c \t\x01%1 '\".x.dat"));
    case 6:
        return m_dir.filePath(QString(QChar(0xdc00)) + QStringLiteral(".dat"));
    case 7:
        return m_dir.path() + u'/' + QString(300, u'y') + QStringLiteral(".dat");
    default:
        return {};
    }
}

QString RandomFiles::make(const QString& name, const QByteArray& content)
{
    const QString path = m_dir.filePath(name);
    removeFileOrFolder(path);
    QFile file(path);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(content);
    }
    return path;
}

void RandomFiles::removeFileOrFolder(const QString& path)
{
    const QFileInfo info(path);
    if (info.isDir() && !info.isSymLink()) {
        QDir(path).removeRecursively();
    } else {
        ::unlink(QFile::encodeName(path).constData());
    }
}

} // namespace tests
