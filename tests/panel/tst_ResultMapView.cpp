// Tests of the window of the result map, with separate widgets instead of the panel.

#include "data/A2DData.h"
#include "display/MouseC.h"
#include "panel/InputReader.h"
#include "panel/ResultMapView.h"
#include "support/UnconnectedWidgets.h"

#include <QImage>
#include <QTest>

using namespace tests;

class tst_ResultMapView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void mapWithoutAResultIsWhite();
    void firstPaintFitsViewAndLimitsToTheMap();
    void laterPaintsKeepViewAndLimits();
    void quantityC1HasNoPresetLimits();
    void valueIsReadFromThePixelAtThePosition();
    void valueOutsideTheMapIsZero();
    void mouseHasNoEffectWithoutAResult();
    void doubleClickFitsTheLimitsAndShiftOnlyRaisesThem();
    void controlDoubleClickSetsThePresetLimits();
    void selectingAnotherQuantityClearsTheValueAndSetsItsLimits();
    void newResultOfTheSameSizeKeepsTheView();
    void newResultOfAnotherSizeFitsTheView();
    void showAndFitNewResultClearsTheRange();

private:
    void choose(QRadioButton* quantity);
    QImage paint();

    std::unique_ptr<UnconnectedWidgets> m_loose;
    std::unique_ptr<panel::InputReader> m_inputs;
    std::unique_ptr<panel::ResultMapView> m_view;
    A2DData m_result;
};

namespace
{

/// A map with values of all quantities. Quantity q is @p base + q in the first pixel
/// and increases by 1 from pixel to pixel.
A2DData extendedMap(int width, int height, double base)
{
    A2DData map;
    map.extended = true;
    map.xNum = width;
    map.yNum = height;
    for (int i = 0; i < width * height; ++i) {
        A2DRow row{static_cast<double>(i), 0.0, 0.0, 0.0, {}};
        for (int q = 0; q < 13; ++q) {
            row.values.append(base + q + i);
        }
        map.rows.append(row);
    }
    return map;
}

bool doubleClick(const panel::ResultMapView& view, Qt::KeyboardModifiers keys,
                 Qt::MouseButton button = Qt::LeftButton)
{
    MouseC mouse;
    mouse.dClickButton = button;
    mouse.dClickMods = keys;
    return view.handleDoubleClick(mouse);
}

} // namespace

void tst_ResultMapView::initTestCase()
{
    m_loose = std::make_unique<UnconnectedWidgets>();
    m_inputs = std::make_unique<panel::InputReader>(m_loose->list);
    m_view = std::make_unique<panel::ResultMapView>(m_loose->list, *m_inputs, m_result);
    connect(&m_loose->resultMap, &DispMBase::draw, m_loose->form.MapWGrid,
            [this](QStylePainter* p) { m_view->draw(p); });
    m_loose->resultMap.resize(400, 400);
}

void tst_ResultMapView::init()
{
    m_loose->reset();
    m_result = {};
    choose(m_loose->form.MapC1);
}

void tst_ResultMapView::cleanupTestCase()
{
    m_loose.reset();
}

void tst_ResultMapView::choose(QRadioButton* quantity)
{
    for (auto* radio : quantity->parentWidget()->findChildren<QRadioButton*>()) {
        radio->setChecked(radio == quantity);
    }
}

QImage tst_ResultMapView::paint()
{
    return m_loose->resultMap.DispA->grab().toImage();
}

void tst_ResultMapView::mapWithoutAResultIsWhite()
{
    const QImage picture = paint();
    QCOMPARE(picture.pixelColor(picture.width() / 2, picture.height() / 2), QColor(Qt::white));
    QVERIFY(!m_loose->resultMap.DispA->hasScale);
    m_result.rows.append(A2DRow()); // a result without a size
    paint();
    QVERIFY(!m_loose->resultMap.DispA->hasScale);
}

void tst_ResultMapView::firstPaintFitsViewAndLimitsToTheMap()
{
    m_result = extendedMap(4, 2, 100.0);
    const QImage picture = paint();
    const DispMBase& window = m_loose->resultMap;
    QVERIFY(window.DispA->hasScale);
    QCOMPARE(window.DispA->cc.realX1, 4.0);
    QCOMPARE(window.DispA->cc.realY1, 2.0);
    QCOMPARE(window.CBar->zmin, 109.0); // the lowest C1, which is quantity 9
    QCOMPARE(window.CBar->zmax, 116.0);
    QCOMPARE(window.MinV->text(), QStringLiteral("109"));
    QCOMPARE(picture.pixelColor(1, picture.height() - 2), window.CBar->color(109.0));
}

void tst_ResultMapView::laterPaintsKeepViewAndLimits()
{
    m_result = extendedMap(4, 2, 100.0);
    paint();
    m_result = extendedMap(8, 3, 500.0);
    paint();
    QCOMPARE(m_loose->resultMap.DispA->cc.realX1, 4.0);
    QCOMPARE(m_loose->resultMap.CBar->zmax, 116.0);
}

void tst_ResultMapView::quantityC1HasNoPresetLimits()
{
    m_result = extendedMap(2, 1, 0.0);
    m_loose->resultMap.setZRange(-3.0, 3.0);
    QVERIFY(!m_view->setPresetLimits());
    QCOMPARE(m_loose->resultMap.CBar->zmin, -3.0);
    choose(m_loose->form.MapRatio2);
    QVERIFY(m_view->setPresetLimits());
    QCOMPARE(m_loose->resultMap.CBar->zmin, -0.1);
    QCOMPARE(m_loose->resultMap.CBar->zmax, 1.1);
}

