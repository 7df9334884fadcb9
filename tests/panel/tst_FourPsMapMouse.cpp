// Tests of mouse actions on the result map: double-clicks, and the position and value
// fields.

#include "support/MapWindows.h"
#include "support/MouseInput.h"
#include "support/PaintCounter.h"

#include <QTest>

#include <limits>

using namespace tests;

namespace
{

constexpr int ratio1 = 0;
constexpr int ratio2 = 1;
constexpr int c1 = 9;
constexpr int valence = 11;

/// Sends all events of a double-click: press, release, double-click, release.
void fullDoubleClick(QWidget* surface, Qt::MouseButton button, Qt::KeyboardModifiers keys)
{
    const QPointF at(30.0, 40.0);
    press(surface, at, button, keys);
    release(surface, at, button, keys);
    doubleClick(surface, at, button, keys);
    release(surface, at, button, keys);
}

} // namespace

class tst_FourPsMapMouse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void doubleClickSetsLimitsByButtonAndModifierKeys_data();
    void doubleClickSetsLimitsByButtonAndModifierKeys();
    void shiftDoubleClickOnlyRaisesTheLimits_data();
    void shiftDoubleClickOnlyRaisesTheLimits();
    void doubleClickFitsTheLimitsToTheShownQuantity();
    void paintAfterADoubleClickSetsTheLimitsOfTheQuantity_data();
    void paintAfterADoubleClickSetsTheLimitsOfTheQuantity();
    void doubleClickWithAnyButtonShowsTheWholeMap_data();
    void doubleClickWithAnyButtonShowsTheWholeMap();
    void doubleClickRepaintsThePanel();
    void doubleClickSetsTheLimitsInThePoppedOutWindow();
    void singleClickKeepsViewAndLimits();

    void mouseMoveShowsPositionAndValue();
    void valueIsShownWithSixDigitsAndCursorAtStart();
    void nonFiniteValueIsShownAsText();
    void mouseMoveInAZoomedViewShowsTheValueUnderTheMouse();
    void mouseDragShowsTheValueUnderTheMouse();

private:
    DispMBase* window() const { return m_panel->MapDisp; }
    DispArea* surface() const { return m_panel->MapDisp->DispA; }

    const SharedPanel m_panel;
};

void tst_FourPsMapMouse::init()
{
    resetMaps(*m_panel);
    QVERIFY(showWindow(window()));
}

void tst_FourPsMapMouse::doubleClickSetsLimitsByButtonAndModifierKeys_data()
{
    using Keys = Qt::KeyboardModifiers;
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<QStringList>("texts");
    const auto add = [](const char* name, Keys keys, const QStringList& texts,
                        Qt::MouseButton button = Qt::LeftButton) {
        QTest::newRow(name) << button << keys << texts;
    };
    const QStringList scanned{"0.45", "0.9"};
    const QStringList raised{"0.6", "0.9"};
    const QStringList preset{"-0.1", "1.1"};
    const QStringList unchanged{"0.6", "0.7"};
    add("no key", Qt::NoModifier, scanned);
    add("Shift", Qt::ShiftModifier, raised);
    add("Control", Qt::ControlModifier, preset);
    add("Meta alone", Qt::MetaModifier, scanned);
    add("keypad alone", Qt::KeypadModifier, scanned);
    add("Shift and Meta", Qt::ShiftModifier | Qt::MetaModifier, raised);
    add("Control and Meta", Qt::ControlModifier | Qt::MetaModifier, preset);
    add("Alt", Qt::AltModifier, unchanged);
    add("Shift and Control", Qt::ShiftModifier | Qt::ControlModifier, unchanged);
    add("Shift and Alt", Qt::ShiftModifier | Qt::AltModifier, unchanged);
    add("Control and Alt", Qt::ControlModifier | Qt::AltModifier, unchanged);
    add("Shift, Control and Alt", Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier,
        unchanged);
    add("right button", Qt::NoModifier, unchanged, Qt::RightButton);
    add("right button with Shift", Qt::ShiftModifier, unchanged, Qt::RightButton);
    add("right button with Control", Qt::ControlModifier, unchanged, Qt::RightButton);
    add("middle button", Qt::NoModifier, unchanged, Qt::MiddleButton);
}

void tst_FourPsMapMouse::doubleClickSetsLimitsByButtonAndModifierKeys()
{
    QFETCH(Qt::MouseButton, button);
    QFETCH(Qt::KeyboardModifiers, keys);
    QFETCH(QStringList, texts);
    setQuantity(*m_panel, ratio1, 3, 1, {0.5, 0.9, 0.45});
    picture(window());
    window()->setZRange(0.6, 0.7);
    fullDoubleClick(surface(), button, keys);
    QCOMPARE(limitTexts(window()), texts);
    QCOMPARE(barLimits(window()), QList<double>({texts.at(0).toDouble(), texts.at(1).toDouble()}));
    QCOMPARE(window()->MinV->cursorPosition(), 0);
    QCOMPARE(window()->MaxV->cursorPosition(), 0);
}

