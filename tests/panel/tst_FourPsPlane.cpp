// Tests of the panel's plot of the absorption of one reference against another: points,
// lines and range.

#include "display/Displays.h"
#include "support/PlainStrokes.h"
#include "support/PlotChecks.h"
#include "support/SharedPanel.h"

#include <QtTest>

#include <optional>

using namespace tests;

namespace
{

const QColor red(255, 0, 0);
const QColor blue(0, 0, 255);
const QColor yellow(255, 255, 0);
const QColor magenta(255, 0, 255);
const QColor cyan(0, 255, 255);

/// The line y = slope * x + constant.
struct Line {
    double slope = 0.0;
    double constant = 0.0;
};

struct PlainPlane {
    QImage picture(const PlotPlace& plot) const
    {
        QImage image = whitePicture(plot.size);
        QPainter p(&image);
        p.setPen(Qt::black);
        plainHorizontal(&p, plot, 0.0);
        plainVertical(&p, plot, 0.0);
        drawLine(&p, plot, k1, yellow);
        drawLine(&p, plot, k2, magenta);
        drawLine(&p, plot, ab, cyan);
        for (int i = 0; i < points.size(); ++i) {
            p.setPen(vRows.contains(i) ? red : blue);
            plainMark(&p, plot, points.at(i).x(), points.at(i).y());
        }
        return image;
    }

    QList<QPointF> points;
    QList<int> vRows;
    std::optional<Line> k1;
    std::optional<Line> k2;
    std::optional<Line> ab;

private:
    static void drawLine(QPainter* p, const PlotPlace& plot, const std::optional<Line>& line,
                         const QColor& color)
    {
        if (!line) {
            return;
        }
        const auto place = [&](double x) {
            return plot.pixel(x, line->slope * x + line->constant);
        };
        p->setPen(color);
        p->drawLine(place(plot.range.x0), place(plot.range.x1));
    }
};

/// The points of the eight energy rows: x is mut of the first reference, y is mut of the
/// second reference. Rows 0 to 3 are in use. Row 2 is the V row. Rows 0, 1 and 3 are on the
/// line y = 0.5 x + 0.3.
const QList<QPointF> usualPoints{{0.2, 0.4},  {1.4, 1.0},  {0.9, 1.35}, {2.0, 1.3},
                                 {-0.4, 0.9}, {1.7, -0.2}, {2.4, 1.9},  {0.6, 2.2}};

} // namespace

class tst_FourPsPlane : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void pointsAndLinesOfTheEnergyRowsAreDrawn();
    void axesShowTheFirstTwoUsedReferences_data();
    void axesShowTheFirstTwoUsedReferences();
    void plotIsDrawnEvenIfTheSpectraAreInvalid();
    void unusedRowsHaveAPointButNoLines();
    void targetColumnAndEnergiesAreIgnored();

    void unusedVPointIsRedAndHasNoLine();
    void lineK2PassesThroughTheLastUsedVPoint();

private:
    DispABase* plot() const { return m_panel->Disps->frame(Displays::DM2M3); }
    QImage shown() const { return plot()->DispA->grab().toImage(); }
    /// The plot area with the automatic range of usualPoints. Their x values are -0.4 to 2.4
    /// and their y values -0.2 to 2.2; a tenth of each span is added on each side.
    PlotPlace usualView() const { return {plot()->DispA->size(), {-0.68, -0.44, 2.68, 2.44}}; }
    /// The expected plot. Line k1 passes through the origin, and its slope is the edge jump of the
    /// second reference divided by the edge jump of the first. Line k2 passes through the
    /// origin and the V point, and line ab through the points of the other rows in use.
    static PlainPlane usualPlane()
    {
        return {usualPoints, {2}, Line{2.0 / 1.5}, Line{1.35 / 0.9}, Line{0.5, 0.3}};
    }
    bool shows(const PlainPlane& plain, const PlotPlace& view) const
    {
        return isSamePicture(shown(), plain.picture(view), view.inside());
    }
    void setMuts(int column, const QStringList& texts) const
    {
        for (int row = 0; row < 8; ++row) {
            m_panel->EPoints.at(row)->mutEdits.at(column)->setText(texts.at(row));
        }
    }
    void setPoints(const QList<QPointF>& points, int first = 0, int second = 1) const
    {
        for (int row = 0; row < 8; ++row) {
            const AEPoint* point = m_panel->EPoints.at(row);
            point->mutEdits.at(first)->setText(QString::number(points.at(row).x()));
            point->mutEdits.at(second)->setText(QString::number(points.at(row).y()));
        }
    }
    void markVPoints(const QList<int>& rows) const
    {
        for (int row = 0; row < 8; ++row) {
            m_panel->EPoints.at(row)->VPointCB->setChecked(rows.contains(row));
        }
    }

    const SharedPanel m_panel;
};

