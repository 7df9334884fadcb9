// Tests lists that share blocks of memory against ordinary lists, and the cache of
// absorbances.

#include "support/ByteReader.h"
#include "support/FuzzTarget.h"
#include "support/SameDouble.h"

#include "data/AbsorbanceCache.h"
#include "data/ValueBlocks.h"

#include <algorithm>
#include <span>
#include <vector>

namespace
{

constexpr int maxRows = 6;
constexpr int maxBlocks = 3;
constexpr int maxSteps = 40;
constexpr qsizetype maxLength = 40;

bool same(const QList<double>& a, const QList<double>& b)
{
    return std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend(), tests::sameDouble);
}

/// A deep copy of a list.
QList<double> deepCopy(const QList<double>& list)
{
    QList<double> copy;
    std::copy(list.cbegin(), list.cend(), std::back_inserter(copy));
    return copy;
}

/// A list that can be in a shared block, and an ordinary list to which the same operations
/// are applied.
struct Pair {
    QList<double> list;
    QList<double> wanted;
};

class Lists
{
public:
    explicit Lists(fuzz::ByteReader& in)
        : m_in(in)
        , m_rows(static_cast<std::size_t>(maxBlocks * maxRows))
        , m_wanted(m_rows.size())
    {
    }

    void step()
    {
        switch (m_in.number(0, 7)) {
        case 0:
        case 1:
            share();
            break;
        case 2:
            m_kept.push_back({m_rows[row()].values, {}});
            m_kept.back().wanted = deepCopy(m_kept.back().list);
            break;
        case 3:
            if (!m_kept.empty()) {
                m_kept.erase(m_kept.begin() + keptPlace());
            }
            break;
        case 4:
            forget();
            break;
        case 5:
            exchange();
            break;
        case 6:
            if (!m_kept.empty()) {
                Pair& kept = m_kept[static_cast<std::size_t>(keptPlace())];
                change(kept.list, kept.wanted);
            }
            break;
        default:
            const std::size_t r = row();
            change(m_rows[r].values, m_wanted[r]);
            break;
        }
    }

    void check() const
    {
        for (std::size_t r = 0; r < m_rows.size(); ++r) {
            FUZZ_REQUIRE(same(m_rows[r].values, m_wanted[r]));
        }
        for (const Pair& kept : m_kept) {
            FUZZ_REQUIRE(same(kept.list, kept.wanted));
        }
    }

private:
    std::size_t row() { return static_cast<std::size_t>(m_in.number(0, maxBlocks * maxRows - 1)); }

    std::ptrdiff_t keptPlace() { return m_in.number(0, static_cast<int>(m_kept.size()) - 1); }

    /// Replaces the value lists of some rows by lists in one memory block and fills them, as
    /// a calculation does.
    void share()
    {
        const int block = m_in.number(0, maxBlocks - 1);
        const int count = m_in.number(1, maxRows);
        const int length = m_in.oneOf(QList<int>{13, 1, 2, 3, 13});
        const auto first = static_cast<std::size_t>(block * maxRows);
        const std::span<A2DRow> rows(&m_rows[first], static_cast<std::size_t>(count));
        const std::span<double> values =
            m_blocks.share(static_cast<std::size_t>(block), rows, length);
        auto value = values.begin();
        for (int r = 0; r < count; ++r) {
            QList<double>& wanted = m_wanted[first + static_cast<std::size_t>(r)];
            wanted.clear();
            for (int i = 0; i < length; ++i) {
                *value = ++m_next;
                wanted.append(*value++);
            }
        }
        FUZZ_REQUIRE(value == values.end());
    }

    void forget()
    {
        const auto block = static_cast<std::size_t>(m_in.number(0, maxBlocks));
        if (m_in.number(0, 1) == 0) {
            m_blocks.forget(block);
        } else {
            m_blocks.keepFirst(block);
        }
    }

    void exchange()
    {
        const std::size_t a = row();
        const std::size_t b = row();
        if (m_in.number(0, 1) == 0) {
            std::swap(m_rows[a].values, m_rows[b].values);
            std::swap(m_wanted[a], m_wanted[b]);
        } else {
            m_rows[a].values = m_rows[b].values;
            m_wanted[a] = deepCopy(m_wanted[b]);
        }
    }

