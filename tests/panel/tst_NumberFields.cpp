// Every field of the program's windows: that a number in it cannot be misread,
// selected by halves, or vanish on a dark desktop.

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

/// Fields that hold paths, a list of numbers, or a sentence.
const QStringList otherFields{"FileName", "MultiEnergys", "CalcRes", "LCFRes"};

/// Whether the whole text of @p edit fits in its letters; up to 3 pixels at
/// either end are frame and margin.
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

    void everyFieldOfANumberIsANumberField();
    void noFieldShowsANumberWithoutItsExponent();
    void numbersOfSixtyPixelsAreWhole();
    void doubleClickOnTheEdgeEnergyReplacesAllOfIt();
    void fieldsWithABackgroundHaveBlackTextOnADarkDesktop();
    void messagesAreBlackOnADarkDesktop();

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

/// All fields in sight.
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

void tst_NumberFields::everyFieldOfANumberIsANumberField()
{
    int numbers = 0;
    const QList<QLineEdit*> all = fields();
    for (const QLineEdit* edit : all) {
        QVERIFY2(dynamic_cast<const display::FittedEdit*>(edit), qPrintable(nameOf(edit)));
        const bool isNumber = dynamic_cast<const display::NumberEdit*>(edit) != nullptr;
        QVERIFY2(isNumber != otherFields.contains(edit->objectName()), qPrintable(nameOf(edit)));
        numbers += isNumber ? 1 : 0;
    }
    // 8 x 6 of the energy rows, 5 of shifts, 3 x 4 + 1 of the references and the
    // target, 3 of the edge, 6 of the histograms, 10 x 2 and 2 x 5 of the plots.
    QCOMPARE(numbers, 48 + 5 + 13 + 3 + 6 + 20 + 10);
}

void tst_NumberFields::noFieldShowsANumberWithoutItsExponent()
{
    const QList<QLineEdit*> all = fields();
    for (QLineEdit* edit : all) {
        edit->setText(longNumber);
    }
    for (const QLineEdit* edit : all) {
        // Where it does not fit it shows the exponent behind an ellipsis, and all of the
        // number in a tool tip.
        QVERIFY2(edit->toolTip() == longNumber || fits(edit), qPrintable(nameOf(edit)));
    }
}

void tst_NumberFields::numbersOfSixtyPixelsAreWhole()
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

void tst_NumberFields::doubleClickOnTheEdgeEnergyReplacesAllOfIt()
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

void tst_NumberFields::fieldsWithABackgroundHaveBlackTextOnADarkDesktop()
{
    const QPalette before = QApplication::palette();
    QApplication::setPalette(QPalette(Qt::white, QColor(40, 40, 40), Qt::lightGray, Qt::black,
                                      Qt::gray, Qt::white, Qt::white, QColor(30, 30, 30),
                                      QColor(40, 40, 40)));
    QCoreApplication::processEvents();
    int coloured = 0;
    const QList<QLineEdit*> all = fields();
    for (const QLineEdit* edit : all) {
        const bool own = !edit->styleSheet().isEmpty();
        const QColor text = edit->palette().color(QPalette::Text);
        coloured += own ? 1 : 0;
        QVERIFY2(text == QColor(own ? Qt::black : Qt::white), qPrintable(nameOf(edit)));
    }
    QApplication::setPalette(before);
    // 16 files, 2 results for each reference and 1 for the target, 2 sentences,
    // 10 x 2 and 2 x 3 places.
    QCOMPARE(coloured, 16 + 9 + 2 + 20 + 6);
}

void tst_NumberFields::messagesAreBlackOnADarkDesktop()
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
