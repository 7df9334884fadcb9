// Results beside what the sample is made of.
#pragma once

#include <QList>
#include <QString>

namespace nickel
{
class ErrorStatistics;
}

/// One number of a target's result.
struct TargetCheck {
    QString what;
    double mixed = 0.0;    ///< what went into the target
    double expected = 0.0; ///< what the method makes of it without noise
    double result = 0.0;
    double bound = 0.0; ///< how far apart the last two may be

    double off() const;

    /// False also for NaN.
    bool isGood() const { return off() <= bound; }
};

/// One quantity of a result map, over all pixels.
struct MapCheck {
    static constexpr double rmsBound = 1.15;  // in expected standard deviations
    static constexpr double worstBound = 6.0; // in expected standard deviations

    /// @param commonSigma  standard deviation of an error that all pixels share
    MapCheck(const QString& quantity, const nickel::ErrorStatistics& statistics,
             double commonSigma);

    /// False also for NaN.
    bool isGood() const;

    QString what;
    double rms;   ///< of error / expected deviation
    double worst; ///< largest of them
    double mean;  ///< size of the mean error
    double meanBound;
};

/// What came of one calculation.
struct SampleOutcome {
    QString title;
    QString line; ///< the result line of the window
    QList<TargetCheck> target;
    QList<MapCheck> map;
    QString resultPath; ///< where the result map was to be written; empty without one
    bool written = true;

    bool isGood() const;

    /// Prints the outcome as a table.
    void print() const;
};
