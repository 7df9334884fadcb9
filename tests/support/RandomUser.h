// A simulated user who performs random actions in the windows of a panel.
#pragma once

#include "panel/FourPs.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <random>

namespace tests
{

/// Performs mouse, keyboard, file and drop actions on a panel with visible windows. The
/// same seed produces the same random numbers on every platform.
class RandomUser
{
public:
    /// Writes small files and loads them into the first three references, the target and the
    /// first four energy rows, so that every calculation has its inputs before the first
    /// action.
    RandomUser(FourPs& panel, unsigned seed);

    /// Performs one action and returns its description.
    QString act();

    /// The title of the plot or map whose picture can be outdated after the latest action,
    /// because the program does not repaint it at once, on purpose. Empty if all pictures are
    /// current.
    QString staleSurface() const { return m_staleSurface; }

private:
    struct Kind {
        QString name;
        int weight;
        std::function<QString()> act;
    };

    void makeFiles();
    void makeKinds();
    void makeMouseKinds();

    int upTo(int count);
    template <class List>
    auto oneOf(const List& list)
    {
        return list.at(upTo(static_cast<int>(list.size())));
    }

    QString click(QAbstractButton* button);
    QString type(QLineEdit* edit, const QStringList& texts);
    QString load();
    QString drop();
    QString loadEverything();
    QString turnTheWheel();
    QString dragInPlot();
    QString doubleClickInPlot();
    void markThicknessAsStale(const DispArea* released);
    QString pressInLegend();
    QString dragLine();
    QString dragBar();
    QString doubleClickBar();
    QString popOrDock();
    QList<DispArea*> surfaces() const;
    QList<DispMBase*> maps() const;
    QPointF positionIn(const QWidget* widget);

    FourPs& m_panel;
    std::mt19937 m_random;
    QTemporaryDir m_dir;
    QStringList m_spectra;
    QStringList m_maps;
    QStringList m_invalidFiles;
    QList<Kind> m_kinds;
    int m_weight = 0;
    QString m_staleSurface;
};

} // namespace tests
