// Tests of the message box: its text, its cursor, its scroll position, and the lines that
// recalculations write.

#include "rows/AXafsFileSelect.h"
#include "support/PictureTools.h"
#include "support/SharedPanel.h"

#include <QScrollBar>
#include <QtTest>

#include <functional>

using namespace tests;

Q_DECLARE_METATYPE(std::function<void(FourPs&)>)

class tst_FourPsMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void messageBoxKeepsEveryLine();
    void newMessageIsScrolledIntoView_data();
    void newMessageIsScrolledIntoView();
    void messageBoxLooksAsIfLinesWereAddedOneByOne();
    void recalculationWritesTheLinesOfItsThreeCalculations();
    void linesOfARecalculationAreInsertedTogether_data();
    void linesOfARecalculationAreInsertedTogether();
    void messageBoxIsUpToDateDuringARecalculation();
    void recalculationWithoutMessagesKeepsTheCursor();
    void messageAfterARecalculationIsWrittenImmediately();

private:
    QTextEdit* box() const { return m_panel->ui.Message; }
    bool showsItsEnd() const;

    const SharedPanel m_panel;
};

void tst_FourPsMessages::init()
{
    resetPanel(*m_panel);
    clearRows(*m_panel);
    useReferences(*m_panel, {0, 1, 2, 3});
    m_panel->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_panel.get()));
}

/// Whether the cursor is after the last line, nothing is selected, and the end of the text
/// is visible.
bool tst_FourPsMessages::showsItsEnd() const
{
    const QTextCursor cursor = box()->textCursor();
    return cursor.atEnd() && !cursor.hasSelection() &&
           box()->viewport()->rect().contains(box()->cursorRect());
}

void tst_FourPsMessages::messageBoxKeepsEveryLine()
{
    QString wanted;
    for (int i = 0; i < 5000; ++i) {
        m_panel->message(QStringLiteral("  line \n %1 ").arg(i));
        wanted += QStringLiteral("line %1\n").arg(i);
    }
    QCOMPARE(box()->toPlainText(), wanted);
}

void tst_FourPsMessages::newMessageIsScrolledIntoView_data()
{
    QTest::addColumn<bool>("isRecalculation");
    QTest::newRow("single line") << false;
    QTest::newRow("recalculation") << true;
}

// The message box scrolls to its end. Its earlier scroll position and selection do not matter.
void tst_FourPsMessages::newMessageIsScrolledIntoView()
{
    QFETCH(bool, isRecalculation);
    for (int i = 0; i < 200; ++i) {
        m_panel->message(QString::number(i));
    }
    QVERIFY(showsItsEnd());
    const auto write = [&] {
        if (isRecalculation) {
            m_panel->calcBoth();
        } else {
            m_panel->message(QStringLiteral("new"));
        }
    };
    box()->moveCursor(QTextCursor::Start);
    QVERIFY(!showsItsEnd());
    write();
    QVERIFY(showsItsEnd());
    box()->selectAll();
    write();
    QVERIFY(showsItsEnd());
    box()->verticalScrollBar()->setValue(0);
    write();
    QVERIFY(showsItsEnd());
    QCOMPARE(messages(*m_panel).first(), QStringLiteral("0"));
}

// Compares the panel's message box after recalculations with a separate text box to which
// every line is added individually.
void tst_FourPsMessages::messageBoxLooksAsIfLinesWereAddedOneByOne()
{
    for (int i = 0; i < 4; ++i) {
        makeReferenceValid(*m_panel, i);
    }
    QTextEdit plain;
    plain.setReadOnly(true);
    plain.setPalette(box()->palette());
    plain.setStyleSheet(box()->styleSheet());
    plain.setFixedSize(box()->size());
    plain.show();
    QVERIFY(QTest::qWaitForWindowExposed(&plain));
    for (int i = 0; i < 30; ++i) {
        m_panel->setEdge();
        const QStringList lines = messages(*m_panel);
        const qsizetype before = plain.document()->blockCount() - 1;
        QVERIFY(lines.size() >= before + 4);
        for (const QString& line : lines.mid(before)) {
            plain.moveCursor(QTextCursor::End);
            plain.insertPlainText(line + '\n');
            plain.moveCursor(QTextCursor::End);
        }
        QCoreApplication::processEvents();
        QCOMPARE(box()->toPlainText(), plain.toPlainText());
        QVERIFY(isSamePicture(box()->grab().toImage(), plain.grab().toImage()));
    }
}

