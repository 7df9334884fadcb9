// Reference implementation of the map calculation of the four-point family. For every
// pixel it looks up the references and parses their valences. It allocates matrices for every
// linear system and appends the pixels of the result one at a time. The fast path must return the
// same bits.
#pragma once

#include "analysis/MapCalculation.h"
#include "data/A2DData.h"

#include <QList>
#include <QString>

namespace tests
{

struct PlainReference {
    bool used = false;
    bool valid = false;
    QString valence;
};

struct PlainPoint {
    const A2DData* map = nullptr;
    bool vPoint = false;
    QString energy;
    QString r1;
    QString r2;
};

struct PlainHistogram {
    double minV = 0.0;
    double step = 0.0;
    QList<int> bins;
    int total = 0;
    int under = 0;
    int over = 0;
};

struct PlainStack {
    QList<PlainReference> references;
    QList<PlainPoint> points; ///< only rows in use
    double r = 0.0;
};

/// Counts one value in a histogram. The bin index is (value - minV) / step, truncated
/// towards zero. If the index is NaN or does not fit in an int, the value counts as under.
void plainCount(PlainHistogram& histogram, double value);

/// Converts the inputs to the struct of the fast path. Uses the first two references, even
/// if they are not in use.
analysis::MapStack mapStackOf(const PlainStack& plain);

double plainPixelMut(const A2DData& map, int x, int y);

double plainLeastSquareFourPoints(double TV, double R1V, double R2V, double EV,
                                  const QList<double>& T, const QList<double>& R1,
                                  const QList<double>& R2, const QList<double>& E, double r,
                                  double* tts);

void plainThreePoints(const PlainStack& stack, A2DData& result, PlainHistogram& valence,
                      PlainHistogram& thickness);
void plainExactFourPoints(const PlainStack& stack, A2DData& result, PlainHistogram& valence,
                          PlainHistogram& thickness);
void plainLeastSquare(const PlainStack& stack, A2DData& result, PlainHistogram& valence,
                      PlainHistogram& thickness);

} // namespace tests