void tst_FourPsMapMouse::shiftDoubleClickOnlyRaisesTheLimits_data()
{
    QTest::addColumn<double>("low");
    QTest::addColumn<double>("high");
    QTest::addColumn<QStringList>("texts");
    QTest::newRow("both limits below the values") << 0.1 << 0.2 << QStringList{"0.45", "0.9"};
    QTest::newRow("both limits within the values") << 0.6 << 0.7 << QStringList{"0.6", "0.9"};
    QTest::newRow("limits around the values") << -1.0 << 3.0 << QStringList{"0.45", "3"};
    QTest::newRow("both limits above the values") << 2.0 << 3.0 << QStringList{"2", "3"};
}

void tst_FourPsMapMouse::shiftDoubleClickOnlyRaisesTheLimits()
{
    QFETCH(double, low);
    QFETCH(double, high);
    setQuantity(*m_panel, ratio1, 3, 1, {0.5, 0.9, 0.45});
    picture(window());
    window()->setZRange(low, high);
    fullDoubleClick(surface(), Qt::LeftButton, Qt::ShiftModifier);
    QTEST(limitTexts(window()), "texts");
}

void tst_FourPsMapMouse::doubleClickFitsTheLimitsToTheShownQuantity()
{
    setFractions(*m_panel, 2, 1, {{0.25, 1.0}, {0.75, 5.0}});
    for (const auto& [quantity, texts] : {std::pair<int, QStringList>{ratio1, {"0.25", "0.75"}},
                                          {ratio2, {"0.25", "0.75"}},
                                          {valence, {"2.25", "2.75"}},
                                          {12, {"1", "5"}},
                                          {4, {"0", "0"}}}) {
        mapRadio(*m_panel, quantity)->setChecked(true);
        window()->setZRange(40.0, 50.0);
        fullDoubleClick(surface(), Qt::LeftButton, Qt::NoModifier);
        QCOMPARE(limitTexts(window()), texts);
    }
}

void tst_FourPsMapMouse::paintAfterADoubleClickSetsTheLimitsOfTheQuantity_data()
{
    using Keys = Qt::KeyboardModifiers;
    QTest::addColumn<int>("quantity");
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<QStringList>("texts");
    for (const auto& [name, keys] :
         {std::pair{"no key", Keys(Qt::NoModifier)}, std::pair{"Shift", Keys(Qt::ShiftModifier)},
          std::pair{"Control", Keys(Qt::ControlModifier)},
          std::pair{"Alt", Keys(Qt::AltModifier)}}) {
        QTest::addRow("preset limits, %s", name) << ratio1 << keys << QStringList{"-0.1", "1.1"};
        QTest::addRow("limits fitted to the values, %s", name)
            << c1 << keys << QStringList{"0.45", "0.9"};
    }
}

void tst_FourPsMapMouse::paintAfterADoubleClickSetsTheLimitsOfTheQuantity()
{
    QFETCH(int, quantity);
    QFETCH(Qt::KeyboardModifiers, keys);
    QFETCH(QStringList, texts);
    const QList<double> values{0.5, 0.9, 0.45};
    setQuantity(*m_panel, quantity, 3, 1, values);
    picture(window());
    window()->setZRange(2.0, 3.0);
    fullDoubleClick(surface(), Qt::LeftButton, keys);
    PaintCounter paints(surface());
    QVERIFY(paints.within() >= 1);
    QCOMPARE(limitTexts(window()), texts);
    const double low = texts.at(0).toDouble();
    const double high = texts.at(1).toDouble();
    QCOMPARE(picture(window()), plainPicture(window(), {3, 1, values, low, high}));
}

void tst_FourPsMapMouse::doubleClickWithAnyButtonShowsTheWholeMap_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("left button") << Qt::LeftButton;
    QTest::newRow("right button") << Qt::RightButton;
    QTest::newRow("middle button") << Qt::MiddleButton;
}

void tst_FourPsMapMouse::doubleClickWithAnyButtonShowsTheWholeMap()
{
    QFETCH(Qt::MouseButton, button);
    setQuantity(*m_panel, ratio1, 3, 2, QList<double>(6, 0.5));
    picture(window());
    tests::move(surface(), {100.0, 100.0});
    turnWheel(surface(), {100.0, 100.0}, {0, 120});
    picture(window());
    QVERIFY(viewOf(window()) != QList<double>({0.0, 0.0, 3.0, 2.0}));
    fullDoubleClick(surface(), button, Qt::NoModifier);
    QTest::qWait(20);
    QCOMPARE(viewOf(window()), QList<double>({0.0, 0.0, 3.0, 2.0}));
    QVERIFY(surface()->hasScale);
}

