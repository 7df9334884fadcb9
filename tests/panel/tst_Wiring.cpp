// Tests of the panel's signal connections, with a mock panel that records the calls of
// its slots.

#include "display/MarkLine.h"
#include "panel/Wiring.h"
#include "support/UnconnectedWidgets.h"

#include <QTest>

using namespace tests;

namespace
{

/// A mock of the panel that records the calls of its slots.
class SlotRecorder : public QObject
{
public:
    void noticedNewEdge(double e) { note("noticedNewEdge %1", e); }
    void setEdge() { calls << "setEdge"; }
    void updateMaps(bool) { calls << "updateMaps"; }
    void dispCalcConditions(bool f) { note("dispCalcConditions %1", f); }
    void changedSubBGTypeForRef(bool f) { note("changedSubBGTypeForRef %1", f); }
    void changedSubBGTypeForTarget(bool f) { note("changedSubBGTypeForTarget %1", f); }
    void removeAFile() { calls << "removeAFile"; }
    void receiveNewDir(QString dir) { calls << "receiveNewDir " + dir; }
    void receiveNewEnergy(double e) { note("receiveNewEnergy %1", e); }
    void receiveNewFile(QString path)
    {
        calls << "receiveNewFile " + path;
        fileSender = sender();
    }
    void receiveNewDispFiles(QStringList paths)
    {
        calls << "receiveNewDispFiles " + paths.join(',');
    }
    void receiveNewPaths(QStringList paths) { calls << "receiveNewPaths " + paths.join(','); }
    void calcBoth() { calls << "calcBoth"; }
    void calcMap() { calls << "calcMap"; }
    void calcTarget() { calls << "calcTarget"; }
    void calcAndWrite() { calls << "calcAndWrite"; }
    void clearLCFvs4PS(MouseC*) { calls << "clearLCFvs4PS"; }
    void newColorLCFvs4PS(MouseC*) { calls << "newColorLCFvs4PS"; }
    void updateDMap() { calls << "updateDMap"; }
    void draw(Displays::DispId id, DispABase*, QStylePainter*) { note("draw %1", id); }
    void drawMap(QStylePainter*) { calls << "drawMap"; }
    void drawDMap(QStylePainter*) { calls << "drawDMap"; }
    void selectedNewMap() { calls << "selectedNewMap"; }
    void receiveNowPosInMap(double x, double) { note("receiveNowPosInMap %1", x); }
    void receiveNowPosInDMap(double x, double) { note("receiveNowPosInDMap %1", x); }
    void lcf() { calls << "lcf"; }
    void mPressedInAllMut(MouseC*) { calls << "mPressedInAllMut"; }
    void dClickedInMap(MouseC*) { calls << "dClickedInMap"; }
    void newMultiEnergys() { calls << "newMultiEnergys"; }

    /// Returns and clears the recorded calls.
    QStringList take() { return std::exchange(calls, {}); }

    QStringList calls;
    const QObject* fileSender = nullptr;

private:
    template <class Value>
    void note(const char* text, Value value)
    {
        calls << QString::fromLatin1(text).arg(value);
    }
};

} // namespace

class tst_Wiring : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void signalsOfReferencesCallTheirSlots();
    void signalsOfEnergyRowsCallTheirSlots();
    void signalsOfSpectrumRowsCallTheirSlots();
    void signalsOfRowsWithSeveralFilesCallTheirSlots();
    void buttonsStartTheirCalculation();
    void choosingAMethodRecalculatesExceptForTheFourPointsForms();
    void edgeFieldsSetTheEdge();
    void backgroundRadiosAndConditionsBoxCallTheirSlots();
    void signalsOfGraphsCallTheirSlots();
    void buttonsOpenTheirWindows();
    void signalsOfMapWindowsCallTheirSlots();
    void mapControlsCallTheirSlots();
    void normalisationClearsOnlyTheRangeOfTheAllSpectraPlot();
    void movedMarkerLinesSetTheEdgeAndReleaseRecalculates();
    void plotsHaveTheExpectedMarkerLines();
    void limitMarkerLinesAreRelativeToTheEdge();

