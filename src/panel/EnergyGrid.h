// The grid of the energy rows.
#pragma once

#include <QCoreApplication>
#include <QList>

class AEPoint;
class AFileSelect;
class QGridLayout;
class QLineEdit;

namespace panel
{

/// Places the widgets of the energy rows in a grid: two lines of headings, a line for
/// each row, and below them the fields that serve all rows. The grid's widget takes
/// them over, while the frames of the rows stay empty and are never shown.
class EnergyGrid
{
    Q_DECLARE_TR_FUNCTIONS(FourPs) // the headings belong to the panel's texts

public:
    /// @param grid  empty; must outlive this
    explicit EnergyGrid(QGridLayout* grid);

    /// Places the two lines of headings.
    void placeHeadings();

    /// Places a row's widgets in the line of row @p index, from 0.
    void placeRow(const AEPoint& row, int index);

    /// Places the list of energies and the file row for several maps in the line of
    /// row @p index, in the columns of what they fill.
    void placeFieldsForAll(QLineEdit* energies, AFileSelect* files, int index);

private:
    void placeHeading(const QString& text, int line, int column, int lines,
                      Qt::Alignment alignment = Qt::AlignCenter);

    QGridLayout* m_grid;
};

} // namespace panel
