#include "panel/EnergyGrid.h"

#include "analysis/NeqColumns.h"
#include "rows/AEPoint.h"

#include <QGridLayout>
#include <QLabel>

#include <array>
#include <utility>

namespace panel
{

namespace
{

constexpr int headingLines = 2;

enum Column {
    NumberColumn,
    UseColumn,
    NonEquivalentColumn,
    FitColumn,
    EnergyColumn,
    FirstMutColumn,
    TargetColumn = FirstMutColumn + analysis::neq::references,
    MapFileColumn,
    ShowMapColumn
};

} // namespace

EnergyGrid::EnergyGrid(QGridLayout* grid)
    : m_grid(grid)
{
}

void EnergyGrid::placeHeading(const QString& text, int line, int column, int lines,
                              Qt::Alignment alignment)
{
    auto* label = new QLabel(text);
    label->setAlignment(alignment);
    m_grid->addWidget(label, line, column, lines, 1);
}

void EnergyGrid::placeHeadings()
{
    placeHeading(tr("No."), 0, NumberColumn, 2);
    placeHeading(tr("Use"), 0, UseColumn, 2);
    placeHeading(tr("Non"), 0, NonEquivalentColumn, 1);
    placeHeading(tr("Equiv."), 1, NonEquivalentColumn, 1);
    placeHeading(tr("LCF"), 0, FitColumn, 1);
    placeHeading(tr("F.P."), 1, FitColumn, 1);
    placeHeading(tr("Eng."), 0, EnergyColumn, 1);
    placeHeading(tr("[eV]"), 1, EnergyColumn, 1);
    int column = FirstMutColumn;
    for (const QString& spectrum :
         {tr("Ref.1"), tr("Ref.2"), tr("Ref.3"), tr("Ref.4"), tr("Target")}) {
        placeHeading(tr("mut"), 0, column, 1);
        placeHeading(spectrum, 1, column, 1);
        ++column;
    }
    placeHeading(tr("Select 2D Map Data"), 0, MapFileColumn, 2, Qt::AlignLeft | Qt::AlignVCenter);
    placeHeading(tr("Show"), 0, ShowMapColumn, 1);
    placeHeading(tr("Map"), 1, ShowMapColumn, 1);
}

void EnergyGrid::placeRow(const AEPoint& row, int index)
{
    const int line = index + headingLines;
    m_grid->addWidget(new QLabel(tr("%1").arg(index + 1, 2)), line, NumberColumn, Qt::AlignCenter);
    const std::array<std::pair<QWidget*, int>, 11> cells{{
        {row.UseCB, UseColumn},
        {row.VPointCB, NonEquivalentColumn},
        {row.LCFCB, FitColumn},
        {row.Energy, EnergyColumn},
        {row.Mut1, FirstMutColumn},
        {row.Mut2, FirstMutColumn + 1},
        {row.Mut3, FirstMutColumn + 2},
        {row.Mut4, FirstMutColumn + 3},
        {row.MutT, TargetColumn},
        {row.FileSelect, MapFileColumn},
        {row.ShowMapB, ShowMapColumn},
    }};
    for (const auto& [widget, column] : cells) {
        // The file rows use all remaining width; the other widgets are centred.
        const bool path = column == MapFileColumn;
        m_grid->addWidget(widget, line, column, path ? Qt::AlignVCenter : Qt::AlignCenter);
    }
}

void EnergyGrid::placeFieldsForAll(QLineEdit* energies, AFileSelect* files, int index)
{
    const int line = index + headingLines;
    m_grid->addWidget(energies, line, EnergyColumn, Qt::AlignCenter);
    m_grid->addWidget(files, line, MapFileColumn, Qt::AlignVCenter);
}

} // namespace panel
