// One kind of thing that a random user does.
#pragma once

#include "random/Draw.h"

#include <QString>

#include <functional>

namespace tests
{

struct ActionKind {
    QString name;
    int weight;                        ///< how often, compared with the others
    std::function<QString(Draw&)> act; ///< does it, and says what it was
};

} // namespace tests
