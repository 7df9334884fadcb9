// Tests of Displays, the graph window: its eleven plots, the signals it forwards, and
// its repaints.

#include "display/Displays.h"
#include "support/MemberOrder.h"
#include "support/MouseInput.h"
#include "support/SurfacePaints.h"

#include <QPointer>
#include <QSignalSpy>
#include <QStylePainter>
#include <QTest>
#include <QTranslator>

using namespace tests;

namespace
{

struct Place {
    int row = -1;
    int column = -1;
    int rowSpan = -1;
    int columnSpan = -1;

    bool operator==(const Place&) const = default;
};

Place placeOf(const Displays& graphs, QWidget* plot)
{
    Place place;
    const int index = graphs.DispL->indexOf(plot);
    if (index >= 0) {
        graphs.DispL->getItemPosition(index, &place.row, &place.column, &place.rowSpan,
                                      &place.columnSpan);
    }
    return place;
}

Displays::DispId idAt(int value)
{
    return static_cast<Displays::DispId>(value);
}

/// One emission of a mouse signal of the graph window.
struct MouseSignal {
    QString signal;
    DispABase* plot = nullptr;
    MouseC* mouse = nullptr;

    bool operator==(const MouseSignal&) const = default;
};

class MouseSignalRecorder : public QObject
{
public:
    explicit MouseSignalRecorder(Displays& graphs)
    {
        connect(&graphs, &Displays::mPressed, this, [this](DispABase* plot, MouseC* m) {
            received.append({QStringLiteral("pressed"), plot, m});
        });
        connect(&graphs, &Displays::mDragging, this, [this](DispABase* plot, MouseC* m) {
            received.append({QStringLiteral("dragging"), plot, m});
        });
        connect(&graphs, &Displays::mReleased, this, [this](DispABase* plot, MouseC* m) {
            received.append({QStringLiteral("released"), plot, m});
        });
    }

    QList<MouseSignal> received;
};

/// Puts every text of the context "Displays" in angle brackets, except the title of the
/// comparison plot.
class TitleTranslator : public QTranslator
{
public:
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        const QString text = QString::fromUtf8(source);
        const bool known = QLatin1String(context) == QLatin1String("Displays") &&
                           text != QLatin1String("LCF vs MPS");
        return known ? QLatin1Char('<') + text + QLatin1Char('>') : QString();
    }
    bool isEmpty() const override { return false; }
};

bool showAndWaitForExposure(QWidget& window)
{
    window.show();
    return QTest::qWaitForWindowExposed(&window);
}

} // namespace

class tst_Displays : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newWindowIsHiddenWithExpectedTitleSizeAndMargins();
    void signalsAndSlotsAreDeclaredInTheExpectedOrder();

    void plotHasItsGridCellAndTitle_data();
    void plotHasItsGridCellAndTitle();
    void elevenPlotsAreListedInOrderOfTheirIds();
    void plotOutsideTheGridStaysAHiddenWindow();
    void axisTitlesAreDrawnInThePlotsNotInTheStrips();
    void plotTitlesExceptTheComparisonAreTranslated();
    void frameOfUnknownIdIsNull();

    void addedPlotHasTheGivenPlaceAndSpans();
    void plotWithNegativeColumnOrRowIsNotInTheGrid_data();
    void plotWithNegativeColumnOrRowIsNotInTheGrid();
    void firstOfTwoPlotsWithTheSameIdIsFound();
    void plotListedTwiceIsDrawnUnderBothIds();

    void drawSignalPassesIdAndPlot();
    void mouseSignalsPassThePlot();
    void rightButtonReleaseIsSignalledButNotItsPress();
    void doubleClickIsNotSignalled();

    void doubleClickResetsOnlyTheRangeOfTheClickedPlot();

    void updatePaintsEachPlotInTheGridOnce();
    void updatePaintsPoppedOutPlotOnce();
    void updatePaintsPoppedOutPlotOfHiddenWindow();
    void updatePaintsPoppedOutPlotOutsideTheGrid();
    void idlePlotsAreNotPainted();

    void closedWindowIsHiddenAndCanBeReopened();
    void plotsAreDestroyedWithTheWindow();
};

