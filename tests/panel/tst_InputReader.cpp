// Tests of the values that InputReader reads from the input widgets, without the panel.

#include "analysis/CalculationState.h"
#include "panel/InputReader.h"
#include "support/UnconnectedWidgets.h"

#include <QTest>

using namespace tests;

class tst_InputReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_loose = std::make_unique<UnconnectedWidgets>(); }
    void init() { m_loose->reset(); }
    void cleanupTestCase() { m_loose.reset(); }

    void energyPointsAreReadFromTheirRows();
    void unparsableTextIsReadAsZero();
    void onlyARowWithALoadedMapHasAMap();
    void referencesAreReadFromTheirRows();
    void methodsAreReadFromTheRadios();
    void calculationStatePointsToTheDataOfTheRows();
    void limitFieldsAreRelativeToTheEdge();
    void checkedRadioSelectsTheNormMode_data();
    void checkedRadioSelectsTheNormMode();
    void shownMapRowIsTheFirstCheckedRowOrZero();
    void quantityIsTheIndexOfTheCheckedRadioOrZero();
    void lastOfSeveralCheckedQuantitiesIsUsed();
    void wantedColumnsAreInTheOrderOfTheOutputFile();
    void histogramsAreIndexedByUsedReferences();
    void checkedRatioHistogramOfTheHighestRowIsUsed();
    void repeatedReadReturnsTheChangedText();

private:
    std::unique_ptr<UnconnectedWidgets> m_loose;
};

void tst_InputReader::energyPointsAreReadFromTheirRows()
{
    const UnconnectedWidgets& loose = *m_loose;
    const AEPoint* row = loose.point(5);
    row->UseCB->setChecked(true);
    row->VPointCB->setChecked(true);
    row->LCFCB->setChecked(true);
    row->Energy->setText("8404.5");
    row->Mut1->setText("1");
    row->Mut2->setText("2");
    row->Mut3->setText("3");
    row->Mut4->setText("4");
    row->MutT->setText("-0.5");

    const QList<analysis::PointState> points = panel::InputReader(loose.list).points();

    QCOMPARE(points.size(), 8);
    const analysis::PointState& point = points.at(5);
    QVERIFY(point.used && point.vPoint && point.inFit && !point.hasMap);
    QCOMPARE(point.energy, 8404.5);
    QCOMPARE(point.mut, (std::array<double, 4>{1.0, 2.0, 3.0, 4.0}));
    QCOMPARE(point.mutT, -0.5);
    const analysis::PointState& other = points.at(4);
    QVERIFY(!other.used && !other.vPoint && !other.inFit && !other.hasMap);
    QCOMPARE(other.energy, 0.0);
}

void tst_InputReader::unparsableTextIsReadAsZero()
{
    const UnconnectedWidgets& loose = *m_loose;
    loose.point(0)->Energy->setText("8313 eV");
    loose.point(0)->Mut1->setText("one");
    loose.point(0)->MutT->setText("0,5");
    loose.reference(0)->Valence->setText("two");
    loose.form.EdgeE->setText("edge");
    loose.form.PreEEndDE->setText("-50");
    const panel::InputReader reader(loose.list);

    QCOMPARE(reader.points().first().energy, 0.0);
    QCOMPARE(reader.points().first().mut.front(), 0.0);
    QCOMPARE(reader.points().first().mutT, 0.0);
    loose.reference(0)->UseCB->setChecked(true);
    QCOMPARE(reader.references().used(0)->valence, 0.0);
    QCOMPARE(reader.edge().energy, 0.0);
    QCOMPARE(reader.edge().preEdgeEnd, -50.0);
}

void tst_InputReader::onlyARowWithALoadedMapHasAMap()
{
    const UnconnectedWidgets& loose = *m_loose;
    loose.point(7)->loaded = true;
    const QList<analysis::PointState> points = panel::InputReader(loose.list).points();
    QVERIFY(points.at(7).hasMap);
    QVERIFY(!points.at(6).hasMap);
}

