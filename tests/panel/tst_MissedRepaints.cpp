// Tests for missed repaints: after a change, each window must show the picture that a new paint
// would show. The intended exceptions are tested, too.

#include "display/Histgram.h"
#include "support/MapWindows.h"
#include "support/MouseInput.h"
#include "support/PaintCounter.h"
#include "support/RandomUser.h"
#include "support/ShownPictures.h"
#include "support/SpectrumText.h"
#include "support/TestFiles.h"

#include <QTest>

#include <functional>

using namespace tests;

namespace
{

/// Shows the panel and its three windows; the map windows are small.
bool showAll(FourPs& panel)
{
    panel.MapDisp->resize(260, 200);
    panel.DMapDisp->resize(260, 200);
    return showWindow(&panel) && showWindow(panel.Disps) && showWindow(panel.MapDisp) &&
           showWindow(panel.DMapDisp);
}

void popOutWindows(FourPs& panel, bool many)
{
    for (const auto id : {Displays::DHistA, Displays::DDMutVsA}) {
        panel.Disps->frame(id)->pop->resize(300, 250);
        panel.Disps->frame(id)->popDock();
    }
    if (many) {
        panel.Disps->frame(Displays::DMuts)->popDock();
        panel.MapDisp->popDock();
        panel.DMapDisp->popDock();
    }
}

/// Replaces the text of @p edit by typing. The focus does not change, so editingFinished() is
/// not emitted.
void enterText(QLineEdit* edit, const QString& text)
{
    edit->selectAll();
    QTest::keyClicks(edit, text);
}

} // namespace

class tst_MissedRepaints : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void picturesAreUpToDateAfterRandomActions_data();
    void picturesAreUpToDateAfterRandomActions();

    void togglingUseOfARowChangesOnlyThePlotOfAllSpectra();
    void togglingTheFitBoxOfARowChangesOnlyThePlotOfAllSpectra();
    void listOfEnergiesMovesTheMarkerLines();
    void typedEnergyMovesItsMarkerLineImmediately();
    void typedEdgeMovesItsMarkerLineImmediately();
    void typedValenceChangesTheGridsAndTheResultMap();
    void useOfAReferenceChangesFourPlotsAndTheResultMap();
    void changedLimitMovesTheGridOfTheValenceHistogram();
    void limitsOfTheThicknessHistogramMoveItsGrid();
    void histogramCheckBoxUpdatesOnlyItsPlot();
    void failedReadOfAReferenceChangesTheResultMap();
    void failedReadOfTheShownRowClearsTheDataMap();
    void clearingTheShownRowClearsTheDataMap();
    void releaseInTheComparisonDoesNotRepaintTheThicknessPlot();
    void mutFieldMovesItsPointInTheReferencePlane();
    void poppedOutPlotsAndMapsAreUpToDate();

    void energyChangeRepaintsTheSpectraButNotThicknessOrMaps();
    void fieldsUnusedInPicturesRepaintNoPicture_data();
    void fieldsUnusedInPicturesRepaintNoPicture();
    void editsThatRepaintStartNoCalculation();
    void doubleClickOnTheColourBarDoesNotRepaintItsMap();

private:
    using Action = std::function<void()>;

    void prepareRefusedPanel();
    QStringList changedBy(const Action& action, QStringList* outdated);
    AEPoint* row(int index) const { return m_panel->EPoints.at(index); }
    DispArea* surface(Displays::DispId id) const { return m_panel->Disps->frame(id)->DispA; }

    const SharedPanel m_panel;
    QTemporaryDir m_dir;
};

// Checks that @p action changes exactly the pictures @p wanted, and that no picture is
// outdated afterwards.
#define COMPARE_CHANGED_PICTURES(action, wanted)                                                   \
    do {                                                                                           \
        QStringList outdated;                                                                      \
        QCOMPARE(changedBy(action, &outdated), QStringList wanted);                                \
        QCOMPARE(outdated, QStringList());                                                         \
    } while (false)