void tst_Displays::newWindowIsHiddenWithExpectedTitleSizeAndMargins()
{
    const Displays graphs;
    QCOMPARE(graphs.objectName(), QStringLiteral("Displays"));
    QCOMPARE(graphs.windowTitle(), QStringLiteral("Frame"));
    QCOMPARE(graphs.size(), QSize(1100, 853));
    QCOMPARE(graphs.frameShape(), QFrame::StyledPanel);
    QCOMPARE(graphs.frameShadow(), QFrame::Raised);
    QVERIFY(graphs.isWindow());
    QVERIFY(graphs.isHidden());
    QVERIFY(!graphs.parent());
    QCOMPARE(graphs.layout(), static_cast<QLayout*>(graphs.gridLayout));
    QCOMPARE(graphs.gridLayout->contentsMargins(), QMargins(2, 2, 2, 2));
    QCOMPARE(graphs.gridLayout->horizontalSpacing(), 2);
    QCOMPARE(graphs.gridLayout->verticalSpacing(), 2);
    QCOMPARE(graphs.gridLayout->itemAtPosition(0, 0)->layout(),
             static_cast<QLayout*>(graphs.DispL));
    QCOMPARE(graphs.DispL->horizontalSpacing(), 2);
    QCOMPARE(graphs.DispL->verticalSpacing(), 2);
}

void tst_Displays::signalsAndSlotsAreDeclaredInTheExpectedOrder()
{
    const QStringList expectedSignals{
        QStringLiteral("draw(Displays::DispId,DispABase*,QStylePainter*)"),
        QStringLiteral("mPressed(DispABase*,MouseC*)"),
        QStringLiteral("mDragging(DispABase*,MouseC*)"),
        QStringLiteral("mReleased(DispABase*,MouseC*)")};
    QCOMPARE(memberNames(Displays::staticMetaObject, QMetaMethod::Signal), expectedSignals);
    const QStringList expectedSlots{
        QStringLiteral("receiveDraw(QStylePainter*)"), QStringLiteral("receiveMPressed(MouseC*)"),
        QStringLiteral("receiveMDragging(MouseC*)"), QStringLiteral("receiveMReleased(MouseC*)")};
    QCOMPARE(memberNames(Displays::staticMetaObject, QMetaMethod::Slot).first(4), expectedSlots);
}

void tst_Displays::plotHasItsGridCellAndTitle_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("title");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("columnSpan");
    const auto plot = [](const char* name, int id, int value, const char* title, int column,
                         int row, int columnSpan) {
        QTest::newRow(name) << id << value << QString::fromLatin1(title) << column << row
                            << columnSpan;
    };
    plot("DRef1", Displays::DRef1, 0, "Ref1", 0, 0, 1);
    plot("DRef2", Displays::DRef2, 1, "Ref2", 1, 0, 1);
    plot("DRef3", Displays::DRef3, 2, "Ref3", 2, 0, 1);
    plot("DRef4", Displays::DRef4, 3, "Ref4", 3, 0, 1);
    plot("DTarget", Displays::DTarget, 4, "Target", 0, 1, 1);
    plot("DMuts", Displays::DMuts, 5, "Muts", 1, 1, 2);
    plot("DLCFvs4PS", Displays::DLCFvs4PS, 6, "LCF vs MPS", 3, 1, 1);
    plot("DHistA", Displays::DHistA, 7, "Histgram of a", 0, 2, 1);
    plot("DHistDMut", Displays::DHistDMut, 8, "Histgram of dMut", 1, 2, 1);
    plot("DDMutVsA", Displays::DDMutVsA, 9, "dMut/v or a", 2, 2, 1);
}

void tst_Displays::plotHasItsGridCellAndTitle()
{
    QFETCH(int, id);
    QFETCH(QString, title);
    QFETCH(int, column);
    QFETCH(int, row);
    QFETCH(int, columnSpan);
    QTEST(id, "value");
    const Displays graphs;
    DispABase* plot = graphs.frame(idAt(id));
    QVERIFY(plot);
    QCOMPARE(plot->objectName(), QLatin1String(QTest::currentDataTag()));
    QCOMPARE(plot->Title->text(), title);
    QVERIFY(placeOf(graphs, plot) == (Place{row, column, 1, columnSpan}));
    QCOMPARE(plot->parent(), &graphs);
}

