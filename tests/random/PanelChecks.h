// Checks of a panel's windows that must hold after every action.
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

/// Checks a panel. Calculations and writes are checked immediately when each one ends,
/// because an action may change more afterwards; everything else after the action.
class PanelChecks : public QObject
{
public:
    /// Connects to the signals of @p panel that start calculations.
    explicit PanelChecks(FourPs& panel);

    /// Call this before each action, with its number.
    void beforeAction(int action);

    /// Returns the errors found after an action. Pictures named in @p stalePictures may
    /// be outdated.
    QStringList afterAction(const QStringList& stalePictures);

    /// The number of calculations so far, and how many of them gave a result.
    int calculations() const { return m_calculations; }
    int results() const { return m_results; }

private:
    void followCalculations();
    void followLimits();
    void calculationEnded();
    void writeEnded();
    void checkResult();
    void checkLimits(const DispMBase* map);
    void checkPictures(const QStringList& stalePictures);
    void complain(const QString& text);

    FourPs& m_panel;
    MapResult m_result; ///< expected result of the panel
    WrittenFiles m_written;
    ResultCopies m_copies;
    QList<AMutE*> m_spectra;           ///< spectra for display before the action
    QSet<const QLineEdit*> m_inTyping; ///< limits with typed text that is not confirmed yet
    QStringList m_complaints;
    int m_calculations = 0;
    int m_results = 0;
};

} // namespace tests