void tst_FourPsMessages::recalculationWritesTheLinesOfItsThreeCalculations()
{
    m_panel->calcMap();
    m_panel->calcTarget();
    m_panel->lcf();
    const QStringList parts = messages(*m_panel);
    QVERIFY(parts.size() > 2);
    clearMessages(*m_panel);
    m_panel->calcBoth();
    QCOMPARE(messages(*m_panel), parts);
}

void tst_FourPsMessages::linesOfARecalculationAreInsertedTogether_data()
{
    QTest::addColumn<std::function<void(FourPs&)>>("recalculation");
    const auto add = [](const char* name, const std::function<void(FourPs&)>& recalculation) {
        QTest::newRow(name) << recalculation;
    };
    add("all calculations", [](FourPs& panel) { panel.calcBoth(); });
    add("new edge", [](FourPs& panel) { panel.setEdge(); });
    add("background line of the references",
        [](FourPs& panel) { panel.changedSubBGTypeForRef(false); });
    add("background line of the target",
        [](FourPs& panel) { panel.changedSubBGTypeForTarget(false); });
    add("new file",
        [](FourPs& panel) { Q_EMIT panel.XafsFiles.first()->newFilePath(QStringLiteral("a")); });
}

void tst_FourPsMessages::linesOfARecalculationAreInsertedTogether()
{
    QFETCH(std::function<void(FourPs&)>, recalculation);
    for (int i = 0; i < 4; ++i) {
        makeReferenceValid(*m_panel, i);
    }
    clearMessages(*m_panel);
    const QSignalSpy changes(box()->document(), &QTextDocument::contentsChanged);
    recalculation(*m_panel);
    QVERIFY(messages(*m_panel).size() >= 2);
    QCOMPARE(changes.size(), 1);
    QVERIFY(showsItsEnd());
}

void tst_FourPsMessages::messageBoxIsUpToDateDuringARecalculation()
{
    prepareThreePoints(*m_panel);
    m_panel->calcTarget();
    const QString line = messages(*m_panel).last();
    m_panel->ui.CalcRes->clear();
    clearMessages(*m_panel);
    QStringList seen;
    const QObject context;
    connect(m_panel->ui.CalcRes, &QLineEdit::textChanged, &context,
            [&] { seen = messages(*m_panel); });
    m_panel->calcBoth();
    // With the three-point method, a recalculation writes the lines of the map, sets the result
    // field of the target, and then writes the line of the target. So when the field changes, the
    // message box contains only the lines of the map.
    QVERIFY(!seen.isEmpty());
    QCOMPARE(messages(*m_panel).mid(0, seen.size()), seen);
    QVERIFY(messages(*m_panel).contains(line));
}

void tst_FourPsMessages::recalculationWithoutMessagesKeepsTheCursor()
{
    for (int i = 0; i < 50; ++i) {
        m_panel->message(QString::number(i));
    }
    box()->moveCursor(QTextCursor::Start);
    box()->moveCursor(QTextCursor::NextWord, QTextCursor::KeepAnchor);
    const QTextCursor before = box()->textCursor();
    const int top = box()->verticalScrollBar()->value();
    m_panel->setEdge(); // no reference has a spectrum
    QCOMPARE(box()->textCursor().position(), before.position());
    QCOMPARE(box()->textCursor().anchor(), before.anchor());
    QCOMPARE(box()->verticalScrollBar()->value(), top);
    QCOMPARE(messages(*m_panel).size(), 50);
}

void tst_FourPsMessages::messageAfterARecalculationIsWrittenImmediately()
{
    m_panel->calcBoth();
    const QSignalSpy changes(box()->document(), &QTextDocument::contentsChanged);
    m_panel->message(QStringLiteral("one"));
    QCOMPARE(changes.size(), 1);
    QVERIFY(showsItsEnd());
    m_panel->message(QStringLiteral("two"));
    QCOMPARE(changes.size(), 2);
}

QTEST_MAIN(tst_FourPsMessages)
#include "tst_FourPsMessages.moc"
