// Results of the sample and their comparison with the expected values.
#pragma once

#include <QList>
#include <QString>

namespace nickel
{
class ErrorStatistics;
}

/// One number of a target's result and its check.
struct TargetCheck {
    QString what;
    double mixed = 0.0;    ///< true value of the target
    double expected = 0.0; ///< result of the method without noise
    double result = 0.0;
    double bound = 0.0; ///< largest allowed difference of result and expected

    double off() const;

    /// Also false for NaN.
    bool isGood() const { return off() <= bound; }
};

/// The check of one quantity of a result map, over all pixels.
struct MapCheck {
    static constexpr double rmsBound = 1.15;  // in expected standard deviations
    static constexpr double worstBound = 6.0; // in expected standard deviations

    /// @param commonSigma  standard deviation of the error that all pixels share
    MapCheck(const QString& quantity, const nickel::ErrorStatistics& statistics,
             double commonSigma);

    /// Also false for NaN.
    bool isGood() const;

    QString what;
    double rms;   ///< rms of (error - bias) / sigma
    double worst; ///< largest |error - bias| / sigma
    double mean;  ///< size of the mean error
    double meanBound;
};

/// The outcome of one calculation.
struct SampleOutcome {
    QString title;
    QString line; ///< result line in the window
    QList<TargetCheck> target;
    QList<MapCheck> map;
    QString resultPath; ///< path of the result map; empty without one
    bool written = true;

    bool isGood() const;

    void print() const;
};
