// The texts of results and messages.
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

/// Makes the texts of results and messages in the language of the user interface. They are
/// translated in the context of the panel.
class Wording
{
    Q_DECLARE_TR_FUNCTIONS(FourPs)

public:
    /// Returns the sentence that explains why a calculation was refused.
    static QString of(const analysis::Message& refusal);

    /// Returns the result line of a target calculation: with 6 significant digits for the
    /// four-point methods, with three decimals for the non-equivalent method.
    static QString of(const analysis::TargetResult& result);

    /// Returns the result line of a linear combination fit.
    static QString of(const analysis::LinearFit& fit);

    /// Returns the message for a file that cannot be written.
    static QString cannotOpen(const QString& path);
};

} // namespace panel
