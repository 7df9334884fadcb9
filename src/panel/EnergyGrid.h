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

/// Places the widgets of the energy rows in a grid: two grid rows of headings, one grid row
/// for each energy row, and below them the fields that apply to all energy rows. The widgets
/// become children of the grid's widget; the frames of the energy rows are never shown.
class EnergyGrid
{
    Q_DECLARE_TR_FUNCTIONS(FourPs) // the headings are translated in the context of the panel

public:
    /// @param grid  an empty grid; must outlive this object
    explicit EnergyGrid(QGridLayout* grid);

    /// Places the headings in the two top rows of the grid.
    void placeHeadings();

    /// Places a number label and the widgets of @p row in one row of the grid, below the
    /// headings.
    /// @param index  index of the energy row, from 0; the label shows index + 1
    void placeRow(const AEPoint& row, int index);

    /// Places the field for a list of energies and the file row for several maps in one row
    /// of the grid, in the columns of the energies and of the map files.
    /// @param index  number of energy rows that placeRow() has placed above
    void placeFieldsForAll(QLineEdit* energies, AFileSelect* files, int index);

private:
    void placeHeading(const QString& text, int line, int column, int lines,
                      Qt::Alignment alignment = Qt::AlignCenter);

    QGridLayout* m_grid;
};

} // namespace panel
