// Tests of MarkLine, a marker line, and of MarkLines, a set of marker lines.

#include "support/MarkedLines.h"
#include "support/MemberOrder.h"

#include <QPointer>
#include <QTest>

using tests::horizontal;
using tests::MarkedLines;
using tests::vertical;

class tst_MarkLines : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lineUsesTheGivenEdit();
    void lineWithoutEditCreatesAHiddenEdit();
    void newLineIsAbsoluteAndHasNoBase();
    void lineIsDestroyedWithItsParent();

    void newSetHasNoLinesAndNoSelection();
    void addAppendsTheLine();
    void clearRemovesTheLinesWithoutDeletingThem();
    void clearResetsTheSelection();

    void valueIsTheNumberInTheEditOrZeroIfUnparsable_data();
    void valueIsTheNumberInTheEditOrZeroIfUnparsable();
    void typingChangesTheValueOfTheLine();
    void relativeValueIsAddedToItsBase_data();
    void relativeValueIsAddedToItsBase();
    void baseOfARelativeBaseIsNotAddedToTheValue();
    void baseOfAbsoluteLineIsIgnored();
    void baseCanBeALaterLineOfAnotherDirection();
    void movingAndNewPosAreTheOnlySignals();
};

void tst_MarkLines::lineUsesTheGivenEdit()
{
    QLineEdit edit("8333");
    const MarkLine line(&edit, horizontal);
    QCOMPARE(line.edit, &edit);
    QCOMPARE(line.direction, horizontal);
    QCOMPARE(edit.text(), "8333");
}

void tst_MarkLines::lineWithoutEditCreatesAHiddenEdit()
{
    const MarkLine line(nullptr, vertical);
    const std::unique_ptr<QLineEdit> edit(line.edit);
    QVERIFY(edit);
    QVERIFY(!edit->parent());
    QVERIFY(!edit->isVisible());
    QCOMPARE(edit->text(), QString());
}

void tst_MarkLines::newLineIsAbsoluteAndHasNoBase()
{
    QLineEdit edit;
    const MarkLine line(&edit, vertical);
    QCOMPARE(line.direction, vertical);
    QVERIFY(!line.relative);
    QCOMPARE(line.baseIndex, -1);
}

void tst_MarkLines::lineIsDestroyedWithItsParent()
{
    QLineEdit edit;
    QPointer<MarkLine> line;
    {
        QObject parent;
        line = new MarkLine(&edit, vertical, &parent);
        QCOMPARE(line->parent(), &parent);
    }
    QVERIFY(!line);
    QCOMPARE(edit.text(), QString()); // the line does not own the edit
}

void tst_MarkLines::newSetHasNoLinesAndNoSelection()
{
    const MarkLines set;
    QVERIFY(set.lines.isEmpty());
    QVERIFY(!set.selected);
    QCOMPARE(set.selectedIndex, -1);
}

void tst_MarkLines::addAppendsTheLine()
{
    QLineEdit edit;
    MarkLine first(&edit, vertical);
    MarkLine second(&edit, vertical);
    MarkLines set;
    set.add(&first);
    set.add(&second);
    QCOMPARE(set.lines, (QList<MarkLine*>{&first, &second}));
}

void tst_MarkLines::clearRemovesTheLinesWithoutDeletingThem()
{
    QLineEdit edit;
    const QPointer<MarkLine> line = new MarkLine(&edit, vertical, this);
    MarkLines set;
    set.add(line);
    set.clear();
    QVERIFY(set.lines.isEmpty());
    QVERIFY(line);
    delete line;
}

void tst_MarkLines::clearResetsTheSelection()
{
    MarkedLines lines;
    lines.add("1");
    lines.hold(0);
    lines.set.clear();
    QVERIFY(!lines.set.selected);
    QCOMPARE(lines.set.selectedIndex, -1);
}

void tst_MarkLines::valueIsTheNumberInTheEditOrZeroIfUnparsable_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("number") << "8333.25" << 8333.25;
    QTest::newRow("exponent") << "-1.5e3" << -1500.0;
    QTest::newRow("letters are 0") << "edge" << 0.0;
    QTest::newRow("number with a unit is 0") << "8333eV" << 0.0;
    QTest::newRow("empty is 0") << "" << 0.0;
}

void tst_MarkLines::valueIsTheNumberInTheEditOrZeroIfUnparsable()
{
    QFETCH(QString, text);
    QFETCH(double, value);
    MarkedLines lines;
    lines.add(text, vertical);
    lines.add(text, horizontal);
    QCOMPARE(lines.set.value(0), value);
    QCOMPARE(lines.set.value(1), value);
}

void tst_MarkLines::typingChangesTheValueOfTheLine()
{
    MarkedLines lines;
    MarkLine* line = lines.add("10");
    QTest::keyClicks(line->edit, "5");
    QCOMPARE(lines.set.value(0), 105.0);
}

void tst_MarkLines::relativeValueIsAddedToItsBase_data()
{
    QTest::addColumn<QString>("base");
    QTest::addColumn<QString>("offset");
    QTest::addColumn<double>("value");
    const auto row = [](const char* name, const char* base, const char* offset, double value) {
        QTest::newRow(name) << base << offset << value;
    };
    row("above the base", "8333", "50", 8383.0);
    row("below the base", "8333", "-30", 8303.0);
    row("unparsable base counts as 0", "edge", "50", 50.0);
    row("unparsable offset counts as 0", "8333", "far", 8333.0);
    row("both unparsable", "edge", "far", 0.0);
}

void tst_MarkLines::relativeValueIsAddedToItsBase()
{
    QFETCH(QString, base);
    QFETCH(QString, offset);
    MarkedLines lines;
    lines.add(base);
    lines.add(offset, vertical, 0);
    QTEST(lines.set.value(1), "value");
}

// Line 2 has the base line 1, which has the base line 0. The value of line 2 is 7 plus
// the number in the edit of line 1, 20; the 100 of line 0 is not added.
void tst_MarkLines::baseOfARelativeBaseIsNotAddedToTheValue()
{
    MarkedLines lines;
    lines.add("100");
    lines.add("20", vertical, 0);
    lines.add("7", vertical, 1);
    QCOMPARE(lines.set.value(1), 120.0);
    QCOMPARE(lines.set.value(2), 27.0);
}

void tst_MarkLines::baseOfAbsoluteLineIsIgnored()
{
    MarkedLines lines;
    lines.add("100");
    lines.add("20", vertical, 0)->relative = false;
    QCOMPARE(lines.set.value(1), 20.0);
}

void tst_MarkLines::baseCanBeALaterLineOfAnotherDirection()
{
    MarkedLines lines;
    lines.add("20", vertical, 1);
    lines.add("100", horizontal);
    QCOMPARE(lines.set.value(0), 120.0);
}

void tst_MarkLines::movingAndNewPosAreTheOnlySignals()
{
    QCOMPARE(tests::memberNames(MarkLines::staticMetaObject, QMetaMethod::Signal),
             (QStringList{"moving()", "newPos()"}));
}

QTEST_MAIN(tst_MarkLines)
#include "tst_MarkLines.moc"
