// Draws for one action of a random user.
#pragma once

#include <QList>

#include <initializer_list>
#include <random>

namespace tests
{

/// Draws that follow from the seed of a run and the number of an action alone, so
/// that an action draws the same whichever actions came before it. The same on
/// every platform: the distributions of the standard library are not.
class Draw
{
public:
    Draw(unsigned seed, int action)
    {
        std::seed_seq mixed{seed, static_cast<unsigned>(action)};
        m_random.seed(mixed);
    }

    /// A whole number from 0 to @p count - 1; 0 for a @p count below 1.
    int upTo(int count)
    {
        const auto drawn = static_cast<unsigned>(m_random());
        return count < 1 ? 0 : static_cast<int>(drawn % static_cast<unsigned>(count));
    }

    /// Whether something happens that happens once in @p rounds.
    bool onceIn(int rounds) { return upTo(rounds) == 0; }

    /// One item of a list, which must not be empty.
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