void tst_InputReader::referencesAreReadFromTheirRows()
{
    const UnconnectedWidgets& loose = *m_loose;
    for (int i = 0; i < 4; ++i) {
        loose.reference(i)->UseCB->setChecked(i == 1 || i == 3);
    }
    loose.reference(3)->Valence->setText("2.5");
    AXafsFileSelect* spectrum = loose.reference(3)->XafsFS;
    spectrum->valid = true;
    spectrum->edgeEnergy = 8333.0;
    spectrum->preLine = {};
    spectrum->postLine = {0.75, 0.0, 0.0};

    const analysis::ReferenceSet references = panel::InputReader(loose.list).references();

    QCOMPARE(references.usedRow(0), 1);
    QCOMPARE(references.usedRow(1), 3);
    QCOMPARE(references.validCount(), 1);
    QVERIFY(!references.used(0)->valid);
    QCOMPARE(references.used(1)->valence, 2.5);
    QCOMPARE(references.used(1)->edgeJump, 0.75);
}

void tst_InputReader::methodsAreReadFromTheRadios()
{
    const UnconnectedWidgets& loose = *m_loose;
    const panel::InputReader reader(loose.list);
    loose.form.TypeNonEquiv->setChecked(true);
    loose.form.TypeTMKisExact->setChecked(true);
    analysis::MethodRadios radios = reader.calculationState().radios;
    QVERIFY(radios.nonEquivalent && radios.exact);
    QVERIFY(!radios.leastSquare && !radios.linearBackground);
    loose.form.TypeNonEquiv->setChecked(false);
    loose.form.TypeTMKisExact->setChecked(false);
    loose.form.TypeTMKisLS->setChecked(true);
    loose.form.NonEquivBGLinear->setChecked(true);
    radios = reader.calculationState().radios;
    QVERIFY(!radios.nonEquivalent && !radios.exact);
    QVERIFY(radios.leastSquare && radios.linearBackground);
}

void tst_InputReader::calculationStatePointsToTheDataOfTheRows()
{
    const UnconnectedWidgets& loose = *m_loose;
    loose.form.SubPostEforTarget->setChecked(true);
    const analysis::CalculationState state = panel::InputReader(loose.list).calculationState();
    QCOMPARE(state.points.size(), 8);
    QCOMPARE(state.maps.size(), 8);
    QCOMPARE(state.maps.at(7), static_cast<const A2DData*>(loose.point(7)));
    QCOMPARE(state.spectra.size(), 4);
    QCOMPARE(state.spectra.at(3), static_cast<const AMutE*>(loose.reference(3)->XafsFS));
    QCOMPARE(state.target, static_cast<const AMutE*>(loose.form.TargetFile));
    QVERIFY(state.subPostForTarget);
    QVERIFY(!state.subPostForRef);
}

void tst_InputReader::limitFieldsAreRelativeToTheEdge()
{
    const UnconnectedWidgets& loose = *m_loose;
    loose.form.EdgeE->setText("8350");
    loose.form.PreEEndDE->setText("-50");
    loose.form.PostEStartDE->setText("100");
    const panel::InputReader::Edge edge = panel::InputReader(loose.list).edge();
    QCOMPARE(edge.energy, 8350.0);
    QCOMPARE(edge.preEdgeEnd, 8300.0);
    QCOMPARE(edge.postEdgeStart, 8450.0);
}

void tst_InputReader::checkedRadioSelectsTheNormMode_data()
{
    QTest::addColumn<int>("radio");
    QTest::addColumn<int>("mode");
    QTest::newRow("no normalisation") << 0 << 0;
    QTest::newRow("pre-edge line subtracted") << 1 << 1;
    QTest::newRow("divided by the edge jump") << 2 << 3;
    QTest::newRow("divided by the difference of the lines") << 3 << 4;
    QTest::newRow("no radio button is checked") << -1 << 5;
}

void tst_InputReader::checkedRadioSelectsTheNormMode()
{
    QFETCH(const int, radio);
    const UnconnectedWidgets& loose = *m_loose;
    const QList<QAbstractButton*> radios = loose.normRadios.buttons();
    for (int i = 0; i < radios.size(); ++i) {
        radios.at(i)->setChecked(i == radio);
    }
    QTEST(panel::InputReader(loose.list).normMode(), "mode");
}

void tst_InputReader::shownMapRowIsTheFirstCheckedRowOrZero()
{
    const UnconnectedWidgets& loose = *m_loose;
    const panel::InputReader reader(loose.list);
    QCOMPARE(reader.checkedMapRow(), 0);
    for (const int row : {6, 3}) {
        loose.point(row)->ShowMapB->setChecked(true);
        QCOMPARE(reader.checkedMapRow(), row);
    }
}

