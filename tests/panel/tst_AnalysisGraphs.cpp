// Tests of the graphs of the analysis, drawn on separate widgets without the panel.

#include "display/CColors.h"
#include "display/Histgram.h"
#include "display/Legend.h"
#include "panel/AnalysisGraphs.h"
#include "panel/InputReader.h"
#include "support/UnconnectedWidgets.h"

#include <QImage>
#include <QTest>

using namespace tests;

class tst_AnalysisGraphs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase() { m_loose.reset(); }

    void emptyGraphsKeepTheirRange_data();
    void emptyGraphsKeepTheirRange();
    void allSpectraPlotShowsTheEnergyWindowAroundTheEdge();
    void comparisonRangeSpansTheValencesOfTheUsedReferences();
    void histogramRangeIsSetByItsLimitFields();
    void thicknessVsValenceRangeIsSetByBothHistogramLimits();
    void referencePlaneSpansTheMutsOfTheTwoUsedReferences();
    void axisTitlesNameTheirQuantities_data();
    void axisTitlesNameTheirQuantities();
    void plotsOfTheSpectrumRowsAreNotDrawn();
    void pressOnALegendLineTogglesItsSpectrum();

private:
    void fillAllGraphs();
    void makeSpectrum(AMutE& spectrum);
    /// Paints plot @p id, which has no fixed range. Returns the automatic range that the paint
    /// calculates, or @p before if it calculates none.
    display::Graph::Range rangeOf(Displays::DispId id, display::Graph::Range before = {});

    std::unique_ptr<UnconnectedWidgets> m_loose;
    std::unique_ptr<panel::InputReader> m_inputs;
    std::unique_ptr<panel::AnalysisGraphs> m_graphs;
    std::unique_ptr<Histgram> m_valence;
    std::unique_ptr<Histgram> m_thickness;
    A2DData m_result;
    QList<AMutE*> m_shownOnly;
    QList<LCFPoint> m_comparison;
    CColors m_colors;
};

void tst_AnalysisGraphs::initTestCase()
{
    m_loose = std::make_unique<UnconnectedWidgets>();
    m_inputs = std::make_unique<panel::InputReader>(m_loose->list);
    m_graphs = std::make_unique<panel::AnalysisGraphs>(m_loose->list, *m_inputs);
}

void tst_AnalysisGraphs::init()
{
    m_loose->reset();
    const Ui_FourPs& form = m_loose->form;
    m_valence = std::make_unique<Histgram>(form.HgAFrom, form.HgATo, form.HgABoxes, form.HgAAuto);
    m_thickness = std::make_unique<Histgram>(form.HgTFrom, form.HgTTo, form.HgTBoxes, form.HgTAuto);
    m_result = {};
    m_comparison.clear();
    form.EdgeE->setText("8350");
    form.PreEEndDE->setText("-50");
    form.PostEStartDE->setText("100");
    for (int i = 0; i < 4; ++i) {
        m_loose->reference(i)->UseCB->setChecked(i == 1 || i == 2);
        m_loose->reference(i)->Valence->setText(QString::number(i + 1));
    }
}

void tst_AnalysisGraphs::makeSpectrum(AMutE& spectrum)
{
    spectrum.valid = true;
    spectrum.points = {{10.0, 8310.0, 0.0}, {10.1, 8400.0, 2.0}};
}

void tst_AnalysisGraphs::fillAllGraphs()
{
    m_loose->form.NNone->setChecked(true);
    makeSpectrum(*m_loose->reference(1)->XafsFS);
    m_comparison = {{0.5, 2.5, 0.5, 2.5, 0}};
    for (Histgram* histogram : {m_valence.get(), m_thickness.get()}) {
        histogram->fromEdit->setText("1");
        histogram->toEdit->setText("4");
        histogram->boxesEdit->setText("3");
        histogram->init();
        for (int i = 0; i < 10; ++i) {
            histogram->add(2.0);
        }
    }
    m_thickness->toEdit->setText("7");
    m_loose->form.HgValence->setChecked(true);
    m_loose->form.HgAmount->setChecked(true);
    m_result.xNum = m_result.yNum = 1;
    m_result.rows.append(A2DRow());
}

display::Graph::Range tst_AnalysisGraphs::rangeOf(Displays::DispId id, display::Graph::Range before)
{
    const QList<Histgram*> none;
    const panel::GraphData data{
        m_result,           m_shownOnly,         nullptr, m_comparison, 0, m_colors,
        {*m_valence, none}, {*m_thickness, none}};
    DispABase* plot = m_loose->graphs.frame(id);
    plot->DispA->hasScale = false;
    const auto drawn = connect(plot, &DispABase::draw, this, [&](QStylePainter* p) {
        m_graphs->draw(id, plot, p, data, &before);
    });
    plot->DispA->resize(300, 200);
    plot->DispA->grab();
    disconnect(drawn);
    return before;
}

void tst_AnalysisGraphs::emptyGraphsKeepTheirRange_data()
{
    QTest::addColumn<Displays::DispId>("id");
    QTest::newRow("all spectra") << Displays::DMuts;
    QTest::newRow("comparison") << Displays::DLCFvs4PS;
    QTest::newRow("valence") << Displays::DHistA;
    QTest::newRow("thickness") << Displays::DHistDMut;
    QTest::newRow("thickness against valence") << Displays::DDMutVsA;
}