void tst_MissedRepaints::initTestCase()
{
    QVERIFY(showAll(*m_panel));
}

void tst_MissedRepaints::picturesAreUpToDateAfterRandomActions_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 3; ++seed) {
        QTest::addRow("seed %u", seed) << seed;
    }
}

void tst_MissedRepaints::picturesAreUpToDateAfterRandomActions()
{
    QFETCH(unsigned, seed);
    // Each seed uses a new panel, so that a data row that is run alone performs the same actions
    // as in a run of all rows.
    auto panel = std::make_unique<FourPs>();
    QVERIFY(showAll(*panel));
    popOutWindows(*panel, seed % 2 == 0);
    RandomUser user(*panel, seed);
    repaintedPictures(*panel);
    constexpr int steps = 80;
    for (int step = 0; step < steps; ++step) {
        const QString action = user.act();
        processPendingEvents();
        const QList<ShownPicture> shown = shownPictures(*panel);
        QStringList outdated = differences(shown, repaintedPictures(*panel));
        outdated.removeAll(user.staleSurface());
        QVERIFY2(outdated.isEmpty(), qPrintable(QStringLiteral("seed %1, step %2, %3: stale is %4")
                                                    .arg(seed)
                                                    .arg(step)
                                                    .arg(action, outdated.join(u", "))));
    }
    closePanel(panel);
}

// Prepares the panel so that most pictures are not empty: three references, two of them in use, a
// point in the comparison, a result, histogram counts, and a measured map. Neither a V row nor an
// energy range for the fit is selected, so every calculation is refused.
void tst_MissedRepaints::prepareRefusedPanel()
{
    resetMaps(*m_panel);
    QVERIFY(showAll(*m_panel));
    enterText(m_panel->MultiEnergys, "8313 8381 8390 8404.5 8460 8475");
    m_panel->newMultiEnergys();
    enterText(m_panel->ui.PreEEndDE, "-50");
    enterText(m_panel->ui.PostEStartDE, "100");
    enterText(m_panel->ui.HgAFrom, "0.5");
    enterText(m_panel->ui.HgATo, "3.5");
    enterText(m_panel->ui.HgTFrom, "-0.5");
    enterText(m_panel->ui.HgTTo, "3.5");
    const QString first = writeFile(m_dir, "a.dat", spectrumText("0.5", "2", "1.5", "1"));
    const QString second = writeFile(m_dir, "b.dat", spectrumText("0.25", "0.5", "1.75", "1.5"));
    for (int i = 0; i < 3; ++i) {
        m_panel->XafsFiles.at(i)->AFileSelect::newFile(i == 1 ? second : first);
        m_panel->Refs.RefRows.at(i)->Valence->setText(QString::number(i + 1));
    }
    row(2)->VPointCB->setChecked(false);
    chooseFourPoints(*m_panel);
    setFractions(*m_panel, 3, 1, {{0.25, 0.5}, {0.5, 1.0}, {0.75, 1.5}});
    m_panel->LCFvs4PS = {{0.5, 1.5, 0.5, 1.75, 0}};
    setMap(*m_panel, 0, {1.0, 2.0, 3.0});
    enter(m_panel->ui.HgABoxes, QStringLiteral("11"));
    QList<Histgram*> histograms{m_panel->HistV, m_panel->HistT};
    for (Histgram* histogram : histograms + m_panel->HistRatio + m_panel->HistDMut) {
        histogram->init();
        for (const double value : {0.5, 1.5, 1.5}) {
            histogram->add(value);
        }
    }
    for (QAbstractButton* box : {m_panel->ui.HgRatio1, m_panel->ui.HgdMut1, m_panel->ui.HgRatio2}) {
        box->setChecked(true);
    }
    row(1)->UseCB->setChecked(true);
    m_panel->ui.HgAAuto->setChecked(false);
    m_panel->ui.HgTAuto->setChecked(false);
    repaintedPictures(*m_panel);
}

