// Tests of FittedEdit, the line edit that shrinks or elides its text so that a number
// cannot be misread.

#include "display/FittedEdit.h"
#include "support/PictureTools.h"

#include <QFontInfo>
#include <QHBoxLayout>
#include <QtTest>

#include <memory>

using display::FittedEdit;

namespace
{

const QString readOnlyStyle = QStringLiteral("background-color: rgb(255, 255, 220);");

/// The bounding rectangle of all dark pixels inside the field's frame.
QRect inkOf(const QImage& picture)
{
    return tests::boxOf(picture, picture.rect().adjusted(3, 4, -3, -4),
                        [](const QColor& color) { return color.lightness() < 128; });
}

QImage pictureOf(QWidget* widget)
{
    return widget->grab().toImage().convertToFormat(QImage::Format_RGB32);
}

/// The picture of the text of @p edit in its current font, drawn in a wider field in
/// which the text fits.
QImage inkInWideField(const FittedEdit& edit)
{
    QLineEdit wide;
    wide.setFont(edit.font());
    wide.setFrame(edit.hasFrame());
    wide.setStyleSheet(edit.styleSheet());
    wide.setAlignment(edit.alignment());
    wide.resize(800, edit.height());
    wide.setText(edit.text());
    wide.setCursorPosition(0);
    const QImage picture = pictureOf(&wide);
    return picture.copy(inkOf(picture));
}

bool isFullyVisible(FittedEdit& edit)
{
    const QImage picture = pictureOf(&edit);
    return picture.copy(inkOf(picture)) == inkInWideField(edit);
}

} // namespace

class tst_FittedEdit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_window.reset(); }

    void classNameIsQLineEdit();
    void upToTwelveCharactersAreFullyVisible_data();
    void upToTwelveCharactersAreFullyVisible();
    void exponentIsVisibleWithStyledBackground();
    void longTextShrinksTheFontToItsMinimum();
    void normalFontReturnsWithShortText();
    void normalFontReturnsInWiderField();
    void fontChangeKeepsTheSizeHints();
    void fontFollowsTheParentWidget();
    void toolTipExistsOnlyIfTextDoesNotFit();
    void longNumberWithoutFocusShowsItsExponent();
    void clickInLongNumberKeepsItsExponentVisible();
    void keyPressInLongNumberScrollsToTheCursor();
    void markupIsEscapedInToolTip();
    void longTextWithoutFocusShowsStartAndEnd();
    void longTextWithFocusCanBeScrolled();
    void tabReturnsTheCursorToTheStart();
    void deactivatingTheWindowKeepsTheCursorPosition();
    void textOnStyledBackgroundIsDarkInDarkTheme();
    void textWithoutStyledBackgroundUsesThePaletteColour();

private:
    std::unique_ptr<QWidget> m_window;
    FittedEdit* m_edit = nullptr; ///< initially 60 pixels wide and without focus
    QLineEdit* m_other = nullptr;
};

void tst_FittedEdit::init()
{
    m_window = std::make_unique<QWidget>();
    auto* layout = new QHBoxLayout(m_window.get());
    m_edit = new FittedEdit;
    m_edit->setFixedWidth(60);
    m_other = new QLineEdit;
    layout->addWidget(m_edit);
    layout->addWidget(m_other);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    m_other->setFocus();
}

void tst_FittedEdit::classNameIsQLineEdit()
{
    QCOMPARE(QByteArray(m_edit->metaObject()->className()), QByteArray("QLineEdit"));
}

void tst_FittedEdit::upToTwelveCharactersAreFullyVisible_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"-9.60021e-05", "3.6918e-05", "0.000224002", "-0.000463358",
                             "5159e-05", "-1.23457e+10", "8340.75", "-8.88888e-88", "1"}) {
        QTest::newRow(text) << QString::fromLatin1(text);
    }
}

void tst_FittedEdit::upToTwelveCharactersAreFullyVisible()
{
    QFETCH(QString, text);
    m_edit->setText(text);
    QVERIFY(isFullyVisible(*m_edit));
    m_edit->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QVERIFY(isFullyVisible(*m_edit));
}

