// Tests of the fields of the program's windows: a number that is cut off must not be misread,
// a double-click must select the whole number, and the text must be readable in a dark theme.

#include "app/Body.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/NumberEdit.h"
#include "rows/ARefFile.h"
#include "support/PanelTools.h"

#include <QFileDialog>
#include <QFontMetricsF>
#include <QtTest>

#include <algorithm>
#include <memory>

namespace
{

const QString longNumber = QStringLiteral("-9.60021e-05");

/// Fields whose text is not one number: paths, a list of numbers, or a result
/// sentence.
const QStringList otherFields{"FileName", "MultiEnergys", "CalcRes", "LCFRes"};

/// Whether the whole text of @p edit fits in the field at its font size. The frame and
/// the margin need up to 3 pixels at each end.
bool fits(const QLineEdit* edit)
{
    return QFontMetricsF(edit->font()).horizontalAdvance(edit->text()) <=
           edit->width() - (edit->hasFrame() ? 6 : 4);
}

QString nameOf(const QWidget* widget)
{
    return widget->window()->objectName() + u' ' + widget->parentWidget()->objectName() + u' ' +
           widget->objectName();
}

} // namespace

class tst_NumberFields : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void everyFieldWithANumberIsANumberEdit();
    void everyFieldShowsTheExponentOfANumber();
    void longNumberFitsIntoFieldsOf60Pixels();
    void doubleClickSelectsTheWholeEdgeEnergy();
    void fieldsWithABackgroundHaveBlackTextInADarkTheme();
    void messageTextIsBlackInADarkTheme();

private:
    QList<QLineEdit*> fields() const;

    std::unique_ptr<Body> m_body;
    FourPs* m_panel = nullptr;
};

void tst_NumberFields::initTestCase()
{
    m_body = std::make_unique<Body>();
    m_panel = m_body->findChild<FourPs*>();
    for (QWidget* window : std::initializer_list<QWidget*>{m_panel->Disps, m_panel->MapDisp,
                                                           m_panel->DMapDisp, m_body.get()}) {
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
    }
}

void tst_NumberFields::cleanupTestCase()
{
    for (QWidget* window :
         std::initializer_list<QWidget*>{m_panel->Disps, m_panel->MapDisp, m_panel->DMapDisp}) {
        window->hide();
    }
    m_body.reset();
}

/// All visible fields.
QList<QLineEdit*> tst_NumberFields::fields() const
{
    QList<QLineEdit*> all;
    for (const QWidget* window : std::initializer_list<const QWidget*>{
             m_body.get(), m_panel->Disps, m_panel->MapDisp, m_panel->DMapDisp}) {
        all += window->findChildren<QLineEdit*>();
    }
    all.removeIf([](const QLineEdit* edit) { return !edit->isVisible(); });
    return all;
}

void tst_NumberFields::everyFieldWithANumberIsANumberEdit()
{
    int numbers = 0;
    const QList<QLineEdit*> all = fields();
    for (const QLineEdit* edit : all) {
        QVERIFY2(dynamic_cast<const display::FittedEdit*>(edit), qPrintable(nameOf(edit)));
        const bool isNumber = dynamic_cast<const display::NumberEdit*>(edit) != nullptr;
        QVERIFY2(isNumber != otherFields.contains(edit->objectName()), qPrintable(nameOf(edit)));
        numbers += isNumber ? 1 : 0;
    }
    // 8 energy rows with 6 fields, 5 energy shifts, 4 references with 3 fields and the target
    // with 1, 3 fields for the edge, 6 for the histograms, 10 plots with 2 fields, and 2 map
    // windows with 5 fields.
    QCOMPARE(numbers, 48 + 5 + 13 + 3 + 6 + 20 + 10);
}

void tst_NumberFields::everyFieldShowsTheExponentOfANumber()
{
    const QList<QLineEdit*> all = fields();
    for (QLineEdit* edit : all) {
        edit->setText(longNumber);
    }
    for (const QLineEdit* edit : all) {
        // If the number does not fit, the field shows the exponent after an ellipsis, and a
        // tool tip shows the complete number.
        QVERIFY2(edit->toolTip() == longNumber || fits(edit), qPrintable(nameOf(edit)));
    }
}

void tst_NumberFields::longNumberFitsIntoFieldsOf60Pixels()
{
    const QList<QLineEdit*> all = fields();
    for (QLineEdit* edit : all) {
        if (edit->width() >= 60) {
            edit->setText(longNumber);
            QVERIFY2(fits(edit), qPrintable(nameOf(edit)));
            QCOMPARE(edit->toolTip(), QString());
        }
    }
}

void tst_NumberFields::doubleClickSelectsTheWholeEdgeEnergy()
{
    QLineEdit* edge = m_panel->ui.EdgeE;
    m_body->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_body.get()));
    edge->setText("8340.75");
    QTest::mouseDClick(edge, Qt::LeftButton, {}, QPoint(edge->width() - 40, edge->height() / 2));
    QTest::keyClicks(edge, "8340");
    QTest::keyClick(edge, Qt::Key_Return);
    QCOMPARE(edge->text(), QString("8340"));
    QCOMPARE(m_panel->ui.TargetFile->edgeEnergy, 8340.0);
}

void tst_NumberFields::fieldsWithABackgroundHaveBlackTextInADarkTheme()
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(Qt::white, QColor(40, 40, 40), Qt::lightGray, Qt::black,
                                      Qt::gray, Qt::white, Qt::white, QColor(30, 30, 30),
                                      QColor(40, 40, 40)));
    QCoreApplication::processEvents();
    int coloured = 0;
    const QList<QLineEdit*> all = fields();
    for (const QLineEdit* edit : all) {
        const bool hasBackground = !edit->styleSheet().isEmpty();
        const QColor text = edit->palette().color(QPalette::Text);
        coloured += hasBackground ? 1 : 0;
        QVERIFY2(text == QColor(hasBackground ? Qt::black : Qt::white), qPrintable(nameOf(edit)));
    }
    QApplication::setPalette(before);
    // 16 file names, 2 results for each of 4 references and 1 for the target, 2 result
    // sentences, 10 plots with 2 fields for the position, and 2 map windows with 3 fields for
    // the position and the value.
    QCOMPARE(coloured, 16 + 9 + 2 + 20 + 6);
}

void tst_NumberFields::messageTextIsBlackInADarkTheme()
{
    const QPalette before = QApplication::palette();
    QPalette dark(before);
    dark.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(dark);
    QCoreApplication::processEvents();
    const QColor text = m_panel->ui.Message->palette().color(QPalette::Text);
    QApplication::setPalette(before);
    QCOMPARE(text, QColor(Qt::black));
}

QTEST_MAIN(tst_NumberFields)
#include "tst_NumberFields.moc"