QStringList tst_MissedRepaints::changedBy(const Action& action, QStringList* outdated)
{
    const QList<ShownPicture> before = repaintedPictures(*m_panel);
    action();
    processPendingEvents();
    const QList<ShownPicture> after = shownPictures(*m_panel);
    *outdated = differences(after, repaintedPictures(*m_panel));
    return differences(before, after);
}

void tst_MissedRepaints::togglingUseOfARowChangesOnlyThePlotOfAllSpectra()
{
    prepareRefusedPanel();
    COMPARE_CHANGED_PICTURES([&] { row(1)->UseCB->click(); }, {"Muts"});
    COMPARE_CHANGED_PICTURES([&] { row(1)->UseCB->setChecked(true); }, {"Muts"});
}

void tst_MissedRepaints::togglingTheFitBoxOfARowChangesOnlyThePlotOfAllSpectra()
{
    prepareRefusedPanel();
    COMPARE_CHANGED_PICTURES([&] { row(1)->LCFCB->click(); }, {"Muts"});
}

void tst_MissedRepaints::listOfEnergiesMovesTheMarkerLines()
{
    prepareRefusedPanel();
    const auto typeEnergies = [&] {
        QTest::keyClicks(m_panel->MultiEnergys, "8345 8360");
        QTest::keyClick(m_panel->MultiEnergys, Qt::Key_Return);
    };
    COMPARE_CHANGED_PICTURES(typeEnergies, {"Muts"});
}

void tst_MissedRepaints::typedEnergyMovesItsMarkerLineImmediately()
{
    prepareRefusedPanel();
    row(0)->Energy->setText(QStringLiteral("834"));
    COMPARE_CHANGED_PICTURES([&] { QTest::keyClicks(row(0)->Energy, "5"); }, {"Muts"});
}

void tst_MissedRepaints::typedEdgeMovesItsMarkerLineImmediately()
{
    prepareRefusedPanel();
    m_panel->ui.EdgeE->setText(QStringLiteral("834"));
    COMPARE_CHANGED_PICTURES([&] { QTest::keyClicks(m_panel->ui.EdgeE, "5"); }, {"Muts"});
    COMPARE_CHANGED_PICTURES([&] { m_panel->ui.PostEStartDE->setText(QStringLiteral("60")); },
                             {"Muts"});
}

void tst_MissedRepaints::typedValenceChangesTheGridsAndTheResultMap()
{
    prepareRefusedPanel();
    QLineEdit* valence = m_panel->Refs.RefRows.at(1)->Valence;
    COMPARE_CHANGED_PICTURES([&] { QTest::keyClicks(valence, ".5"); },
                             ({"LCF vs MPS", "dMut/v or a", "Result Map"}));
}

void tst_MissedRepaints::useOfAReferenceChangesFourPlotsAndTheResultMap()
{
    prepareRefusedPanel();
    COMPARE_CHANGED_PICTURES(
        [&] { m_panel->Refs.RefRows.at(0)->UseCB->click(); },
        ({"LCF vs MPS", "Histgram of a", "Histgram of dMut", "dMut/v or a", "Result Map"}));
}

void tst_MissedRepaints::changedLimitMovesTheGridOfTheValenceHistogram()
{
    prepareRefusedPanel();
    COMPARE_CHANGED_PICTURES([&] { enterText(m_panel->ui.HgATo, "2"); }, {"Histgram of a"});
    COMPARE_CHANGED_PICTURES([&] { enterText(m_panel->ui.HgAFrom, "2"); }, {"Histgram of a"});
}

void tst_MissedRepaints::limitsOfTheThicknessHistogramMoveItsGrid()
{
    prepareRefusedPanel();
    COMPARE_CHANGED_PICTURES([&] { enterText(m_panel->ui.HgTTo, "2"); }, {"Histgram of dMut"});
    COMPARE_CHANGED_PICTURES([&] { enterText(m_panel->ui.HgTFrom, "2"); }, {"Histgram of dMut"});
}