void tst_FittedEdit::exponentIsVisibleWithStyledBackground()
{
    m_edit->setStyleSheet(readOnlyStyle);
    m_edit->setText("-9.60021e-05");
    QVERIFY(isFullyVisible(*m_edit));
    m_edit->setFrame(false);
    m_edit->setText("3.6918e-05");
    QVERIFY(isFullyVisible(*m_edit));
}

void tst_FittedEdit::longTextShrinksTheFontToItsMinimum()
{
    m_edit->setText(QString(200, u'8'));
    QCOMPARE(m_edit->font().pointSizeF(), 7.0);
    QCOMPARE(m_edit->font().stretch(), 65);
}

void tst_FittedEdit::normalFontReturnsWithShortText()
{
    m_edit->setText("-9.60021e-05");
    QVERIFY(QFontInfo(m_edit->font()).pointSizeF() < QFontInfo(m_other->font()).pointSizeF());
    m_edit->setText("8340");
    QCOMPARE(m_edit->font(), m_other->font());
}

void tst_FittedEdit::normalFontReturnsInWiderField()
{
    m_edit->setText("-9.60021e-05");
    m_edit->setFixedWidth(200);
    QCoreApplication::processEvents();
    QCOMPARE(m_edit->font(), m_other->font());
}

void tst_FittedEdit::fontChangeKeepsTheSizeHints()
{
    m_edit->setText("8340");
    const QSize hint = m_edit->sizeHint();
    const QSize minimum = m_edit->minimumSizeHint();
    const int height = m_edit->height();
    m_edit->setText(QString(200, u'8'));
    QCoreApplication::processEvents();
    QCOMPARE(m_edit->sizeHint(), hint);
    QCOMPARE(m_edit->minimumSizeHint(), minimum);
    QCOMPARE(m_edit->height(), height);
}

void tst_FittedEdit::fontFollowsTheParentWidget()
{
    m_edit->setText("-9.60021e-05");
    QFont large = m_window->font();
    large.setPointSizeF(16.0);
    m_window->setFont(large);
    m_edit->setText("8");
    QCOMPARE(m_edit->font().pointSizeF(), 16.0);
}

void tst_FittedEdit::toolTipExistsOnlyIfTextDoesNotFit()
{
    const QString text("-1.2345678901234567890123e-05");
    m_edit->setText(text);
    QCOMPARE(m_edit->toolTip(), text);
    m_edit->setText("-9.60021e-05"); // fits in a smaller font
    QCOMPARE(m_edit->toolTip(), QString());
}

// A field 40 pixels wide, as used for shares and amounts, is too narrow for twelve
// characters even in the smallest font. The visible text must end with the exponent.
void tst_FittedEdit::longNumberWithoutFocusShowsItsExponent()
{
    m_edit->setFixedWidth(40);
    QCoreApplication::processEvents();
    m_edit->setText("-9.60021e-05");
    QCOMPARE(m_edit->toolTip(), QString("-9.60021e-05"));
    const QImage picture = pictureOf(m_edit);
    const QImage visible = picture.copy(inkOf(picture));
    QStringList readings;
    for (const char* front : {"-", "-9", "-9.", "-9.6", "-9.60", "-9.600", "-9.6002"}) {
        FittedEdit wide;
        wide.setFixedWidth(400);
        wide.setFont(m_edit->font());
        wide.resize(400, m_edit->height());
        wide.setText(front + QString(QChar(0x2026)) + "e-05");
        if (inkInWideField(wide) == visible) {
            readings.append(wide.text());
        }
    }
    QCOMPARE(readings.size(), 1);
}

void tst_FittedEdit::clickInLongNumberKeepsItsExponentVisible()
{
    m_edit->setFixedWidth(40);
    QCoreApplication::processEvents();
    m_edit->setText("-9.60021e-05");
    const QImage before = pictureOf(m_edit);
    QTest::mouseClick(m_edit, Qt::LeftButton, {}, QPoint(20, m_edit->height() / 2));
    QVERIFY(m_edit->hasFocus());
    // Only the text is compared, because the frame of a field with focus has another
    // colour.
    const QImage after = pictureOf(m_edit);
    QCOMPARE(after.copy(inkOf(before)), before.copy(inkOf(before)));
}

