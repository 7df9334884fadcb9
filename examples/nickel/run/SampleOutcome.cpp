#include "SampleOutcome.h"

#include "ErrorStatistics.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace
{

constexpr double meanSigmas = 4.0;

/// Rounds to the four printed decimals. Adding 0.0 changes -0 to 0.
double rounded(double value)
{
    return std::round(value * 1e4) / 1e4 + 0.0;
}

const char* verdict(bool good)
{
    return good ? "" : "  OFF";
}

} // namespace

double TargetCheck::off() const
{
    return std::abs(result - expected);
}

MapCheck::MapCheck(const QString& quantity, const nickel::ErrorStatistics& statistics,
                   double commonSigma)
    : what(quantity)
    , rms(statistics.rms())
    , worst(statistics.worst())
    , mean(std::abs(statistics.meanError()))
    , meanBound(meanSigmas * std::hypot(statistics.meanSigma(), commonSigma))
{
}

bool MapCheck::isGood() const
{
    return rms <= rmsBound && worst <= worstBound && mean <= meanBound;
}

bool SampleOutcome::isGood() const
{
    const auto good = [](const auto& check) { return check.isGood(); };
    return written && std::all_of(target.begin(), target.end(), good) &&
           std::all_of(map.begin(), map.end(), good);
}

void SampleOutcome::print() const
{
    std::printf("\n%s: %s\n  \"%s\"\n", qPrintable(title), isGood() ? "good" : "OFF",
                qPrintable(line));
    std::printf("  %-22s %9s %9s %9s %9s %9s\n", "target", "mixed", "expected", "result", "off by",
                "allowed");
    for (const TargetCheck& check : target) {
        std::printf("  %-22s %9.4f %9.4f %9.4f %9.4f %9.4f%s\n", qPrintable(check.what),
                    rounded(check.mixed), rounded(check.expected), rounded(check.result),
                    check.off(), check.bound, verdict(check.isGood()));
    }
    if (resultPath.isEmpty()) {
        return;
    }
    if (!map.isEmpty()) {
        std::printf("  %-22s %9s %9s %9s %9s\n", "map, errors", "rms/sigma", "max/sigma", "mean",
                    "allowed");
    }
    for (const MapCheck& check : map) {
        std::printf("  %-22s %9.3f %9.2f %9.4f %9.4f%s\n", qPrintable(check.what), check.rms,
                    check.worst, check.mean, check.meanBound, verdict(check.isGood()));
    }
    std::printf("  %s%s\n", qPrintable(resultPath), written ? "" : "  NOT WRITTEN");
}
