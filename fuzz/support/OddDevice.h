// A device that delivers its bytes in pieces of odd sizes.
#pragma once

#include <QByteArray>
#include <QIODevice>

#include <algorithm>
#include <cstring>

namespace fuzz
{

/// Holds bytes and delivers as few at a time as it likes, down to one. Sequential
/// or not, as it is asked to be. Open for reading from the start.
class OddDevice : public QIODevice
{
public:
    /// @param largest  bytes of the largest piece
    OddDevice(const QByteArray& bytes, qint64 largest, bool isSequential)
        : m_bytes(bytes)
        , m_largest(largest)
        , m_isSequential(isSequential)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

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
        m_piece = m_piece * 5 % 11 + 1;
        const qint64 count = std::min({most, m_bytes.size() - m_next, 1 + m_piece % m_largest});
        if (count <= 0) {
            return most == 0 ? 0 : -1;
        }
        std::memcpy(out, m_bytes.constData() + m_next, static_cast<std::size_t>(count));
        m_next += count;
        return count;
    }

    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    qint64 m_largest;
    bool m_isSequential;
    qint64 m_next = 0;
    qint64 m_piece = 1;
};

} // namespace fuzz