void tst_MissedRepaints::histogramCheckBoxUpdatesOnlyItsPlot()
{
    prepareRefusedPanel();
    COMPARE_CHANGED_PICTURES([&] { m_panel->ui.HgRatio2->click(); }, {"Histgram of a"});
    COMPARE_CHANGED_PICTURES([&] { m_panel->ui.HgdMut1->click(); }, {"Histgram of dMut"});
}

void tst_MissedRepaints::failedReadOfAReferenceChangesTheResultMap()
{
    prepareRefusedPanel();
    const QString nothing = writeFile(m_dir, "empty.dat", {});
    QStringList outdated;
    const QStringList changed =
        changedBy([&] { m_panel->XafsFiles.at(1)->AFileSelect::newFile(nothing); }, &outdated);
    QCOMPARE(outdated, QStringList());
    QVERIFY(changed.contains(QStringLiteral("Result Map")));
    QVERIFY(changed.contains(QStringLiteral("Ref2")));
}

void tst_MissedRepaints::failedReadOfTheShownRowClearsTheDataMap()
{
    prepareRefusedPanel();
    const QString words = writeFile(m_dir, "words.dat", "no number\n");
    COMPARE_CHANGED_PICTURES([&] { row(0)->FileSelect->newFile(words); }, {"Data Map"});
    QVERIFY(isBlank(shownImage(m_panel->DMapDisp->DispA)));
}

void tst_MissedRepaints::clearingTheShownRowClearsTheDataMap()
{
    prepareRefusedPanel();
    COMPARE_CHANGED_PICTURES([&] { row(0)->FileSelect->ClearB->click(); }, {"Data Map"});
    QVERIFY(isBlank(shownImage(m_panel->DMapDisp->DispA)));
}

void tst_MissedRepaints::releaseInTheComparisonDoesNotRepaintTheThicknessPlot()
{
    prepareRefusedPanel();
    QStringList outdated;
    QCOMPARE(changedBy(
                 [&] {
                     release(surface(Displays::DLCFvs4PS), {20, 20});
                 },
                 &outdated),
             QStringList());
    QCOMPARE(outdated, QStringList{"dMut/v or a"});
}

// The program itself never shows this plot.
void tst_MissedRepaints::mutFieldMovesItsPointInTheReferencePlane()
{
    prepareRefusedPanel();
    QVERIFY(showWindow(m_panel->Disps->frame(Displays::DM2M3)));
    COMPARE_CHANGED_PICTURES([&] { row(1)->Mut1->setText(QStringLiteral("0.3")); }, {"M2/M3"});
    COMPARE_CHANGED_PICTURES([&] { row(1)->VPointCB->setChecked(true); }, {"M2/M3"});
    COMPARE_CHANGED_PICTURES([&] { row(1)->UseCB->setChecked(false); }, ({"Muts", "M2/M3"}));
    const PaintCounter paints(surface(Displays::DM2M3));
    processPendingEvents();
    const int before = paints.count();
    m_panel->Disps->update();
    processPendingEvents();
    QCOMPARE(paints.count(), before + 1);
}

void tst_MissedRepaints::poppedOutPlotsAndMapsAreUpToDate()
{
    prepareRefusedPanel();
    for (const auto id : {Displays::DMuts, Displays::DDMutVsA}) {
        m_panel->Disps->frame(id)->popDock();
    }
    QVERIFY(popOut(m_panel->MapDisp));
    QVERIFY(popOut(m_panel->DMapDisp));
    COMPARE_CHANGED_PICTURES([&] { row(1)->UseCB->click(); }, {"Muts"});
    QLineEdit* valence = m_panel->Refs.RefRows.at(1)->Valence;
    COMPARE_CHANGED_PICTURES([&] { QTest::keyClicks(valence, ".5"); },
                             ({"LCF vs MPS", "dMut/v or a", "Result Map"}));
    COMPARE_CHANGED_PICTURES([&] { row(0)->FileSelect->ClearB->click(); }, {"Data Map"});
}