void tst_AnalysisGraphs::emptyGraphsKeepTheirRange()
{
    QFETCH(const Displays::DispId, id);
    const display::Graph::Range range = rangeOf(id, {1.0, 2.0, 3.0, 4.0});
    QCOMPARE(range.x0, 1.0);
    QCOMPARE(range.y1, 4.0);
    QVERIFY(!m_loose->graphs.frame(id)->DispA->cc.drawn);
}

void tst_AnalysisGraphs::allSpectraPlotShowsTheEnergyWindowAroundTheEdge()
{
    fillAllGraphs();
    const display::Graph::Range range = rangeOf(Displays::DMuts);
    QCOMPARE(range.x0, 8300.0);
    QCOMPARE(range.x1, 8450.0);
    QCOMPARE(range.y0, -0.1); // the values are 0 to 2; 5 % of this span is added on each side
    QCOMPARE(range.y1, 2.1);
}

void tst_AnalysisGraphs::comparisonRangeSpansTheValencesOfTheUsedReferences()
{
    fillAllGraphs();
    const display::Graph::Range range = rangeOf(Displays::DLCFvs4PS);
    QCOMPARE(range.x0, 1.8);
    QCOMPARE(range.x1, 3.2);
    QCOMPARE(range.y1, 3.2);
}

void tst_AnalysisGraphs::histogramRangeIsSetByItsLimitFields()
{
    fillAllGraphs();
    display::Graph::Range range = rangeOf(Displays::DHistA);
    QCOMPARE(range.x0, 1.0);
    QCOMPARE(range.x1, 4.0);
    QCOMPARE(range.y1, 11.0);
    range = rangeOf(Displays::DHistDMut);
    QCOMPARE(range.x1, 7.0);
    m_loose->form.HgAmount->setChecked(false);
    rangeOf(Displays::DHistDMut);
    QVERIFY(!m_loose->graphs.frame(Displays::DHistDMut)->DispA->cc.drawn);
}

void tst_AnalysisGraphs::thicknessVsValenceRangeIsSetByBothHistogramLimits()
{
    fillAllGraphs();
    const display::Graph::Range range = rangeOf(Displays::DDMutVsA);
    QCOMPARE(range.x1, 4.0);
    QCOMPARE(range.y1, 7.0);
}

void tst_AnalysisGraphs::referencePlaneSpansTheMutsOfTheTwoUsedReferences()
{
    m_loose->point(0)->Mut2->setText("10");
    m_loose->point(0)->Mut3->setText("100");
    const display::Graph::Range range = rangeOf(Displays::DM2M3);
    QCOMPARE(range.x1, 11.0); // the values are 0 to 10; 10 % of this span is added on each side
    QCOMPARE(range.y1, 110.0);
    m_loose->reference(2)->UseCB->setChecked(false);
    rangeOf(Displays::DM2M3);
    QVERIFY(!m_loose->graphs.frame(Displays::DM2M3)->DispA->cc.drawn);
}

void tst_AnalysisGraphs::axisTitlesNameTheirQuantities_data()
{
    QTest::addColumn<Displays::DispId>("id");
    QTest::addColumn<QString>("x");
    QTest::addColumn<QString>("y");
    QTest::newRow("all spectra") << Displays::DMuts << "Eng.[eV]"
                                 << "mut";
    QTest::newRow("comparison") << Displays::DLCFvs4PS << "LCF"
                                << "MPs";
    QTest::newRow("valence") << Displays::DHistA << "Valence"
                             << "Num.";
    QTest::newRow("thickness") << Displays::DHistDMut << "Thick."
                               << "Num.";
    QTest::newRow("thickness against valence") << Displays::DDMutVsA << "Valence"
                                               << "Thick.";
    QTest::newRow("plane of two references") << Displays::DM2M3 << "M2"
                                             << "M3";
}

void tst_AnalysisGraphs::axisTitlesNameTheirQuantities()
{
    QFETCH(const Displays::DispId, id);
    fillAllGraphs();
    rangeOf(id);
    QTEST(m_loose->graphs.frame(id)->xTitle, "x");
    QTEST(m_loose->graphs.frame(id)->yTitle, "y");
}

void tst_AnalysisGraphs::plotsOfTheSpectrumRowsAreNotDrawn()
{
    fillAllGraphs();
    for (const auto id : {Displays::DRef1, Displays::DRef4, Displays::DTarget}) {
        QCOMPARE(rangeOf(id, {1.0, 2.0, 3.0, 4.0}).x1, 3.0);
    }
}

void tst_AnalysisGraphs::pressOnALegendLineTogglesItsSpectrum()
{
    fillAllGraphs();
    AMutE shownOnly;
    makeSpectrum(shownOnly);
    m_shownOnly = {&shownOnly};
    rangeOf(Displays::DMuts);
    const display::Legend legend(m_loose->graphs.frame(Displays::DMuts)->DispA->cc);
    m_graphs->switchSpectrumAt(legend.box(1).center().toPoint(), m_shownOnly);
    QVERIFY(m_loose->reference(1)->XafsFS->switchedOn);
    QVERIFY(!shownOnly.switchedOn);
    m_graphs->switchSpectrumAt(legend.box(0).center().toPoint(), m_shownOnly);
    QVERIFY(!m_loose->reference(1)->XafsFS->switchedOn);
    m_shownOnly.clear();
}

QTEST_MAIN(tst_AnalysisGraphs)
#include "tst_AnalysisGraphs.moc"