void tst_Displays::elevenPlotsAreListedInOrderOfTheirIds()
{
    const Displays graphs;
    QCOMPARE(graphs.disps.size(), 11);
    QCOMPARE(graphs.ids.size(), 11);
    for (int i = 0; i < 11; ++i) {
        QCOMPARE(static_cast<int>(graphs.ids.at(i)), i);
        QCOMPARE(graphs.frame(idAt(i)), graphs.disps.at(i));
    }
    QCOMPARE(graphs.DispL->count(), 10);
}

void tst_Displays::plotOutsideTheGridStaysAHiddenWindow()
{
    Displays graphs;
    DispABase* plane = graphs.frame(Displays::DM2M3);
    QCOMPARE(static_cast<int>(Displays::DM2M3), 10);
    QVERIFY(plane);
    QCOMPARE(plane->objectName(), QStringLiteral("DM2M3"));
    QCOMPARE(plane->Title->text(), QStringLiteral("M2/M3"));
    QVERIFY(!plane->parent());
    QVERIFY(plane->isWindow());
    QVERIFY(showAndWaitForExposure(graphs));
    QCOMPARE(graphs.DispL->indexOf(plane), -1);
    QVERIFY(!plane->isVisible());
    QVERIFY(graphs.frame(Displays::DHistA)->isVisible());
}

void tst_Displays::axisTitlesAreDrawnInThePlotsNotInTheStrips()
{
    const Displays graphs;
    for (DispABase* plot : graphs.disps) {
        QVERIFY2(plot->xTitleInArea && plot->yTitleInArea, qPrintable(plot->objectName()));
        plot->setXYTitle(QStringLiteral("Eng."), QStringLiteral("mut"));
        QCOMPARE(plot->XTitle->text(), QString());
        QCOMPARE(plot->YTitle->text(), QString());
    }
}

void tst_Displays::plotTitlesExceptTheComparisonAreTranslated()
{
    TitleTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const Displays graphs;
    QCOMPARE(graphs.frame(Displays::DRef1)->Title->text(), QStringLiteral("<Ref1>"));
    QCOMPARE(graphs.frame(Displays::DM2M3)->Title->text(), QStringLiteral("<M2/M3>"));
    // The title "LCF vs MPS" is not translated, because the translation contains it
    // only under another source text.
    QCOMPARE(graphs.frame(Displays::DLCFvs4PS)->Title->text(), QStringLiteral("LCF vs MPS"));
}

void tst_Displays::frameOfUnknownIdIsNull()
{
    const Displays graphs;
    QVERIFY(!graphs.frame(idAt(11)));
    QVERIFY(!graphs.frame(idAt(15)));
}

void tst_Displays::addedPlotHasTheGivenPlaceAndSpans()
{
    Displays graphs;
    auto* plot = new DispABase;
    graphs.addDisp(plot, QStringLiteral("More"), idAt(11), 5, 7, 2, 3);
    QVERIFY(placeOf(graphs, plot) == (Place{7, 5, 3, 2}));
    QCOMPARE(plot->Title->text(), QStringLiteral("More"));
    QVERIFY(plot->xTitleInArea && plot->yTitleInArea);
    QCOMPARE(graphs.frame(idAt(11)), plot);
    QCOMPARE(graphs.disps.last(), plot);
    QCOMPARE(graphs.ids.last(), idAt(11));
}

void tst_Displays::plotWithNegativeColumnOrRowIsNotInTheGrid_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("row");
    QTest::newRow("negative column") << -1 << 3;
    QTest::newRow("negative row") << 3 << -1;
    QTest::newRow("negative column and row") << -1 << -1;
}

void tst_Displays::plotWithNegativeColumnOrRowIsNotInTheGrid()
{
    QFETCH(int, column);
    QFETCH(int, row);
    Displays graphs;
    auto* plot = new DispABase;
    graphs.addDisp(plot, QStringLiteral("More"), idAt(11), column, row, 1, 1);
    QCOMPARE(graphs.DispL->indexOf(plot), -1);
    QVERIFY(!plot->parent());
    QCOMPARE(graphs.frame(idAt(11)), plot);
}

