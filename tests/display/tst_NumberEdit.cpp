// Tests of NumberEdit, a field for one number: the selection after a double click and
// after Enter.

#include "display/NumberEdit.h"

#include <QHBoxLayout>
#include <QtTest>

#include <memory>

class tst_NumberEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_window.reset(); }

    void doubleClickSelectsTheWholeNumber_data();
    void doubleClickSelectsTheWholeNumber();
    void typingAfterDoubleClickReplacesTheNumber();
    void mouseMoveDuringDoubleClickKeepsTheSelection();
    void dragAfterADoubleClickSelectsPartOfTheNumber();
    void doubleClickInAFittedEditSelectsOnlyAWord();
    void typingAfterEnterReplacesTheNumber();
    void numberSetByCodeAfterEnterIsSelected();

private:
    QPoint positionOf(int character) const;

    std::unique_ptr<QWidget> m_window;
    display::NumberEdit* m_edit = nullptr;
};

void tst_NumberEdit::init()
{
    m_window = std::make_unique<QWidget>();
    auto* layout = new QHBoxLayout(m_window.get());
    m_edit = new display::NumberEdit;
    layout->addWidget(m_edit);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_edit->setText("8340.75");
}

QPoint tst_NumberEdit::positionOf(int character) const
{
    const QFontMetrics metrics(m_edit->font());
    return {4 + metrics.horizontalAdvance(m_edit->text().left(character)) + 1,
            m_edit->height() / 2};
}

void tst_NumberEdit::doubleClickSelectsTheWholeNumber_data()
{
    QTest::addColumn<int>("character");
    QTest::newRow("before the decimal point") << 1;
    QTest::newRow("after the decimal point") << 6;
}

void tst_NumberEdit::doubleClickSelectsTheWholeNumber()
{
    QFETCH(int, character);
    QTest::mouseDClick(m_edit, Qt::LeftButton, {}, positionOf(character));
    QCOMPARE(m_edit->selectedText(), QString("8340.75"));
}

void tst_NumberEdit::typingAfterDoubleClickReplacesTheNumber()
{
    QTest::mouseDClick(m_edit, Qt::LeftButton, {}, positionOf(1));
    QTest::keyClicks(m_edit, "8340");
    QCOMPARE(m_edit->text(), QString("8340"));
}

void tst_NumberEdit::mouseMoveDuringDoubleClickKeepsTheSelection()
{
    const QPoint at = positionOf(2);
    QTest::mouseClick(m_edit, Qt::LeftButton, {}, at);
    QMouseEvent second(QEvent::MouseButtonDblClick, at, m_edit->mapToGlobal(at), Qt::LeftButton,
                       Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_edit, &second);
    const QPoint next = at + QPoint(15, 0);
    QMouseEvent move(QEvent::MouseMove, next, m_edit->mapToGlobal(next), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_edit, &move);
    QTest::mouseRelease(m_edit, Qt::LeftButton, {}, next);
    QCOMPARE(m_edit->selectedText(), QString("8340.75"));
}

void tst_NumberEdit::dragAfterADoubleClickSelectsPartOfTheNumber()
{
    QTest::mouseDClick(m_edit, Qt::LeftButton, {}, positionOf(1));
    // Waits long enough that the next press does not count as a triple click.
    QTest::qWait(QApplication::doubleClickInterval() + 50);
    m_edit->deselect();
    QTest::mousePress(m_edit, Qt::LeftButton, {}, positionOf(0));
    const QPoint end = positionOf(4);
    QMouseEvent move(QEvent::MouseMove, end, m_edit->mapToGlobal(end), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QCoreApplication::sendEvent(m_edit, &move);
    QTest::mouseRelease(m_edit, Qt::LeftButton, {}, end);
    QVERIFY2(QString("8340.75").startsWith(m_edit->selectedText()),
             qPrintable(m_edit->selectedText()));
    QVERIFY(m_edit->selectedText().size() > 2 && m_edit->selectedText().size() < 7);
}

void tst_NumberEdit::doubleClickInAFittedEditSelectsOnlyAWord()
{
    display::FittedEdit list;
    list.setText("8250 8320");
    list.resize(200, 25);
    QTest::mouseDClick(&list, Qt::LeftButton, {}, QPoint(8, 12));
    QCOMPARE(list.selectedText().simplified(), QString("8250"));
}

void tst_NumberEdit::typingAfterEnterReplacesTheNumber()
{
    m_edit->setFocus();
    m_edit->selectAll();
    QTest::keyClicks(m_edit, "8340");
    QTest::keyClick(m_edit, Qt::Key_Return);
    QTest::keyClicks(m_edit, "8341");
    QCOMPARE(m_edit->text(), QString("8341"));
}

void tst_NumberEdit::numberSetByCodeAfterEnterIsSelected()
{
    connect(m_edit, &QLineEdit::editingFinished, m_edit, [this] { m_edit->setText("1.5"); });
    m_edit->setFocus();
    QTest::keyClick(m_edit, Qt::Key_Enter);
    QCOMPARE(m_edit->selectedText(), QString("1.5"));
}

QTEST_MAIN(tst_NumberEdit)
#include "tst_NumberEdit.moc"