void tst_FittedEdit::keyPressInLongNumberScrollsToTheCursor()
{
    m_edit->setFixedWidth(40);
    QCoreApplication::processEvents();
    m_edit->setText("-9.60021e-05");
    m_edit->setFocus();
    const QImage shortened = pictureOf(m_edit);
    QTest::keyClick(m_edit, Qt::Key_End);
    const QImage atTheEnd = pictureOf(m_edit);
    QVERIFY(atTheEnd != shortened);
    QTest::keyClick(m_edit, Qt::Key_Home);
    QVERIFY(pictureOf(m_edit) != atTheEnd);
    QTest::keyClick(m_edit, Qt::Key_Tab);
    m_edit->setFocus();
    QCOMPARE(pictureOf(m_edit), shortened);
}

void tst_FittedEdit::markupIsEscapedInToolTip()
{
    m_edit->setText("/data/<b>nickel</b>/" + QString(100, u'8') + ".dat");
    QVERIFY(m_edit->toolTip().contains("&lt;b&gt;"));
}

void tst_FittedEdit::longTextWithoutFocusShowsStartAndEnd()
{
    const QString path = "/data/" + QString(300, u'x') + "/ref_ni2.dat";
    m_edit->setFixedWidth(150);
    QCoreApplication::processEvents();
    m_edit->setText(path);
    const QImage visible = pictureOf(m_edit);
    QCOMPARE(m_edit->text(), path);
    QCOMPARE(m_edit->toolTip(), path);
    // A plain line edit would show either the start or the end of the path: only one of these
    // changes would be visible.
    m_edit->setText("/temp/" + path.mid(6));
    QVERIFY(pictureOf(m_edit) != visible);
    m_edit->setText(path.chopped(11) + "ref_fe3.dat");
    QVERIFY(pictureOf(m_edit) != visible);
    m_edit->setText(path.left(100) + 'y' + path.mid(101));
    QCOMPARE(pictureOf(m_edit), visible);
}

void tst_FittedEdit::longTextWithFocusCanBeScrolled()
{
    m_edit->setText(QString(100, u'1') + QString(100, u'8'));
    m_edit->setFocus();
    QTest::keyClick(m_edit, Qt::Key_Home);
    const QImage front = pictureOf(m_edit);
    QTest::keyClick(m_edit, Qt::Key_End);
    QVERIFY(pictureOf(m_edit) != front);
}

void tst_FittedEdit::tabReturnsTheCursorToTheStart()
{
    m_edit->setFocus();
    QTest::keyClicks(m_edit, "-1.2345159e-05");
    QCOMPARE(m_edit->cursorPosition(), 14);
    QTest::keyClick(m_edit, Qt::Key_Tab);
    QVERIFY(m_other->hasFocus());
    QCOMPARE(m_edit->cursorPosition(), 0);
}

void tst_FittedEdit::deactivatingTheWindowKeepsTheCursorPosition()
{
    m_edit->setFocus();
    QTest::keyClicks(m_edit, "83");
    QFocusEvent leave(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(m_edit, &leave);
    QCOMPARE(m_edit->cursorPosition(), 2);
}

void tst_FittedEdit::textOnStyledBackgroundIsDarkInDarkTheme()
{
    const QPalette before = QApplication::palette();
    QPalette dark(Qt::white, QColor(40, 40, 40), Qt::lightGray, Qt::black, Qt::gray, Qt::white,
                  Qt::white, QColor(30, 30, 30), QColor(40, 40, 40));
    m_edit->setStyleSheet(readOnlyStyle);
    m_edit->setText("8340");
    QApplication::setPalette(dark);
    QCoreApplication::processEvents();
    const QImage picture = pictureOf(m_edit);
    QApplication::setPalette(before);
    QCOMPARE(picture.pixelColor(picture.width() - 8, picture.height() / 2), QColor(255, 255, 220));
    QVERIFY(!inkOf(picture).isEmpty());
}

void tst_FittedEdit::textWithoutStyledBackgroundUsesThePaletteColour()
{
    const QPalette before = QApplication::palette();
    QPalette dark(before);
    dark.setColor(QPalette::Text, QColor(200, 255, 200));
    QApplication::setPalette(dark);
    QCoreApplication::processEvents();
    const QColor text = m_edit->palette().color(QPalette::Text);
    QApplication::setPalette(before);
    QCOMPARE(text, QColor(200, 255, 200));
}

QTEST_MAIN(tst_FittedEdit)
#include "tst_FittedEdit.moc"
