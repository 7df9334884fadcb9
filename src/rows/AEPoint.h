// The row of an energy point: its map and its widgets.
#pragma once

#include "data/A2DData.h"
#include "ui_AEPoint.h"

#include <QFrame>
#include <QList>

/// The row of an energy point of the measurement. It inherits its map (A2DData), and
/// its widgets contain the numbers of the point. The panel moves most of these widgets
/// into its grid.
class AEPoint : public QFrame, public A2DData, private Ui_AEPoint
{
    Q_OBJECT

public:
    explicit AEPoint(QWidget* parent = nullptr);

    /// Reads the energy of the row (eV) and the mut of the references @p i and @p j from
    /// the fields. An unparsable number reads as 0. For an index outside 0 to 3 the mut is
    /// 0.
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

    bool loaded = false; ///< whether the row has a map for calculations
    /// Whether the post-edge line is subtracted from the references. Set, but never read.
    bool subBGForRef = false;
    /// Whether the post-edge line is subtracted from the target. Set, but never read.
    bool subBGForTarget = false;
    QList<QLineEdit*> mutEdits; ///< Mut1 to Mut4

public Q_SLOTS:
    /// Reads the map file @p path. A "2dData" file, recognised by its first bytes, is read
    /// by load2dProcData(); any other file is read as a text map.
    ///
    /// The energy of an "ENERGY" line in a text map is written to @c Energy and
    /// emitted by newEnergy() while the file is still being read. If the text map has a
    /// size and pixels, @c loaded becomes true and newData() is emitted. Otherwise
    /// @c loaded becomes false. The row then keeps its old map if the file cannot be
    /// opened, has no pixels if data::readMapText() refuses the file, and contains the
    /// pixels read so far in all other cases.
    void loadData(QString path);

    /// Appends the pixels of a "2dData" file, whose values are mut, and sets the size of
    /// the map to the size in the file. Pixels that the row already has remain in front of
    /// the new ones, so the map starts with the earlier pixels. Then sets @c loaded to true and
    /// emits newData(), even if reading fails; the map is then 0 by 0.
    void load2dProcData(QString path);

    /// Emits newEnergy() with the number in @c Energy, even if it is unchanged. An
    /// unparsable number counts as 0.
    void inNewEnergy();

Q_SIGNALS:
    /// A file in the directory @p dir was selected, see AFileSelect::newDir().
    void newDir(QString dir);
    /// The energy of the row (eV) was entered or read from a file.
    void newEnergy(double e);
    /// A map was loaded and @c loaded is true, see loadData() and load2dProcData().
    void newData();
    /// One of the three check boxes was clicked.
    void changedCB();
};
