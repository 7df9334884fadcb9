#include "analysis/FourPointForms.h"

#include "analysis/FixedSolver.h"

#include <algorithm>

namespace analysis
{

LeastSquarePlane::LeastSquarePlane(const QList<double>& R1, const QList<double>& R2,
                                   const QList<double>& E)
{
    const qsizetype count = std::min({R1.size(), R2.size(), E.size()});
    m_rows.reserve(count);
    for (qsizetype i = 0; i < count; ++i) {
        const Row row{E.at(i), R1.at(i) + R2.at(i)};
        m_n += 1.0;
        m_sE += row.E;
        m_sEE += row.E * row.E;
        m_sS += row.S;
        m_sSE += row.S * row.E;
        m_rows.append(row);
    }
}

std::array<double, 3> LeastSquarePlane::coefficients(const double* T) const
{
    double sT = 0.0;
    double sET = 0.0;
    double sTT = 0.0;
    double sST = 0.0;
    for (const Row& row : m_rows) {
        const double t = *T++;
        sT += t;
        sET += row.E * t;
        sTT += t * t;
        sST += row.S * t;
    }
    return solveFixed<3>({{{m_n, m_sE, sT}, {m_sE, m_sEE, sET}, {sT, sET, sTT}}},
                         {m_sS, m_sSE, sST});
}

double leastSquareFourPoints(double TV, double R1V, double R2V, double EV, const QList<double>& T,
                             const QList<double>& R1, const QList<double>& R2,
                             const QList<double>& E, double r, double* tts)
{
    const qsizetype count = std::min({T.size(), R1.size(), R2.size(), E.size()});
    const LeastSquarePlane plane(R1.first(count), R2.first(count), E.first(count));
    const FractionAndThickness result =
        fractionFromPlane(plane.coefficients(T.constData()), TV, {R1V, R2V, EV, r});
    *tts = result.thickness;
    return result.a;
}

} // namespace analysis