private:
    std::unique_ptr<UnconnectedWidgets> m_loose;
    std::unique_ptr<SlotRecorder> m_panel;
    panel::EdgeMarks m_marks;
};

void tst_Wiring::initTestCase()
{
    m_loose = std::make_unique<UnconnectedWidgets>();
    m_panel = std::make_unique<SlotRecorder>();
    m_marks = panel::makeEdgeMarks(m_loose->list);
    const panel::Wiring<SlotRecorder> wiring(m_loose->list, m_panel.get());
    wiring.connectMarks(m_marks);
    wiring.connectAll();
}

void tst_Wiring::init()
{
    m_loose->reset();
    m_panel->take();
}

void tst_Wiring::cleanupTestCase()
{
    // In the program, the marker lines exist until the process ends. The test must
    // delete them itself, or they would leak.
    for (MarkLines* set : {m_marks.allSpectra, m_marks.singleSpectrum}) {
        qDeleteAll(set->lines);
        set->clear();
    }
    m_panel.reset();
    m_loose.reset();
    delete m_marks.allSpectra;
    delete m_marks.singleSpectrum;
}

void tst_Wiring::signalsOfReferencesCallTheirSlots()
{
    for (int i = 0; i < 4; ++i) {
        ARefFile* row = m_loose->reference(i);
        Q_EMIT row->changedUse(true);
        QCOMPARE(m_panel->take(), QStringList{"calcBoth"});
        Q_EMIT row->foundNewEdge(8333.0);
        QCOMPARE(m_panel->take(), QStringList{"noticedNewEdge 8333"});
        int selected = 0;
        const auto connection =
            connect(&m_loose->references, &RefFiles::selectedFile, this, [&] { ++selected; });
        Q_EMIT row->selectedFile();
        QCOMPARE(selected, 1);
        disconnect(connection);
        QVERIFY(m_panel->take().isEmpty());
    }
}

void tst_Wiring::signalsOfEnergyRowsCallTheirSlots()
{
    for (int i = 0; i < 8; ++i) {
        AEPoint* row = m_loose->point(i);
        Q_EMIT row->newDir("/data");
        Q_EMIT row->newEnergy(8313.0);
        Q_EMIT row->changedCB();
        Q_EMIT row->newData();
        QCOMPARE(m_panel->take(), (QStringList{"receiveNewDir /data", "receiveNewEnergy 8313",
                                               "calcBoth", "updateDMap"}));
    }
    Q_EMIT m_loose->energyList.editingFinished();
    QCOMPARE(m_panel->take(), QStringList{"newMultiEnergys"});
}

void tst_Wiring::signalsOfSpectrumRowsCallTheirSlots()
{
    QCOMPARE(m_loose->list.spectra.size(), 5);
    for (AXafsFileSelect* row : m_loose->list.spectra) {
        Q_EMIT row->newDir("/data");
        Q_EMIT row->newFilePath(QString());
        QCOMPARE(m_panel->fileSender, row);
        Q_EMIT row->updated();
        QCOMPARE(m_panel->take(),
                 (QStringList{"receiveNewDir /data", "receiveNewFile ", "calcBoth"}));
    }
}

void tst_Wiring::signalsOfRowsWithSeveralFilesCallTheirSlots()
{
    Q_EMIT m_loose->form.DispFSelect->newDir("/a");
    Q_EMIT m_loose->form.DispFSelect->newFilePaths({"x", "y"});
    Q_EMIT m_loose->mapFiles.newDir("/b");
    Q_EMIT m_loose->mapFiles.newFilePaths({"m", "n"});
    QCOMPARE(m_panel->take(), (QStringList{"receiveNewDir /a", "receiveNewDispFiles x,y",
                                           "receiveNewDir /b", "receiveNewPaths m,n"}));
    // The save row has its own folder, so its signal newDir() is not connected.
    Q_EMIT m_loose->form.SaveFSelect->newDir("/c");
    QVERIFY(m_panel->take().isEmpty());
    m_loose->form.RemoveAFile->click();
    QCOMPARE(m_panel->take(), QStringList{"removeAFile"});
}