void tst_ResultMapView::valueIsReadFromThePixelAtThePosition()
{
    m_result = extendedMap(4, 2, 0.0);
    m_view->showValueAt(1.5, 1.2); // map row 1, column 1: pixel 1 * 4 + 1 = 5; C1 is 9 + 5
    QCOMPARE(m_loose->resultMap.Val->text(), QStringLiteral("14"));
    choose(m_loose->form.MapValence);
    m_view->showValueAt(3.9, 0.0);
    // The valence is quantity 11, so it is 11 + 3 in pixel 3.
    QCOMPARE(m_loose->resultMap.Val->text(), QStringLiteral("14"));
}

void tst_ResultMapView::valueOutsideTheMapIsZero()
{
    m_result = extendedMap(4, 2, 100.0);
    for (const auto& [x, y] : {std::pair(-0.1, 0.0), {4.0, 0.0}, {0.0, 2.0}}) {
        m_loose->resultMap.Val->setText("before");
        m_view->showValueAt(x, y);
        QCOMPARE(m_loose->resultMap.Val->text(), QStringLiteral("0"));
    }
}

void tst_ResultMapView::mouseHasNoEffectWithoutAResult()
{
    m_loose->resultMap.Val->setText("before");
    m_loose->resultMap.setZRange(-3.0, 3.0);
    m_view->showValueAt(0.0, 0.0);
    QVERIFY(!doubleClick(*m_view, Qt::NoModifier));
    QCOMPARE(m_loose->resultMap.Val->text(), QStringLiteral("before"));
    QCOMPARE(m_loose->resultMap.CBar->zmax, 3.0);
}

void tst_ResultMapView::doubleClickFitsTheLimitsAndShiftOnlyRaisesThem()
{
    m_result = extendedMap(4, 2, 0.0); // C1 is quantity 9: 9 to 16 in the eight pixels
    const cBar& bar = *m_loose->resultMap.CBar;
    m_loose->resultMap.setZRange(-3.0, 30.0);
    QVERIFY(doubleClick(*m_view, Qt::ShiftModifier));
    QCOMPARE(bar.zmin, 9.0);
    QCOMPARE(bar.zmax, 30.0);
    QVERIFY(doubleClick(*m_view, Qt::NoModifier));
    QCOMPARE(bar.zmax, 16.0);
    m_loose->resultMap.setZRange(-3.0, 30.0);
    QVERIFY(doubleClick(*m_view, Qt::NoModifier, Qt::RightButton));
    QVERIFY(doubleClick(*m_view, Qt::AltModifier));
    QVERIFY(doubleClick(*m_view, Qt::ShiftModifier | Qt::ControlModifier));
    QCOMPARE(bar.zmin, -3.0);
    QCOMPARE(bar.zmax, 30.0);
}

void tst_ResultMapView::controlDoubleClickSetsThePresetLimits()
{
    m_result = extendedMap(4, 2, 0.0);
    const cBar& bar = *m_loose->resultMap.CBar;
    QVERIFY(doubleClick(*m_view, Qt::ControlModifier));
    QCOMPARE(bar.zmax, 16.0); // C1 has no preset limits, so its highest value is used
    choose(m_loose->form.MapRatio1);
    QVERIFY(doubleClick(*m_view, Qt::ControlModifier));
    QCOMPARE(bar.zmax, 1.1);
}

void tst_ResultMapView::selectingAnotherQuantityClearsTheValueAndSetsItsLimits()
{
    m_result = extendedMap(4, 2, 0.0);
    m_loose->resultMap.Val->setText("16");
    choose(m_loose->form.MapRatio1);
    m_view->showOtherQuantity();
    QVERIFY(m_loose->resultMap.Val->text().isEmpty());
    QCOMPARE(m_loose->resultMap.CBar->zmin, -0.1);
}

void tst_ResultMapView::newResultOfTheSameSizeKeepsTheView()
{
    m_result = extendedMap(4, 2, 0.0);
    paint();
    m_loose->resultMap.DispA->cc.setReal(1.0, 0.0, 2.0, 1.0);
    m_loose->resultMap.Val->setText("16");
    m_view->showNewResult(false);
    QCOMPARE(m_loose->resultMap.DispA->cc.realX0, 1.0);
    QVERIFY(m_loose->resultMap.Val->text().isEmpty());
}

void tst_ResultMapView::newResultOfAnotherSizeFitsTheView()
{
    m_result = extendedMap(4, 2, 0.0);
    paint();
    m_result = extendedMap(8, 3, 500.0);
    m_view->showNewResult(true);
    QVERIFY(m_loose->resultMap.DispA->hasScale);
    QCOMPARE(m_loose->resultMap.DispA->cc.realX1, 8.0);
    QCOMPARE(m_loose->resultMap.DispA->cc.realY1, 3.0);
    // The limits do not change, because the user might have set them.
    QCOMPARE(m_loose->resultMap.CBar->zmax, 16.0);
}

void tst_ResultMapView::showAndFitNewResultClearsTheRange()
{
    m_result = extendedMap(4, 2, 0.0);
    paint();
    m_view->showAndFitNewResult();
    QVERIFY(!m_loose->resultMap.DispA->hasScale);
}

QTEST_MAIN(tst_ResultMapView)
#include "tst_ResultMapView.moc"
