// The checks that a panel and its windows must pass after every action.
#pragma once

#include "random/ExpectedResult.h"
#include "random/ResultCopies.h"
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

/// Checks a panel. Results of calculations and written files are checked as soon as the
/// calculation or the write ends, because the same action can then change the panel
/// further. All other checks run after the action.
class PanelChecks : public QObject
{
public:
    /// Connects to the signals of @p panel that start calculations and writes, and to the
    /// limit fields of its maps. @p panel must outlive this object.
    explicit PanelChecks(FourPs& panel);

    /// Call this before each action, with its number.
    void beforeAction(int action);

    /// Runs the checks after an action and returns all errors of this action. Pictures
    /// named in @p stalePictures are allowed to be outdated.
    QStringList afterAction(const QStringList& stalePictures);

    /// The number of map calculations so far, including the refused ones.
    int calculations() const { return m_calculations; }
    /// The number of map calculations so far that produced a result.
    int results() const { return m_results; }

private:
    void followCalculations();
    void followLimits();
    void calculationEnded();
    void writeEnded();
    void checkResult();
    void checkLimits(const DispMBase* map);
    void checkPictures(const QStringList& stalePictures);
    void addError(const QString& text);

    FourPs& m_panel;
    MapResult m_result; ///< the result that the panel must have
    WrittenFiles m_written;
    ResultCopies m_copies;
    QList<AMutE*> m_spectra;           ///< displayed spectra before the action
    QSet<const QLineEdit*> m_inTyping; ///< limits with typed text that is not yet confirmed
    QStringList m_errors;
    int m_calculations = 0;
    int m_results = 0;
};

} // namespace tests
