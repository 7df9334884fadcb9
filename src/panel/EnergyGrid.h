// The grid layout of the energy rows.
#pragma once

#include <QCoreApplication>
#include <QList>

class AEPoint;
class AFileSelect;
class QGridLayout;
class QLineEdit;

namespace panel
{

/// Places the widgets of the energy rows in a grid: two lines of headings, one line for
/// each row, and below them the fields that apply to all rows. The widgets become
/// children of the grid's widget; the frames of the rows are then empty and never shown.
class EnergyGrid
{
    Q_DECLARE_TR_FUNCTIONS(FourPs) // the headings are translated in the context of the panel

public:
    /// @param grid  an empty grid; must outlive this object
    explicit EnergyGrid(QGridLayout* grid);

    /// Places the two lines of headings.
    void placeHeadings();

    /// Places the widgets of @p row in the line of row number @p index (from 0).
    void placeRow(const AEPoint& row, int index);

    /// Places the list of energies and the file row for several maps in the line of row
    /// number @p index, in the columns of the energies and of the map files.
    void placeFieldsForAll(QLineEdit* energies, AFileSelect* files, int index);

private:
    void placeHeading(const QString& text, int line, int column, int lines,
                      Qt::Alignment alignment = Qt::AlignCenter);

    QGridLayout* m_grid;
};

} // namespace panel