void tst_Wiring::buttonsStartTheirCalculation()
{
    m_loose->form.WriteB->click();
    m_loose->form.CalcTargetB->click();
    m_loose->form.CalcMapB->click();
    m_loose->form.LCFB->click();
    QCOMPARE(m_panel->take(), (QStringList{"calcAndWrite", "calcTarget", "calcMap", "lcf"}));
}

void tst_Wiring::choosingAMethodRecalculatesExceptForTheFourPointsForms()
{
    Q_EMIT m_loose->form.TypeNonEquiv->toggled(true);
    QCOMPARE(m_panel->take(), QStringList{"calcBoth"});
    Q_EMIT m_loose->form.NonEquivBGLinear->toggled(false);
    QCOMPARE(m_panel->take(), QStringList{"calcBoth"});
    // These two radio buttons start no recalculation; they take effect at the next one.
    Q_EMIT m_loose->form.TypeTMKisExact->toggled(true);
    Q_EMIT m_loose->form.TypeTMKisLS->toggled(true);
    QVERIFY(m_panel->take().isEmpty());
}

void tst_Wiring::edgeFieldsSetTheEdge()
{
    const Ui_FourPs& form = m_loose->form;
    for (QLineEdit* edit :
         std::initializer_list<QLineEdit*>{form.EdgeE, form.PreEEndDE, form.PostEStartDE}) {
        Q_EMIT edit->editingFinished();
        QCOMPARE(m_panel->take(), QStringList{"setEdge"});
    }
}

void tst_Wiring::backgroundRadiosAndConditionsBoxCallTheirSlots()
{
    Q_EMIT m_loose->form.SubPostEforRef->toggled(true);
    Q_EMIT m_loose->form.SubPostEforTarget->toggled(false);
    Q_EMIT m_loose->form.DispCondsB->toggled(true);
    QCOMPARE(m_panel->take(), (QStringList{"changedSubBGTypeForRef 1",
                                           "changedSubBGTypeForTarget 0", "dispCalcConditions 1"}));
}

void tst_Wiring::signalsOfGraphsCallTheirSlots()
{
    Q_EMIT m_loose->graphs.draw(Displays::DHistA, nullptr, nullptr);
    QCOMPARE(m_panel->take(), QStringList{QStringLiteral("draw %1").arg(Displays::DHistA)});
    DispABase* comparison = m_loose->graphs.frame(Displays::DLCFvs4PS);
    Q_EMIT comparison->mDClicked(nullptr);
    Q_EMIT comparison->mReleased(nullptr);
    QCOMPARE(m_panel->take(), (QStringList{"clearLCFvs4PS", "newColorLCFvs4PS"}));
    Q_EMIT m_loose->graphs.frame(Displays::DMuts)->mPressed(nullptr);
    QCOMPARE(m_panel->take(), QStringList{"mPressedInAllMut"});
}

void tst_Wiring::buttonsOpenTheirWindows()
{
    const Ui_FourPs& form = m_loose->form;
    const std::initializer_list<std::pair<QPushButton*, QWidget*>> windows{
        {form.ShowDAB, &m_loose->graphs},
        {form.ShowMap, &m_loose->resultMap},
        {form.ShowDMap, &m_loose->dataMap}};
    for (const auto& [button, window] : windows) {
        QVERIFY(!window->isVisible());
        button->click();
        QVERIFY(window->isVisible());
        window->hide();
    }
}

