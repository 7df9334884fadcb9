// A kind of action of the random user.
#pragma once

#include "random/Draw.h"

#include <QString>

#include <functional>

namespace tests
{

struct ActionKind {
    QString name;
    int weight;                        ///< frequency relative to the other kinds
    std::function<QString(Draw&)> act; ///< performs the action and returns its description
};

} // namespace tests
