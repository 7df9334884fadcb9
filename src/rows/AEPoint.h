// One energy point of the measurement: its map, its energy, its mut fields.
#pragma once

#include "data/A2DData.h"
#include "ui_AEPoint.h"

#include <QFrame>
#include <QList>

/// An energy-point row. It is its own map (A2DData), and its widgets hold the
/// numbers of the point; the panel rehomes these widgets into its grid.
class AEPoint : public QFrame, public A2DData, private Ui_AEPoint
{
    Q_OBJECT

public:
    explicit AEPoint(QWidget* parent = nullptr);

    /// The row's energy (eV) and the mut of references @p i and @p j, from the
    /// texts; what is no number reads as 0, and so does an index outside the
    /// four references.
    void energyAndMuts(int i, int j, double* e, double* mi, double* mj) const;

    using Ui_AEPoint::Energy;
    using Ui_AEPoint::FileSelect;
    using Ui_AEPoint::LCFCB;
    using Ui_AEPoint::Mut1;
    using Ui_AEPoint::Mut2;
    using Ui_AEPoint::Mut3;
    using Ui_AEPoint::Mut4;
    using Ui_AEPoint::MutT;
    using Ui_AEPoint::NumDisp;
    using Ui_AEPoint::ShowMapB;
    using Ui_AEPoint::UseCB;
    using Ui_AEPoint::VPointCB;

    bool loaded = false;         ///< the row holds a map that calculations may use
    bool subBGForRef = false;    ///< copy of the panel's choice; read by nothing
    bool subBGForTarget = false; ///< copy of the panel's choice; read by nothing
    QList<QLineEdit*> mutEdits;  ///< Mut1 to Mut4

public Q_SLOTS:
    /// Reads a map file of any form; its first bytes say which.
    ///
    /// An "ENERGY" line of a text map goes to @c Energy and out as newEnergy()
    /// in the middle of the read. A map with a size and rows is @c loaded and
    /// told by newData(). Otherwise the row is not loaded: it keeps its old map
    /// when the file cannot be opened, and what was read in any other case.
    void loadData(QString path);

    /// Appends the pixels of a "2dData" file to the rows, each a ready mut, and
    /// takes its size. The rows of earlier files stay in front, where pixels
    /// are found by position. @c loaded is true afterwards and newData() goes
    /// out, also for a file that is none: its map is 0 by 0.
    void load2dProcData(QString path);

    /// Tells the number in @c Energy, changed or not; words count as 0.
    void inNewEnergy();

Q_SIGNALS:
    /// The user went to another directory with the file row.
    void newDir(QString dir);
    /// The row's energy (eV) was entered or read from a file.
    void newEnergy(double e);
    /// A map was loaded.
    void newData();
    /// One of the three check boxes was clicked.
    void changedCB();
};