void tst_Displays::firstOfTwoPlotsWithTheSameIdIsFound()
{
    Displays graphs;
    auto* first = new DispABase;
    auto* second = new DispABase;
    graphs.addDisp(first, QStringLiteral("A"), idAt(11), 0, 4, 1, 1);
    graphs.addDisp(second, QStringLiteral("B"), idAt(11), 1, 4, 1, 1);
    QCOMPARE(graphs.frame(idAt(11)), first);
}

void tst_Displays::plotListedTwiceIsDrawnUnderBothIds()
{
    Displays graphs;
    auto* plot = new DispABase;
    graphs.disps.append(plot);
    graphs.ids.append(idAt(12));
    graphs.addDisp(plot, QStringLiteral("More"), idAt(11), 0, 4, 1, 1);
    QList<int> drawn;
    connect(&graphs, &Displays::draw, this,
            [&drawn](Displays::DispId id) { drawn.append(static_cast<int>(id)); });
    plot->DispA->grab();
    QCOMPARE(drawn, (QList<int>{12, 11}));
}

void tst_Displays::drawSignalPassesIdAndPlot()
{
    Displays graphs;
    QList<std::pair<Displays::DispId, DispABase*>> drawn;
    connect(&graphs, &Displays::draw, this,
            [&drawn](Displays::DispId id, DispABase* plot, QStylePainter* p) {
                QVERIFY(p->isActive());
                drawn.append({id, plot});
            });
    for (int i = 0; i < graphs.disps.size(); ++i) {
        drawn.clear();
        graphs.disps.at(i)->DispA->grab();
        QCOMPARE(drawn.size(), 1);
        QCOMPARE(drawn.first().first, graphs.ids.at(i));
        QCOMPARE(drawn.first().second, graphs.disps.at(i));
    }
}

void tst_Displays::mouseSignalsPassThePlot()
{
    Displays graphs;
    for (DispABase* plot : std::as_const(graphs.disps)) {
        const MouseSignalRecorder recorder(graphs);
        press(plot->DispA, {30, 20});
        drag(plot->DispA, {40, 20});
        release(plot->DispA, {40, 20});
        MouseC* mouse = &plot->DispA->mouse;
        QVERIFY(recorder.received ==
                (QList<MouseSignal>{{QStringLiteral("pressed"), plot, mouse},
                                    {QStringLiteral("dragging"), plot, mouse},
                                    {QStringLiteral("released"), plot, mouse}}));
    }
}

void tst_Displays::rightButtonReleaseIsSignalledButNotItsPress()
{
    Displays graphs;
    DispABase* plot = graphs.frame(Displays::DMuts);
    const MouseSignalRecorder recorder(graphs);
    press(plot->DispA, {30, 20}, Qt::RightButton);
    move(plot->DispA, {40, 20}, Qt::RightButton);
    QVERIFY(recorder.received.isEmpty());
    release(plot->DispA, {40, 20}, Qt::RightButton);
    QVERIFY(recorder.received ==
            (QList<MouseSignal>{{QStringLiteral("released"), plot, &plot->DispA->mouse}}));
}

void tst_Displays::doubleClickIsNotSignalled()
{
    Displays graphs;
    DispABase* plot = graphs.frame(Displays::DMuts);
    const MouseSignalRecorder recorder(graphs);
    const QSignalSpy plotSignals(plot, &DispABase::mDClicked);
    doubleClick(plot->DispA, {30, 20});
    QCOMPARE(plotSignals.size(), 1);
    QVERIFY(recorder.received.isEmpty());
}

