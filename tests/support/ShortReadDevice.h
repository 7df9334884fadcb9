// A read-only device with short reads of varying size that can also fail.
#pragma once

#include <QByteArray>
#include <QIODevice>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace tests
{

/// A device whose content is the given bytes. Each successful read returns 1 to
/// @p largest bytes. A linear congruential generator with a fixed seed determines the sizes of the
/// reads. The constructor opens the device for reading.
class ShortReadDevice : public QIODevice
{
public:
    /// @param largest  maximum size of a read in bytes, at least 1
    ShortReadDevice(const QByteArray& bytes, qint64 largest, bool isSequential)
        : m_bytes(bytes)
        , m_failsAt(bytes.size())
        , m_largest(largest)
        , m_isSequential(isSequential)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    /// Makes every read at or after byte @p position fail. Does not change the
    /// results of size() and atEnd().
    void failAt(qint64 position) { m_failsAt = std::min<qint64>(position, m_bytes.size()); }

    bool isSequential() const override { return m_isSequential; }
    qint64 size() const override { return m_isSequential ? 0 : m_bytes.size(); }
    bool atEnd() const override { return m_next >= m_bytes.size() && QIODevice::atEnd(); }

    bool seek(qint64 position) override
    {
        m_next = std::min<qint64>(position, m_bytes.size());
        return QIODevice::seek(position);
    }

protected:
    qint64 readData(char* out, qint64 most) override
    {
        const qint64 count = std::min({most, m_failsAt - m_next, nextPiece()});
        if (count <= 0) {
            return most == 0 ? 0 : -1;
        }
        std::memcpy(out, m_bytes.constData() + m_next, static_cast<std::size_t>(count));
        m_next += count;
        return count;
    }

    qint64 writeData(const char*, qint64) override { return -1; }

private:
    qint64 nextPiece()
    {
        m_random = m_random * 1664525u + 1013904223u;
        return 1 + static_cast<qint64>(m_random >> 8) % m_largest;
    }

    QByteArray m_bytes;
    qint64 m_failsAt;
    qint64 m_largest;
    bool m_isSequential;
    qint64 m_next = 0;
    std::uint32_t m_random = 1;
};

} // namespace tests