void tst_Wiring::signalsOfMapWindowsCallTheirSlots()
{
    m_panel->take();
    Q_EMIT m_loose->resultMap.draw(nullptr);
    Q_EMIT m_loose->resultMap.nowPos(2.0, 3.0);
    Q_EMIT m_loose->resultMap.mDClicked(nullptr);
    QCOMPARE(m_panel->take(), (QStringList{"drawMap", "receiveNowPosInMap 2", "dClickedInMap"}));
    Q_EMIT m_loose->dataMap.draw(nullptr);
    Q_EMIT m_loose->dataMap.nowPos(4.0, 5.0);
    Q_EMIT m_loose->dataMap.mDClicked(nullptr);
    QCOMPARE(m_panel->take(), (QStringList{"drawDMap", "receiveNowPosInDMap 4"}));
}

void tst_Wiring::mapControlsCallTheirSlots()
{
    Q_EMIT m_loose->form.MapWGrid->toggled(true);
    QCOMPARE(m_panel->take(), QStringList{"updateMaps"});
    Q_EMIT m_loose->mapRadios.buttonToggled(nullptr, false);
    QCOMPARE(m_panel->take(), QStringList{"selectedNewMap"});
    Q_EMIT m_loose->mapRows.buttonToggled(nullptr, true);
    QCOMPARE(m_panel->take(), QStringList{"updateDMap"});
}

void tst_Wiring::normalisationClearsOnlyTheRangeOfTheAllSpectraPlot()
{
    for (DispABase* plot : std::as_const(m_loose->graphs.disps)) {
        plot->DispA->hasScale = true;
    }
    Q_EMIT m_loose->normRadios.buttonToggled(nullptr, true);
    for (int i = 0; i < m_loose->graphs.disps.size(); ++i) {
        QCOMPARE(m_loose->graphs.disps.at(i)->DispA->hasScale,
                 m_loose->graphs.ids.at(i) != Displays::DMuts);
    }
    QVERIFY(m_panel->take().isEmpty());
}

void tst_Wiring::movedMarkerLinesSetTheEdgeAndReleaseRecalculates()
{
    for (MarkLines* set : {m_marks.allSpectra, m_marks.singleSpectrum}) {
        Q_EMIT set->moving();
        QCOMPARE(m_panel->take(), QStringList{"setEdge"});
        Q_EMIT set->newPos();
        QCOMPARE(m_panel->take(), (QStringList{"setEdge", "calcBoth"}));
    }
}

void tst_Wiring::plotsHaveTheExpectedMarkerLines()
{
    const QList<Displays::DispId> withEdge{Displays::DRef1, Displays::DRef2, Displays::DTarget};
    for (int i = 0; i < m_loose->graphs.disps.size(); ++i) {
        const Displays::DispId id = m_loose->graphs.ids.at(i);
        const MarkLines* expected = id == Displays::DMuts   ? m_marks.allSpectra
                                    : withEdge.contains(id) ? m_marks.singleSpectrum
                                                            : nullptr;
        QCOMPARE(m_loose->graphs.disps.at(i)->DispA->markLines, expected);
    }
    QCOMPARE(m_marks.allSpectra->lines.size(), 11);
    QCOMPARE(m_marks.singleSpectrum->lines.size(), 3);
}

void tst_Wiring::limitMarkerLinesAreRelativeToTheEdge()
{
    m_loose->form.EdgeE->setText("8350");
    m_loose->form.PreEEndDE->setText("-50");
    m_loose->form.PostEStartDE->setText("100");
    m_loose->point(7)->Energy->setText("8475");
    for (const MarkLines* set : {m_marks.allSpectra, m_marks.singleSpectrum}) {
        QCOMPARE(set->value(0), 8350.0);
        QCOMPARE(set->value(1), 8300.0);
        QCOMPARE(set->value(2), 8450.0);
    }
    QCOMPARE(m_marks.allSpectra->value(10), 8475.0);
}

QTEST_MAIN(tst_Wiring)
#include "tst_Wiring.moc"