void tst_InputReader::quantityIsTheIndexOfTheCheckedRadioOrZero()
{
    const UnconnectedWidgets& loose = *m_loose;
    const Ui_FourPs& form = loose.form;
    const QList<QRadioButton*> radios{
        form.MapRatio1, form.MapRatio2,  form.MapRatio3, form.MapRatio4, form.MapDMut1,
        form.MapDMut2,  form.MapDMut3,   form.MapDMut4,  form.MapMut0,   form.MapC1,
        form.MapC2,     form.MapValence, form.MapAmount};
    const panel::InputReader reader(loose.list);
    for (int i = 0; i < radios.size(); ++i) {
        for (QRadioButton* radio : radios) {
            radio->setChecked(radio == radios.at(i));
        }
        QCOMPARE(reader.kindOfMap(), i);
    }
    radios.last()->setChecked(false);
    QCOMPARE(reader.kindOfMap(), 0);
}

void tst_InputReader::lastOfSeveralCheckedQuantitiesIsUsed()
{
    const UnconnectedWidgets& loose = *m_loose;
    for (QRadioButton* radio : {loose.form.MapRatio2, loose.form.MapMut0, loose.form.MapDMut1}) {
        radio->setChecked(true);
    }
    QCOMPARE(panel::InputReader(loose.list).kindOfMap(), 8);
}

void tst_InputReader::wantedColumnsAreInTheOrderOfTheOutputFile()
{
    const UnconnectedWidgets& loose = *m_loose;
    const Ui_FourPs& form = loose.form;
    const QList<QCheckBox*> boxes{form.RecRatio1, form.RecRatio2, form.RecRatio3, form.RecRatio4,
                                  form.RecDMut1,  form.RecDMut2,  form.RecDMut3,  form.RecDMut4,
                                  form.RecMut0,   form.RecC1,     form.RecC2,     form.RecValence,
                                  form.RecAmount};
    const panel::InputReader reader(loose.list);
    for (std::size_t wanted = 0; wanted < analysis::columnCount; ++wanted) {
        for (QCheckBox* box : boxes) {
            box->setChecked(box == boxes.at(static_cast<qsizetype>(wanted)));
        }
        std::array<bool, analysis::columnCount> expected{};
        expected.at(wanted) = true;
        QCOMPARE(reader.wantedColumns(), expected);
    }
}

void tst_InputReader::histogramsAreIndexedByUsedReferences()
{
    const UnconnectedWidgets& loose = *m_loose;
    for (int i = 0; i < 4; ++i) {
        loose.reference(i)->UseCB->setChecked(i == 1 || i == 2);
    }
    loose.form.HgRatio2->setChecked(true);
    loose.form.HgdMut3->setChecked(true);
    const panel::InputReader reader(loose.list);
    const analysis::ReferenceSet references = reader.references();
    QVERIFY(reader.isRatioShown(references, 0));
    QVERIFY(!reader.isRatioShown(references, 1));
    QVERIFY(!reader.isDMutShown(references, 0));
    QVERIFY(reader.isDMutShown(references, 1));
    for (const int missing : {-1, 2, 3, 4}) {
        QVERIFY(!reader.isRatioShown(references, missing));
        QVERIFY(!reader.isDMutShown(references, missing));
    }
}

void tst_InputReader::checkedRatioHistogramOfTheHighestRowIsUsed()
{
    const UnconnectedWidgets& loose = *m_loose;
    const panel::InputReader reader(loose.list);
    QCOMPARE(reader.shownRatioRow(), -1);
    loose.form.HgRatio3->setChecked(true);
    QCOMPARE(reader.shownRatioRow(), 2);
    loose.form.HgRatio1->setChecked(true);
    QCOMPARE(reader.shownRatioRow(), 2);
}

void tst_InputReader::repeatedReadReturnsTheChangedText()
{
    const UnconnectedWidgets& loose = *m_loose;
    const panel::InputReader reader(loose.list);
    loose.point(0)->Energy->setText("8313");
    QCOMPARE(reader.points().first().energy, 8313.0);
    loose.point(0)->Energy->setText("8314");
    QCOMPARE(reader.points().first().energy, 8314.0);
}

QTEST_MAIN(tst_InputReader)
#include "tst_InputReader.moc"