    /// Performs the same random operation on both lists.
    void change(QList<double>& list, QList<double>& wanted)
    {
        const int operation = m_in.number(0, 11);
        const qsizetype at = m_in.number(0, static_cast<int>(wanted.size()));
        const double value = ++m_next;
        if (wanted.size() > maxLength) {
            list.clear();
            wanted.clear();
            return;
        }
        for (QList<double>* each : {&list, &wanted}) {
            apply(*each, operation, at, value);
        }
    }

    static void apply(QList<double>& list, int operation, qsizetype at, double value)
    {
        const bool hasPlace = at < list.size();
        switch (operation) {
        case 0:
            list.append(value);
            break;
        case 1:
            list.prepend(value);
            break;
        case 2:
            list.insert(at, value);
            break;
        case 3:
            list.insert(at, 3, value);
            break;
        case 4:
            list.resize(at);
            break;
        case 5:
            list = list.mid(at) + list.first(at);
            break;
        case 6:
            list.fill(value, at);
            break;
        case 7:
            list.squeeze();
            list.reserve(at + 2);
            break;
        case 8:
            std::reverse(list.begin(), list.end());
            break;
        case 9:
            list.clear();
            break;
        case 10:
            if (hasPlace) {
                list.removeAt(at);
            }
            break;
        default:
            if (hasPlace) {
                list[at] = value;
            }
            break;
        }
    }

    fuzz::ByteReader& m_in;
    double m_next = 0.0; ///< the latest value; new values count up
    data::ValueBlocks m_blocks;
    std::vector<A2DRow> m_rows; ///< maxRows consecutive rows for each block
    std::vector<QList<double>> m_wanted;
    std::vector<Pair> m_kept;
};

void checkAbsorbances(const data::AbsorbanceCache& cache, const std::vector<A2DData>& maps,
                      const QList<const A2DData*>& ready)
{
    for (const A2DData& map : maps) {
        const std::span<const double> values = cache.of(map);
        FUZZ_REQUIRE(!values.empty() || map.rows.isEmpty() || !ready.contains(&map));
        FUZZ_REQUIRE(values.empty() || values.size() == static_cast<std::size_t>(map.rows.size()));
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double expected = data::absorbance(map.rows.at(static_cast<qsizetype>(i)));
            FUZZ_REQUIRE(tests::sameDouble(values[i], expected));
        }
    }
}

void tryCache(fuzz::ByteReader& in)
{
    constexpr int maxMaps = 3;
    data::AbsorbanceCache cache;
    std::vector<A2DData> maps(maxMaps);
    const auto anyMap = [&]() -> A2DData& {
        return maps[static_cast<std::size_t>(in.number(0, maxMaps - 1))];
    };
    QList<const A2DData*> ready;
    for (int step = 0; step < maxSteps && !in.atEnd(); ++step) {
        switch (in.number(0, 4)) {
        case 0:
            ready.clear();
            for (int count = in.number(0, maxMaps); count > 0; --count) {
                ready.append(&anyMap());
            }
            cache.prepare(ready);
            break;
        case 1:
            anyMap() = anyMap();
            ready.clear();
            break;
        case 2: {
            A2DData& map = anyMap();
            if (!map.rows.isEmpty()) {
                map.rows[in.number(0, static_cast<int>(map.rows.size()) - 1)].i0 = in.anyDouble();
            }
            ready.clear();
            break;
        }
        case 3:
            anyMap().rows.resize(in.number(0, 12));
            ready.clear();
            break;
        default:
            anyMap().rows.append({0.0, 0.0, in.anyDouble(), in.anyDouble(), {}});
            ready.clear();
            break;
        }
        checkAbsorbances(cache, maps, ready);
    }
}

} // namespace

void fuzz::tryInput(const QByteArray& bytes)
{
    ByteReader in(bytes);
    if (in.number(0, 3) == 3) {
        tryCache(in);
        return;
    }
    Lists lists(in);
    for (int step = 0; step < maxSteps && !in.atEnd(); ++step) {
        lists.step();
        lists.check();
    }
}
