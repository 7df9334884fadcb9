// Reads compiled translations (.qm) byte by byte, so that tests check the content of the
// file without QTranslator.
//
// A file is 16 magic bytes followed by sections. Each section is a one-byte tag, a 32-bit
// length and that many bytes. All numbers are big-endian. The hash section is a list of
// pairs: the hash of a text and the offset of its message in the message section. A
// message is a sequence of tagged fields and ends with an end tag.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <array>
#include <optional>

namespace tests
{

struct QmHash {
    quint32 hash = 0;
    quint32 place = 0; ///< byte offset in the message section
};

struct QmMessage {
    QByteArray context;
    QByteArray source;
    QByteArray comment;
    QString translation;  ///< empty if the message has no translation
    int translations = 0; ///< number of translation fields, including empty ones
    quint32 place = 0;    ///< byte offset in the message section
};

struct QmTable {
    QList<int> sections; ///< tags in file order
    QList<QmHash> hashes;
    QList<QmMessage> messages;
};

enum QmSection {
    QmContexts = 0x2f,
    QmHashes = 0x42,
    QmMessages = 0x69,
    QmNumerusRules = 0x88,
    QmDependencies = 0x96,
    QmLanguage = 0xa7
};

inline constexpr std::array<unsigned char, 16> qmMagic{
    0x3c, 0xb8, 0x64, 0x18, 0xca, 0xef, 0x9c, 0x95, 0xcd, 0x21, 0x1c, 0xbf, 0x60, 0xa1, 0xbd, 0xdd};

/// Reads bytes from front to back. After an attempt to read past the end, isGood() is
/// false; the attempt returns an empty view or 0.
class QmBytes
{
public:
    explicit QmBytes(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    bool isGood() const { return m_good; }
    bool atEnd() const { return m_at == m_bytes.size(); }
    void fail() { m_good = false; }
    quint32 place() const { return static_cast<quint32>(m_at); }

    QByteArrayView take(qsizetype count)
    {
        if (!m_good || count < 0 || count > m_bytes.size() - m_at) {
            m_good = false;
            return {};
        }
        m_at += count;
        return m_bytes.sliced(m_at - count, count);
    }

    quint32 number(int bytes)
    {
        quint32 value = 0;
        for (const char byte : take(bytes)) {
            value = (value << 8) | static_cast<unsigned char>(byte);
        }
        return value;
    }

    /// A byte block: a 32-bit length followed by that many bytes.
    QByteArrayView block() { return take(static_cast<qsizetype>(number(4))); }

private:
    QByteArrayView m_bytes;
    qsizetype m_at = 0;
    bool m_good = true;
};

/// A UTF-16 text: its length in bytes (0xffffffff for a null string), then the text.
inline QString qmText(QmBytes& bytes)
{
    const quint32 length = bytes.number(4);
    QString text;
    if (length == 0xffffffffU) {
        return text;
    }
    QmBytes units(bytes.take(static_cast<qsizetype>(length)));
    while (units.isGood() && !units.atEnd()) {
        text += QChar(static_cast<char16_t>(units.number(2)));
    }
    if (!units.isGood()) {
        bytes.fail(); // an odd number of bytes is not UTF-16
    }
    return text;
}

/// Reads one message. Returns nullopt if it has an unknown field or no end tag.
inline std::optional<QmMessage> qmMessage(QmBytes& bytes)
{
    QmMessage message;
    message.place = bytes.place();
    while (true) {
        const quint32 tag = bytes.number(1);
        if (!bytes.isGood()) {
            return {};
        }
        switch (tag) {
        case 1:
            return message;
        case 3:
            message.translation = qmText(bytes);
            ++message.translations;
            break;
        case 6:
            message.source = bytes.block().toByteArray();
            break;
        case 7:
            message.context = bytes.block().toByteArray();
            break;
        case 8:
            message.comment = bytes.block().toByteArray();
            break;
        default:
            return {};
        }
    }
}

/// The content of a .qm file; nullopt if the structure of the file is invalid.
inline std::optional<QmTable> readQm(QByteArrayView file)
{
    const QByteArrayView magic(reinterpret_cast<const char*>(qmMagic.data()), qmMagic.size());
    QmBytes bytes(file);
    if (bytes.take(magic.size()) != magic) {
        return {};
    }
    QmTable table;
    while (!bytes.atEnd()) {
        const quint32 tag = bytes.number(1);
        QmBytes section(bytes.block());
        if (!bytes.isGood()) {
            return {};
        }
        table.sections.append(static_cast<int>(tag));
        while (tag == QmHashes && !section.atEnd()) {
            const quint32 hash = section.number(4);
            table.hashes.append({hash, section.number(4)});
            if (!section.isGood()) {
                return {};
            }
        }
        while (tag == QmMessages && !section.atEnd()) {
            const std::optional<QmMessage> message = qmMessage(section);
            if (!message) {
                return {};
            }
            table.messages.append(*message);
        }
    }
    return table;
}

/// The hash of a message, by the ELF hash function of the System V ABI. @p text is the
/// source text followed by the disambiguation comment. A hash of 0 is replaced by 1.
inline quint32 qmHash(const QByteArray& text)
{
    quint32 hash = 0;
    for (const char byte : text) {
        hash = (hash << 4) + static_cast<unsigned char>(byte);
        const quint32 high = hash & 0xf0000000U;
        hash ^= high >> 24;
        hash &= ~high;
    }
    return hash == 0 ? 1 : hash;
}

} // namespace tests
