// Random numbers for one action of a random user.
#pragma once

#include <QList>

#include <initializer_list>
#include <random>

namespace tests
{

/// A random number generator for one action. Its seed depends only on the seed of the run
/// and on the number of the action, so an action draws the same numbers even if earlier
/// actions are omitted. The distributions of the standard library are not used, because
/// their results differ between platforms.
class Draw
{
public:
    Draw(unsigned seed, int action)
    {
        std::seed_seq mixed{seed, static_cast<unsigned>(action)};
        m_random.seed(mixed);
    }

    /// A number from 0 to @p count - 1; 0 if @p count is below 1.
    int upTo(int count)
    {
        const auto drawn = static_cast<unsigned>(m_random());
        return count < 1 ? 0 : static_cast<int>(drawn % static_cast<unsigned>(count));
    }

    /// True with probability 1 / @p rounds.
    bool onceIn(int rounds) { return upTo(rounds) == 0; }

    /// A random item of a list, which must not be empty.
    template <class List>
    auto oneOf(const List& list)
    {
        return list.at(upTo(static_cast<int>(list.size())));
    }
    template <class T>
    T oneOf(std::initializer_list<T> list)
    {
        return oneOf(QList<T>(list));
    }

private:
    std::mt19937 m_random;
};

} // namespace tests
