// Tests of the repaints of plots and maps when an input changes, without the panel.

#include "panel/Repaints.h"
#include "support/PaintCounter.h"
#include "support/SurfacePaints.h"
#include "support/UnconnectedWidgets.h"

#include <QTest>

using namespace tests;

namespace
{

using Step = void (*)(const UnconnectedWidgets&);

struct Case {
    const char* name;
    Step step;
    QList<Displays::DispId> repainted;
};

void switchReference(const UnconnectedWidgets& loose)
{
    loose.reference(2)->UseCB->toggle();
}

const QList<Case> cases{
    {"edge", [](const UnconnectedWidgets& l) { l.form.EdgeE->setText("1"); }, {Displays::DMuts}},
    {"pre-edge limit",
     [](const UnconnectedWidgets& l) { l.form.PreEEndDE->setText("1"); },
     {Displays::DMuts}},
    {"post-edge limit",
     [](const UnconnectedWidgets& l) { l.form.PostEStartDE->setText("1"); },
     {Displays::DMuts}},
    {"valence limit",
     [](const UnconnectedWidgets& l) { l.form.HgATo->setText("1.5"); },
     {Displays::DHistA}},
    {"thickness limit",
     [](const UnconnectedWidgets& l) { l.form.HgTFrom->setText("1.5"); },
     {Displays::DHistDMut}},
    {"energy of a row",
     [](const UnconnectedWidgets& l) { l.point(7)->Energy->setText("1"); },
     {Displays::DMuts}},
    {"use of a row",
     [](const UnconnectedWidgets& l) { l.point(7)->UseCB->toggle(); },
     {Displays::DMuts}},
    {"valence of a reference",
     [](const UnconnectedWidgets& l) { l.reference(3)->Valence->setText("9"); },
     {Displays::DLCFvs4PS, Displays::DDMutVsA}},
    {"use of a reference",
     switchReference,
     {Displays::DLCFvs4PS, Displays::DHistA, Displays::DHistDMut, Displays::DDMutVsA}},
    {"number of bins", [](const UnconnectedWidgets& l) { l.form.HgABoxes->setText("7"); }, {}},
    {"target column", [](const UnconnectedWidgets& l) { l.point(0)->MutT->setText("1"); }, {}},
};

} // namespace

class tst_Repaints : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fieldsRepaintThePlotsThatUseThem_data();
    void fieldsRepaintThePlotsThatUseThem();
    void referencesAndFilesRepaintTheirMaps();
};

void tst_Repaints::fieldsRepaintThePlotsThatUseThem_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < cases.size(); ++i) {
        QTest::newRow(cases.at(i).name) << i;
    }
}

void tst_Repaints::fieldsRepaintThePlotsThatUseThem()
{
    QFETCH(const int, index);
    UnconnectedWidgets loose;
    panel::connectRepaints(loose.list);
    loose.graphs.show();
    QVERIFY(QTest::qWaitForWindowExposed(&loose.graphs));
    SurfacePaints paints(loose.graphs);
    cases.at(index).step(loose);
    const QList<int> counts = paints.counts();
    for (int i = 0; i < counts.size(); ++i) {
        const bool isExpected = cases.at(index).repainted.contains(loose.graphs.ids.at(i));
        QCOMPARE(counts.at(i), isExpected ? 1 : 0);
    }
}

void tst_Repaints::referencesAndFilesRepaintTheirMaps()
{
    UnconnectedWidgets loose;
    panel::connectRepaints(loose.list);
    loose.resultMap.show();
    loose.dataMap.show();
    QVERIFY(QTest::qWaitForWindowExposed(&loose.resultMap));
    QVERIFY(QTest::qWaitForWindowExposed(&loose.dataMap));
    PaintCounter result(loose.resultMap.DispA);
    PaintCounter measured(loose.dataMap.DispA);
    const auto expect = [&](int resultPaints, int measuredPaints) {
        constexpr int paintTimeMs = 20;
        const bool isMet =
            result.within(paintTimeMs) == resultPaints && measured.count() == measuredPaints;
        result.restart();
        measured.restart();
        return isMet;
    };
    result.restart();
    measured.restart();
    switchReference(loose);
    QVERIFY(expect(1, 0));
    loose.reference(0)->Valence->setText("9");
    QVERIFY(expect(1, 0));
    Q_EMIT loose.reference(0)->XafsFS->newFilePath("x");
    QVERIFY(expect(1, 0));
    Q_EMIT loose.point(5)->FileSelect->newFilePath("x");
    QVERIFY(expect(0, 1));
}

QTEST_MAIN(tst_Repaints)
#include "tst_Repaints.moc"
