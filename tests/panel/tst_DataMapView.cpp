// Tests of the window of the measured map, with separate widgets instead of the panel.

#include "panel/DataMapView.h"
#include "panel/InputReader.h"
#include "support/AbsorbanceMap.h"
#include "support/UnconnectedWidgets.h"

#include <QImage>
#include <QTest>

using namespace tests;

class tst_DataMapView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { m_loose->reset(); }
    void cleanupTestCase() { m_loose.reset(); }

    void unloadedMapIsDrawnWhite();
    void firstPaintFitsViewAndLimitsToTheMap();
    void gridIsDrawnIfItsBoxIsChecked();
    void valueIsReadFromTheRowWhoseShowMapButtonIsChecked();
    void valueIsReadFromThePixelAtThePosition();
    void valueOutsideTheMapIsMinusOne();
    void valueIsUnchangedWithoutAMap();
    void showingAnotherMapClearsRangeAndValue();

private:
    void load(int row, const A2DData& map);
    QImage paint();

    std::unique_ptr<UnconnectedWidgets> m_loose;
    std::unique_ptr<panel::InputReader> m_inputs;
    std::unique_ptr<panel::DataMapView> m_view;
};

void tst_DataMapView::initTestCase()
{
    m_loose = std::make_unique<UnconnectedWidgets>();
    m_inputs = std::make_unique<panel::InputReader>(m_loose->list);
    m_view = std::make_unique<panel::DataMapView>(m_loose->list, *m_inputs);
    connect(&m_loose->dataMap, &DispMBase::draw, m_loose->form.MapWGrid,
            [this](QStylePainter* p) { m_view->draw(p); });
    m_loose->dataMap.resize(400, 400);
}

void tst_DataMapView::load(int row, const A2DData& map)
{
    static_cast<A2DData&>(*m_loose->point(row)) = map;
    m_loose->point(row)->loaded = true;
}

QImage tst_DataMapView::paint()
{
    return m_loose->dataMap.DispA->grab().toImage();
}

void tst_DataMapView::unloadedMapIsDrawnWhite()
{
    load(0, absorbanceMap(2, 1, {3, 5}));
    m_loose->point(0)->loaded = false;
    const QImage picture = paint();
    QCOMPARE(picture.pixelColor(picture.width() / 2, picture.height() / 2), QColor(Qt::white));
    QVERIFY(!m_loose->dataMap.DispA->hasScale);
}

void tst_DataMapView::firstPaintFitsViewAndLimitsToTheMap()
{
    load(0, absorbanceMap(3, 1, {3, 5, 4}));
    const QImage picture = paint();
    const DispMBase& window = m_loose->dataMap;
    QCOMPARE(window.DispA->cc.realX1, 3.0);
    QCOMPARE(window.DispA->cc.realY1, 1.0);
    QCOMPARE(window.CBar->zmin, 3.0);
    QCOMPARE(window.CBar->zmax, 5.0);
    QCOMPARE(picture.pixelColor(picture.width() / 2, picture.height() / 2),
             window.CBar->color(5.0));
    load(0, absorbanceMap(3, 1, {30, 50, 40}));
    paint();
    QCOMPARE(window.CBar->zmax, 5.0); // not 50: the first paint fixed the range
}

void tst_DataMapView::gridIsDrawnIfItsBoxIsChecked()
{
    load(0, absorbanceMap(2, 1, {3, 5}));
    const QImage plain = paint();
    m_loose->form.MapWGrid->setChecked(true);
    const QImage withGrid = paint();
    const QColor grid(200, 200, 200);
    QVERIFY(plain.pixelColor(plain.width() / 2, plain.height() / 2) != grid);
    QCOMPARE(withGrid.pixelColor(plain.width() / 2, plain.height() / 2), grid);
}

void tst_DataMapView::valueIsReadFromTheRowWhoseShowMapButtonIsChecked()
{
    load(0, absorbanceMap(1, 1, {3}));
    load(6, absorbanceMap(1, 1, {7}));
    m_loose->point(6)->ShowMapB->setChecked(true);
    m_view->showValueAt(0.0, 0.0);
    QCOMPARE(m_loose->dataMap.Val->text(), QStringLiteral("7"));
}

void tst_DataMapView::valueIsReadFromThePixelAtThePosition()
{
    load(0, absorbanceMap(2, 2, {1, 2, 3, 4.5}));
    m_view->showValueAt(1.9, 1.0);
    QCOMPARE(m_loose->dataMap.Val->text(), QStringLiteral("4.5"));
}

void tst_DataMapView::valueOutsideTheMapIsMinusOne()
{
    load(0, absorbanceMap(2, 2, {1, 2, 3, 4}));
    for (const auto& [x, y] : {std::pair(-0.1, 0.0), {2.0, 0.0}, {0.0, 2.0}}) {
        m_loose->dataMap.Val->setText("before");
        m_view->showValueAt(x, y);
        QCOMPARE(m_loose->dataMap.Val->text(), QStringLiteral("-1"));
    }
}

void tst_DataMapView::valueIsUnchangedWithoutAMap()
{
    m_loose->dataMap.Val->setText("before");
    m_view->showValueAt(0.0, 0.0);
    QCOMPARE(m_loose->dataMap.Val->text(), QStringLiteral("before"));
}

void tst_DataMapView::showingAnotherMapClearsRangeAndValue()
{
    load(0, absorbanceMap(2, 1, {3, 5}));
    paint();
    m_loose->dataMap.Val->setText("5");
    m_view->showOtherMap();
    QVERIFY(!m_loose->dataMap.DispA->hasScale);
    QVERIFY(m_loose->dataMap.Val->text().isEmpty());
}

QTEST_MAIN(tst_DataMapView)
#include "tst_DataMapView.moc"
