// What must hold in the windows of a panel whatever its user does.
#pragma once

#include "random/ExpectedResult.h"
#include "random/WrittenFiles.h"

#include <QObject>
#include <QSet>
#include <QStringList>

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

    /// Call it before each action.
    void beforeAction() { m_written.forget(); }

    /// What is wrong after an action; empty when nothing is. Pictures named in
    /// @p leftBehind may be older than what they show.
    QStringList afterAction(const QStringList& leftBehind);

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
    QSet<const QLineEdit*> m_inTyping; ///< limits with a text that is not confirmed
    QStringList m_complaints;
};

} // namespace tests
