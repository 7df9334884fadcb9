// A kind of action of the random user.
#pragma once

#include "random/Draw.h"

#include <QString>

#include <functional>

namespace tests
{

struct ActionKind {
    QString name;
    int weight;                        ///< relative frequency
    std::function<QString(Draw&)> act; ///< performs it and returns a description
};

} // namespace tests
