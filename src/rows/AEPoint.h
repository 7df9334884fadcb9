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
    void loadData(QString path);
    void load2dProcData(QString path);
    void inNewEnergy();

Q_SIGNALS:
    void newDir(QString dir);
    /// The row's energy (eV) was entered or read from a file.
    void newEnergy(double e);
    void newData();
    /// One of the three check boxes was clicked.
    void changedCB();
};