void tst_FourPsMapMouse::doubleClickRepaintsThePanel()
{
    QVERIFY(showWindow(m_panel.get()));
    setQuantity(*m_panel, ratio1, 1, 1, {0.5});
    PaintCounter paints(m_panel.get());
    paints.restart();
    fullDoubleClick(surface(), Qt::LeftButton, Qt::NoModifier);
    QCOMPARE(paints.within(), 1);
    fullDoubleClick(surface(), Qt::RightButton, Qt::NoModifier);
    QCOMPARE(paints.within(), 2);
    m_panel->BaseData.clear();
    fullDoubleClick(surface(), Qt::LeftButton, Qt::NoModifier);
    QCOMPARE(paints.within(), 2);
    m_panel->hide();
}

void tst_FourPsMapMouse::doubleClickSetsTheLimitsInThePoppedOutWindow()
{
    setQuantity(*m_panel, ratio1, 3, 1, {0.5, 0.9, 0.45});
    QVERIFY(popOut(window()));
    window()->setZRange(0.6, 0.7);
    fullDoubleClick(surface(), Qt::LeftButton, Qt::NoModifier);
    QCOMPARE(limitTexts(window()), QStringList({"0.45", "0.9"}));
    QTest::qWait(40);
    QCOMPARE(limitTexts(window()), QStringList({"-0.1", "1.1"}));
}

void tst_FourPsMapMouse::singleClickKeepsViewAndLimits()
{
    setQuantity(*m_panel, ratio1, 3, 1, {0.5, 0.9, 0.45});
    picture(window());
    surface()->cc.setReal(1.0, 0.25, 2.0, 0.75);
    window()->setZRange(0.6, 0.7);
    QTest::mouseClick(surface(), Qt::LeftButton, {}, {30, 40});
    QTest::qWait(20);
    QCOMPARE(viewOf(window()), QList<double>({1.0, 0.25, 2.0, 0.75}));
    QCOMPARE(limitTexts(window()), QStringList({"0.6", "0.7"}));
}

void tst_FourPsMapMouse::mouseMoveShowsPositionAndValue()
{
    setQuantity(*m_panel, ratio1, 3, 2, {0.125, 0.25, 0.375, 0.5, 0.625, 0.75});
    picture(window());
    const double width = surface()->width();
    const double height = surface()->height();
    for (int pixel = 0; pixel < 6; ++pixel) {
        const QPoint at = pixelCentre(window(), 3, 2, pixel % 3, pixel / 3).toPoint();
        tests::move(surface(), at);
        QCOMPARE(window()->XPos->text(), sixDigits(3.0 / width * at.x()));
        QCOMPARE(window()->YPos->text(), sixDigits(2.0 / height * (height - at.y())));
        QCOMPARE(window()->Val->text(), sixDigits(0.125 * (pixel + 1)));
    }
}

void tst_FourPsMapMouse::valueIsShownWithSixDigitsAndCursorAtStart()
{
    setQuantity(*m_panel, ratio1, 1, 1, {-1.0 / 3.0});
    window()->Val->setText("a long text");
    window()->Val->setCursorPosition(9);
    m_panel->receiveNowPosInMap(0.5, 0.5);
    QCOMPARE(window()->Val->text(), "-0.333333");
    QCOMPARE(window()->Val->cursorPosition(), 0);
}

void tst_FourPsMapMouse::nonFiniteValueIsShownAsText()
{
    setQuantity(
        *m_panel, ratio1, 2, 1,
        {std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity()});
    m_panel->receiveNowPosInMap(0.5, 0.5);
    QCOMPARE(window()->Val->text(), "nan");
    m_panel->receiveNowPosInMap(1.5, 0.5);
    QCOMPARE(window()->Val->text(), "-inf");
}

void tst_FourPsMapMouse::mouseMoveInAZoomedViewShowsTheValueUnderTheMouse()
{
    QList<double> values;
    for (int i = 0; i < 100; ++i) {
        values.append(0.01 * i);
    }
    setQuantity(*m_panel, ratio1, 10, 10, values);
    picture(window());
    // The view shows map column 4 in map rows 7 and 8. In pixels of the window, y grows
    // downward, so row 7 is in the lower half.
    surface()->cc.setReal(4.0, 7.0, 5.0, 9.0);
    const double width = surface()->width();
    const double height = surface()->height();
    tests::move(surface(), {width * 0.5, height * 0.75});
    QCOMPARE(window()->Val->text(), "0.74");
    tests::move(surface(), {width * 0.5, height * 0.25});
    QCOMPARE(window()->Val->text(), "0.84");
}

void tst_FourPsMapMouse::mouseDragShowsTheValueUnderTheMouse()
{
    setQuantity(*m_panel, ratio1, 2, 1, {0.125, 0.25});
    picture(window());
    press(surface(), pixelCentre(window(), 2, 1, 0, 0));
    drag(surface(), pixelCentre(window(), 2, 1, 1, 0));
    QCOMPARE(window()->Val->text(), "0.25");
    release(surface(), pixelCentre(window(), 2, 1, 1, 0));
}

QTEST_MAIN(tst_FourPsMapMouse)
#include "tst_FourPsMapMouse.moc"
