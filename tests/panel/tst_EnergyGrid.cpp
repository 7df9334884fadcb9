// Tests of the layout of the energy rows in a grid, without the panel.

#include "panel/EnergyGrid.h"
#include "rows/AEPoint.h"

#include <QGridLayout>
#include <QLabel>
#include <QTest>

class tst_EnergyGrid : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void headingsHaveTwoLines();
    void rowWidgetsArePlacedBelowTheHeadings();
    void pathFieldFillsItsColumnAndOtherWidgetsAreCentred();
    void fieldsForAllRowsAreBelowTheirColumns();
    void widgetsOfARowMoveIntoTheGridsParent();
};

namespace
{

QString textAt(const QGridLayout& grid, int line, int column)
{
    const QLayoutItem* item = grid.itemAtPosition(line, column);
    const auto* label = item ? qobject_cast<QLabel*>(item->widget()) : nullptr;
    return label ? label->text() : QString();
}

} // namespace

void tst_EnergyGrid::headingsHaveTwoLines()
{
    QWidget frame;
    QGridLayout grid(&frame);
    panel::EnergyGrid(&grid).placeHeadings();
    const QStringList upper{
        "No.", "Use", "Non", "LCF", "Eng.", "mut", "mut", "mut", "mut", "mut", "Select 2D Map Data",
        "Show"};
    const QStringList lower{"No.",
                            "Use",
                            "Equiv.",
                            "F.P.",
                            "[eV]",
                            "Ref.1",
                            "Ref.2",
                            "Ref.3",
                            "Ref.4",
                            "Target",
                            "Select 2D Map Data",
                            "Map"};
    for (int column = 0; column < upper.size(); ++column) {
        QCOMPARE(textAt(grid, 0, column), upper.at(column));
        QCOMPARE(textAt(grid, 1, column), lower.at(column));
    }
    QCOMPARE(grid.columnCount(), upper.size());
}

void tst_EnergyGrid::rowWidgetsArePlacedBelowTheHeadings()
{
    QWidget frame;
    QGridLayout grid(&frame);
    const AEPoint row;
    panel::EnergyGrid(&grid).placeRow(row, 3);
    QCOMPARE(textAt(grid, 5, 0), QStringLiteral(" 4"));
    const QList<QWidget*> widgets{row.UseCB, row.VPointCB,   row.LCFCB,   row.Energy,
                                  row.Mut1,  row.Mut2,       row.Mut3,    row.Mut4,
                                  row.MutT,  row.FileSelect, row.ShowMapB};
    for (int i = 0; i < widgets.size(); ++i) {
        QVERIFY(grid.itemAtPosition(5, i + 1));
        QCOMPARE(grid.itemAtPosition(5, i + 1)->widget(), widgets.at(i));
    }
}

void tst_EnergyGrid::pathFieldFillsItsColumnAndOtherWidgetsAreCentred()
{
    QWidget frame;
    QGridLayout grid(&frame);
    const AEPoint row;
    panel::EnergyGrid(&grid).placeRow(row, 0);
    for (int i = 0; i < grid.count(); ++i) {
        const QLayoutItem* item = grid.itemAt(i);
        const bool isPath = item->widget() == row.FileSelect;
        QCOMPARE(item->alignment(), isPath ? Qt::Alignment(Qt::AlignVCenter) : Qt::AlignCenter);
    }
}

void tst_EnergyGrid::fieldsForAllRowsAreBelowTheirColumns()
{
    QWidget frame;
    QGridLayout grid(&frame);
    const AEPoint row;
    QLineEdit energies;
    AFileSelect files;
    panel::EnergyGrid layout(&grid);
    layout.placeRow(row, 0);
    layout.placeFieldsForAll(&energies, &files, 1);
    int line = 0;
    int column = 0;
    int lines = 0;
    int columns = 0;
    int columnOfRow = 0;
    grid.getItemPosition(grid.indexOf(&energies), &line, &column, &lines, &columns);
    grid.getItemPosition(grid.indexOf(row.Energy), &lines, &columnOfRow, &lines, &columns);
    QCOMPARE(line, 3);
    QCOMPARE(column, columnOfRow);
    grid.getItemPosition(grid.indexOf(&files), &line, &column, &lines, &columns);
    grid.getItemPosition(grid.indexOf(row.FileSelect), &lines, &columnOfRow, &lines, &columns);
    QCOMPARE(line, 3);
    QCOMPARE(column, columnOfRow);
    energies.setParent(nullptr);
    files.setParent(nullptr);
}

void tst_EnergyGrid::widgetsOfARowMoveIntoTheGridsParent()
{
    QWidget frame;
    QGridLayout grid(&frame);
    const AEPoint row;
    panel::EnergyGrid(&grid).placeRow(row, 0);
    QVERIFY(frame.isAncestorOf(row.Energy));
    QVERIFY(frame.isAncestorOf(row.ShowMapB));
    QVERIFY(!frame.isAncestorOf(&row));
}

QTEST_MAIN(tst_EnergyGrid)
#include "tst_EnergyGrid.moc"
