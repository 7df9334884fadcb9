// Results of the sample and checks against their expected values.
#pragma once

#include <QList>
#include <QString>

namespace nickel
{
class ErrorStatistics;
}

/// The check of one number in the result of a target.
struct TargetCheck {
    QString what;
    double mixed = 0.0;    ///< true value
    double expected = 0.0; ///< result of the method for data without noise
    double result = 0.0;
    double bound = 0.0; ///< largest allowed |result - expected|

    double off() const;

    /// Whether the result is within its bound; false for NaN.
    bool isGood() const { return off() <= bound; }
};

/// The check of one quantity of a result map over all pixels.
struct MapCheck {
    static constexpr double rmsBound = 1.15;  // largest allowed rms
    static constexpr double worstBound = 6.0; // largest allowed |error - bias| / sigma

    /// @param commonSigma  standard deviation of the error that is common to all pixels
    MapCheck(const QString& quantity, const nickel::ErrorStatistics& statistics,
             double commonSigma);

    /// Whether rms, worst and mean are within their bounds; false if one of them is NaN.
    bool isGood() const;

    QString what;
    double rms;   ///< rms of (error - bias) / sigma
    double worst; ///< largest |error - bias| / sigma
    double mean;  ///< absolute value of the mean of error - bias
    double meanBound;
};

/// The results of one calculation and their checks.
struct SampleOutcome {
    QString title;
    QString line; ///< the result line of the window
    QList<TargetCheck> target;
    QList<MapCheck> map;
    QString resultPath; ///< path of the result map; empty if there is none
    bool written = true;

    bool isGood() const;

    void print() const;
};