void tst_Displays::doubleClickResetsOnlyTheRangeOfTheClickedPlot()
{
    Displays graphs;
    QVERIFY(showAndWaitForExposure(graphs));
    for (DispABase* plot : std::as_const(graphs.disps)) {
        plot->setRealCoord(1.0, 2.0, 3.0, 4.0);
    }
    SurfacePaints paints(graphs);
    DispABase* clicked = graphs.frame(Displays::DHistDMut);
    doubleClick(clicked->DispA, {30, 20});
    for (const DispABase* plot : std::as_const(graphs.disps)) {
        QCOMPARE(plot->DispA->hasScale, plot != clicked);
        QCOMPARE(plot->DispA->cc.realX1, 3.0);
    }
    QList<int> expected(11, 0);
    expected[Displays::DHistDMut] = 1;
    QCOMPARE(paints.counts(), expected);
    // No client is connected, so the next paint sets the automatic range of an empty
    // plot, 0 to 1.
    QCOMPARE(clicked->DispA->cc.realX1, 1.0);
    QCOMPARE(graphs.frame(Displays::DHistA)->DispA->cc.realX1, 3.0);
}

void tst_Displays::updatePaintsEachPlotInTheGridOnce()
{
    Displays graphs;
    QVERIFY(showAndWaitForExposure(graphs));
    SurfacePaints paints(graphs);
    graphs.update();
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
}

void tst_Displays::updatePaintsPoppedOutPlotOnce()
{
    Displays graphs;
    QVERIFY(showAndWaitForExposure(graphs));
    DispABase* plot = graphs.frame(Displays::DTarget);
    plot->popDock();
    QVERIFY(QTest::qWaitForWindowExposed(plot->pop));
    SurfacePaints paints(graphs);
    graphs.update();
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
    plot->popDock();
    paints.restart();
    graphs.update();
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
}

void tst_Displays::updatePaintsPoppedOutPlotOfHiddenWindow()
{
    Displays graphs;
    DispABase* plot = graphs.frame(Displays::DTarget);
    plot->popDock();
    QVERIFY(QTest::qWaitForWindowExposed(plot->pop));
    QVERIFY(!graphs.isVisible());
    SurfacePaints paints(graphs);
    graphs.update();
    QList<int> expected(11, 0);
    expected[Displays::DTarget] = 1;
    QCOMPARE(paints.counts(), expected);
}

void tst_Displays::updatePaintsPoppedOutPlotOutsideTheGrid()
{
    Displays graphs;
    QVERIFY(showAndWaitForExposure(graphs));
    DispABase* plane = graphs.frame(Displays::DM2M3);
    plane->popDock();
    QVERIFY(QTest::qWaitForWindowExposed(plane->pop));
    SurfacePaints paints(graphs);
    graphs.update();
    QCOMPARE(paints.counts(), QList<int>(11, 1));
}

void tst_Displays::idlePlotsAreNotPainted()
{
    Displays graphs;
    QVERIFY(showAndWaitForExposure(graphs));
    DispABase* plot = graphs.frame(Displays::DRef1);
    plot->popDock();
    QVERIFY(QTest::qWaitForWindowExposed(plot->pop));
    SurfacePaints paints(graphs);
    graphs.update(); // this paint must not request another one
    paints.restart();
    QTest::qWait(200);
    QCOMPARE(paints.counts(), paintsOfGridPlots(0));
}

void tst_Displays::closedWindowIsHiddenAndCanBeReopened()
{
    Displays graphs;
    QVERIFY(showAndWaitForExposure(graphs));
    QVERIFY(graphs.close());
    QTest::qWait(10);
    QVERIFY(!graphs.isVisible());
    QVERIFY(!graphs.testAttribute(Qt::WA_DeleteOnClose));
    QCOMPARE(graphs.disps.size(), 11);
    QVERIFY(showAndWaitForExposure(graphs));
    SurfacePaints paints(graphs);
    graphs.update();
    QCOMPARE(paints.counts(), paintsOfGridPlots(1));
}

void tst_Displays::plotsAreDestroyedWithTheWindow()
{
    QList<QPointer<DispABase>> plots;
    {
        const Displays graphs;
        plots = QList<QPointer<DispABase>>(graphs.disps.cbegin(), graphs.disps.cend());
        QVERIFY(!plots.contains(nullptr));
    }
    for (const QPointer<DispABase>& plot : std::as_const(plots)) {
        QVERIFY(plot.isNull());
    }
}

QTEST_MAIN(tst_Displays)
#include "tst_Displays.moc"
