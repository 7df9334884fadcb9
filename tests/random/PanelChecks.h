// What must hold in the windows of a panel whatever its user does.
#pragma once

#include "random/ExpectedResult.h"
#include "random/KeptCopies.h"
#include "random/WrittenFiles.h"

#include <QObject>
#include <QSet>
#include <QStringList>

class AMutE;
class DispMBase;
class FourPs;
class QLineEdit;

namespace tests
{

/// Watches a panel. Calculations and writes are checked as each of them ends, since
/// an action may change more afterwards; the rest after each action.
class PanelChecks : public QObject
{
public:
    /// Follows the calculations of @p panel from now on.
    explicit PanelChecks(FourPs& panel);

    /// Call it before each action, with its number.
    void beforeAction(int action);

    /// What is wrong after an action; empty when nothing is. Pictures named in
    /// @p leftBehind may be older than what they show.
    QStringList afterAction(const QStringList& leftBehind);

    /// How many calculations ended so far, and how many of them gave a result.
    int calculations() const { return m_calculations; }
    int results() const { return m_results; }

private:
    void followCalculations();
    void followLimits();
    void calculationEnded();
    void writeEnded();
    void checkResult();
    void checkLimits(const DispMBase* map);
    void checkPictures(const QStringList& leftBehind);
    void complain(const QString& text);

    FourPs& m_panel;
    MapResult m_result; ///< that the panel has to have
    WrittenFiles m_written;
    KeptCopies m_copies;
    QList<AMutE*> m_spectra;           ///< for display, before the action
    QSet<const QLineEdit*> m_inTyping; ///< limits with a text that is not confirmed
    QStringList m_complaints;
    int m_calculations = 0;
    int m_results = 0;
};

} // namespace tests
