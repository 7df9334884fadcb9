// Tests of the panel's plot of thickness against valence: points, their colour, grid
// and range.

#include "display/Displays.h"
#include "support/MouseInput.h"
#include "support/PlainThickness.h"
#include "support/PlotChecks.h"
#include "support/SharedPanel.h"
#include "support/SurfacePaints.h"

#include <QtTest>

using namespace tests;

namespace
{

using Points = QList<QPointF>; // valence and thickness

/// A pixel of the three-point method or of a four-point method: the fraction @p a and the
/// thickness.
A2DRow fraction(double a, double thickness)
{
    return {1.0, 2.0, a, thickness, {}};
}

/// A pixel of the non-equivalent method with the given valence and thickness. All its other
/// numbers are arbitrary.
A2DRow values(double valence, double totalDMut)
{
    return {
        1.0, 2.0, 0.25, 0.75, {.1, .2, .3, .4, .5, .6, .7, .8, .9, 1., 1.1, valence, totalDMut}};
}

} // namespace

class tst_FourPsThickness : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void pointsAreAtValenceAndTotalThickness();
    void resultWithoutExtendedFlagUsesFractionAndThickness();
    void selectedMapQuantityIsIgnored();
    void valenceUsesTheFieldsOfTheReferences();

    void pointsHaveTheCurrentColor_data();
    void pointsHaveTheCurrentColor();
    void releaseInTheComparisonPlotChangesThePointColor();

    void pointsOfACalculatedMapAreShownImmediately();

private:
    DispABase* plot() const { return m_panel->Disps->frame(Displays::DDMutVsA); }
    QImage shown() const { return plot()->DispA->grab().toImage(); }
    PlotPlace automaticPlot() const { return {plot()->DispA->size(), {1.5, -0.5, 3.5, 2.0}}; }
    bool shows(const PlainThickness& plain, const PlotPlace& view) const
    {
        return isSamePicture(shown(), plain.picture(view), view.inside());
    }
    bool showsPoints(const Points& points) const
    {
        PlainThickness plain;
        plain.points = points;
        return shows(plain, automaticPlot());
    }
    void setResult(const QList<A2DRow>& rows, bool extended) const
    {
        m_panel->BaseData.rows = rows;
        m_panel->BaseData.extended = extended;
    }
    void setValences(const QString& first, const QString& second) const
    {
        m_panel->Refs.RefRows.at(0)->Valence->setText(first);
        m_panel->Refs.RefRows.at(1)->Valence->setText(second);
    }

    const SharedPanel m_panel;
};

void tst_FourPsThickness::initTestCase()
{
    m_panel->Disps->resize(1500, 1100);
    m_panel->Disps->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_panel->Disps));
}

/// Puts two references with the valences 2 and 3 in use. There is no result, and the first
/// colour is the current one. The plot shows valences from 1.5 to 3.5 and thicknesses from -0.5
/// to 2.
void tst_FourPsThickness::init()
{
    resetPanel(*m_panel);
    clearRows(*m_panel);
    useReferences(*m_panel, {0, 1});
    for (int i = 0; i < 4; ++i) {
        makeReferenceValid(*m_panel, i);
        m_panel->Refs.RefRows.at(i)->Valence->setText(QString::number(i + 2));
    }
    m_panel->ui.HgAFrom->setText("1.5");
    m_panel->ui.HgATo->setText("3.5");
    m_panel->ui.HgTFrom->setText("-0.5");
    m_panel->ui.HgTTo->setText("2");
    QTest::qWait(10);
}

void tst_FourPsThickness::pointsAreAtValenceAndTotalThickness()
{
    setResult({values(2.1, 0.9), values(3.3, -0.4), values(1.7, 1.9)}, true);
    QVERIFY(showsPoints({{2.1, 0.9}, {3.3, -0.4}, {1.7, 1.9}}));
}

void tst_FourPsThickness::resultWithoutExtendedFlagUsesFractionAndThickness()
{
    setResult({values(2.1, 0.9)}, false);
    QVERIFY(showsPoints({{2.75, 0.75}}));
}

void tst_FourPsThickness::selectedMapQuantityIsIgnored()
{
    setResult({values(2.1, 0.9)}, true);
    m_panel->ui.MapDMut2->setChecked(true);
    QVERIFY(showsPoints({{2.1, 0.9}}));
    m_panel->ui.MapValence->setChecked(true);
}

void tst_FourPsThickness::valenceUsesTheFieldsOfTheReferences()
{
    setResult({fraction(0.3125, 1.1)}, false);
    shown();
    setValences("1.6", "2.8");
    PlainThickness plain;
    plain.lower = 1.6;
    plain.upper = 2.8;
    plain.points = {{2.425, 1.1}}; // valence 0.3125 * 1.6 + (1 - 0.3125) * 2.8
    QVERIFY(shows(plain, automaticPlot()));
}

void tst_FourPsThickness::pointsHaveTheCurrentColor_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QColor>("color");
    QTest::newRow("first colour") << 0 << QColor(0, 0, 0);
    QTest::newRow("second colour") << 1 << QColor(255, 0, 0);
    QTest::newRow("fifth colour") << 4 << QColor(200, 200, 0);
    QTest::newRow("fifteenth colour") << 14 << QColor(240, 160, 0);
    QTest::newRow("last colour") << 44 << QColor(240, 160, 0);
    QTest::newRow("second colour of the third repetition") << 31 << QColor(255, 0, 0);
}

void tst_FourPsThickness::pointsHaveTheCurrentColor()
{
    QFETCH(int, index);
    m_panel->LCFColor = index;
    setResult({values(2.1, 0.9), values(3.3, 1.4)}, true);
    PlainThickness plain;
    QFETCH(QColor, color);
    plain.color = color;
    plain.points = {{2.1, 0.9}, {3.3, 1.4}};
    QVERIFY(shows(plain, automaticPlot()));
}

void tst_FourPsThickness::releaseInTheComparisonPlotChangesThePointColor()
{
    setResult({values(2.1, 0.9)}, true);
    DispArea* comparison = m_panel->Disps->frame(Displays::DLCFvs4PS)->DispA;
    press(comparison, {20, 20});
    release(comparison, {20, 20});
    PlainThickness plain;
    plain.color = QColor(255, 0, 0);
    plain.points = {{2.1, 0.9}};
    QVERIFY(shows(plain, automaticPlot()));
}

// The map has one pixel with a = 1/2, valences 2 and 3, and thickness 1.
void tst_FourPsThickness::pointsOfACalculatedMapAreShownImmediately()
{
    prepareThreePointMaps(*m_panel);
    SurfacePaints paints(*m_panel->Disps);
    m_panel->calcMap();
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    QCOMPARE(m_panel->BaseData.rows.size(), 1);
    QVERIFY(showsPoints({{2.5, 1.0}}));
}

QTEST_MAIN(tst_FourPsThickness)
#include "tst_FourPsThickness.moc"
