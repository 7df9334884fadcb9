// The words of refusals and results.
#pragma once

#include <QCoreApplication>

namespace analysis
{
struct LinearFit;
struct Message;
struct TargetResult;
} // namespace analysis

namespace panel
{

/// What the user reads of a calculation, in the language of the program. The
/// translations are those of the panel.
class Wording
{
    Q_DECLARE_TR_FUNCTIONS(FourPs)

public:
    /// The sentence of a refusal, with its numbers.
    static QString of(const analysis::Message& refusal);

    /// The line of a target's result: to 6 digits by the four-points family, to
    /// three decimals by the non-equivalent method.
    static QString of(const analysis::TargetResult& result);

    /// The line of a linear combination fit.
    static QString of(const analysis::LinearFit& fit);

    /// What is said of a file that cannot be written.
    static QString cannotOpen(const QString& path);
};

} // namespace panel