// The thickness plot and the two maps can each show a million map pixels, so unnecessary repaints
// would be slow.
void tst_MissedRepaints::energyChangeRepaintsTheSpectraButNotThicknessOrMaps()
{
    prepareRefusedPanel();
    const PaintCounter spectra(surface(Displays::DMuts));
    const PaintCounter thickness(surface(Displays::DDMutVsA));
    const PaintCounter result(m_panel->MapDisp->DispA);
    const PaintCounter data(m_panel->DMapDisp->DispA);
    processPendingEvents();
    const int before = spectra.count();
    const int others = thickness.count() + result.count() + data.count();
    QTest::keyClicks(row(0)->Energy, "5");
    row(0)->UseCB->setChecked(false);
    processPendingEvents();
    QCOMPARE(spectra.count(), before + 1);
    QCOMPARE(thickness.count() + result.count() + data.count(), others);
}

void tst_MissedRepaints::fieldsUnusedInPicturesRepaintNoPicture_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"CalcRes", "LCFRes", "TargetDMut", "HgABoxes", "MultiEnergys", "MutT",
                             "RatioDisp", "AmountDisp"}) {
        QTest::newRow(name) << QString::fromLatin1(name);
    }
}

void tst_MissedRepaints::fieldsUnusedInPicturesRepaintNoPicture()
{
    QFETCH(QString, name);
    prepareRefusedPanel();
    QLineEdit* field = m_panel->findChild<QLineEdit*>(name);
    QVERIFY(field);
    std::vector<std::unique_ptr<PaintCounter>> counters;
    const QList<ShownPicture> surfaces = surfacesOf(*m_panel);
    for (const ShownPicture& picture : surfaces) {
        counters.push_back(std::make_unique<PaintCounter>(const_cast<QWidget*>(picture.widget)));
    }
    field->setText(QStringLiteral("0.123"));
    processPendingEvents();
    for (const auto& counter : counters) {
        QCOMPARE(counter->count(), 0);
    }
}

void tst_MissedRepaints::editsThatRepaintStartNoCalculation()
{
    prepareRefusedPanel();
    clearMessages(*m_panel);
    QTest::keyClicks(row(0)->Energy, "5");
    QTest::keyClicks(row(0)->Mut1, "5");
    QTest::keyClicks(m_panel->ui.EdgeE, "5");
    QTest::keyClicks(m_panel->ui.HgAFrom, "5");
    QTest::keyClicks(m_panel->Refs.RefRows.at(1)->Valence, "5");
    row(0)->UseCB->setChecked(false);
    row(0)->LCFCB->setChecked(true);
    row(0)->FileSelect->ClearB->click();
    release(surface(Displays::DLCFvs4PS), {20, 20});
    processPendingEvents();
    QCOMPARE(messages(*m_panel), QStringList());
}

// On purpose, the double-click repaints only the colour bar. The map shows the changed
// colours at its next paint.
void tst_MissedRepaints::doubleClickOnTheColourBarDoesNotRepaintItsMap()
{
    prepareRefusedPanel();
    cBar* bar = m_panel->MapDisp->CBar;
    press(bar, {3.0, double(bar->maxLineY)});
    drag(bar, {3.0, bar->height() / 2.0});
    release(bar, {3.0, bar->height() / 2.0});
    QStringList outdated;
    QCOMPARE(changedBy(
                 [&] {
                     doubleClick(bar, {3.0, 3.0});
                 },
                 &outdated),
             QStringList{"Result Map, bar"});
    QCOMPARE(outdated, QStringList{"Result Map"});
}

QTEST_MAIN(tst_MissedRepaints)
#include "tst_MissedRepaints.moc"