void tst_FourPsPlane::initTestCase()
{
    plot()->resize(460, 420);
    plot()->show();
    QVERIFY(QTest::qWaitForWindowExposed(plot()));
}

void tst_FourPsPlane::init()
{
    resetPanel(*m_panel);
    clearRows(*m_panel);
    useReferences(*m_panel, {0, 1});
    const QList<double> jumps{1.5, 2.0, 3.0, 4.0};
    for (int i = 0; i < 4; ++i) {
        makeReferenceValid(*m_panel, i, jumps.at(i));
        setMuts(i, QStringList(8, QStringLiteral("5.5")));
    }
    for (AEPoint* row : std::as_const(m_panel->EPoints)) {
        row->MutT->setText("0.7");
    }
    setPoints(usualPoints);
    useRows(*m_panel, {0, 1, 2, 3});
    markVPoints({2});
}

void tst_FourPsPlane::pointsAndLinesOfTheEnergyRowsAreDrawn()
{
    QVERIFY(shows(usualPlane(), usualView()));
}

void tst_FourPsPlane::axesShowTheFirstTwoUsedReferences_data()
{
    QTest::addColumn<QList<int>>("used");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::addColumn<double>("k1"); // slope of line k1: second edge jump / first
    QTest::newRow("references 1 and 2") << QList<int>{0, 1} << 0 << 1 << 2.0 / 1.5;
    QTest::newRow("references 1 and 3") << QList<int>{0, 2} << 0 << 2 << 2.0;
    QTest::newRow("references 2 and 4") << QList<int>{1, 3} << 1 << 3 << 2.0;
    QTest::newRow("references 3 and 4") << QList<int>{2, 3} << 2 << 3 << 4.0 / 3.0;
    QTest::newRow("references 2 and 3, the first two of three")
        << QList<int>{1, 2, 3} << 1 << 2 << 1.5;
    QTest::newRow("references 1 and 2, the first two of four")
        << QList<int>{0, 1, 2, 3} << 0 << 1 << 2.0 / 1.5;
}

void tst_FourPsPlane::axesShowTheFirstTwoUsedReferences()
{
    QFETCH(QList<int>, used);
    QFETCH(int, first);
    QFETCH(int, second);
    QFETCH(double, k1);
    for (int i = 0; i < 4; ++i) {
        setMuts(i, QStringList(8, QStringLiteral("5.5")));
    }
    setPoints(usualPoints, first, second);
    useReferences(*m_panel, used);
    PlainPlane plain = usualPlane();
    plain.k1 = Line{k1};
    QVERIFY(shows(plain, usualView()));
}

void tst_FourPsPlane::plotIsDrawnEvenIfTheSpectraAreInvalid()
{
    for (int i = 0; i < 4; ++i) {
        m_panel->XafsFiles.at(i)->valid = false;
    }
    QVERIFY(shows(usualPlane(), usualView()));
}

void tst_FourPsPlane::unusedRowsHaveAPointButNoLines()
{
    useRows(*m_panel, {});
    PlainPlane plain = usualPlane();
    plain.k2.reset();
    plain.ab.reset();
    QVERIFY(shows(plain, usualView()));
    useRows(*m_panel, {0, 1, 2, 3, 4, 5, 6, 7});
    QVERIFY(countOf(shown(), usualView().inside(), blue) >= 7 * 8);
}

void tst_FourPsPlane::targetColumnAndEnergiesAreIgnored()
{
    for (AEPoint* row : std::as_const(m_panel->EPoints)) {
        row->MutT->setText("-9");
        row->Energy->setText("0");
    }
    QVERIFY(shows(usualPlane(), usualView()));
}

void tst_FourPsPlane::unusedVPointIsRedAndHasNoLine()
{
    useRows(*m_panel, {0, 1, 3});
    PlainPlane plain = usualPlane();
    plain.k2.reset();
    QVERIFY(shows(plain, usualView()));
}

// All V points are red, and line ab is not fitted to any of them. Line k2 passes through the
// last V point in use.
void tst_FourPsPlane::lineK2PassesThroughTheLastUsedVPoint()
{
    useRows(*m_panel, {0, 1, 2, 3, 6, 7});
    markVPoints({2, 6, 7});
    PlainPlane plain = usualPlane();
    plain.vRows = {2, 6, 7};
    plain.k2 = Line{2.2 / 0.6};
    QVERIFY(shows(plain, usualView()));
    useRows(*m_panel, {0, 1, 2, 3, 6});
    plain.k2 = Line{1.9 / 2.4};
    QVERIFY(shows(plain, usualView()));
}

QTEST_MAIN(tst_FourPsPlane)
#include "tst_FourPsPlane.moc"
