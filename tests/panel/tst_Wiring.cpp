// The connections of the panel, with a stand-in for the panel that records its slots.

#include "display/MarkLine.h"
#include "panel/Wiring.h"
#include "support/LooseWidgets.h"

#include <QTest>

using namespace tests;

namespace
{

/// Has the slots of the panel, and lists those that run.
class SlotRecorder : public QObject
{
public:
    void noticedNewEdge(double e) { note("noticedNewEdge %1", e); }
    void setEdge() { ran << "setEdge"; }
    void updateMaps(bool) { ran << "updateMaps"; }
    void dispCalcConditions(bool f) { note("dispCalcConditions %1", f); }
    void changedSubBGTypeForRef(bool f) { note("changedSubBGTypeForRef %1", f); }
    void changedSubBGTypeForTarget(bool f) { note("changedSubBGTypeForTarget %1", f); }
    void removeAFile() { ran << "removeAFile"; }
    void receiveNewDir(QString dir) { ran << "receiveNewDir " + dir; }
    void receiveNewEnergy(double e) { note("receiveNewEnergy %1", e); }
    void receiveNewFile(QString path)
    {
        ran << "receiveNewFile " + path;
        fileSender = sender();
    }
    void receiveNewDispFiles(QStringList paths) { ran << "receiveNewDispFiles " + paths.join(','); }
    void receiveNewPaths(QStringList paths) { ran << "receiveNewPaths " + paths.join(','); }
    void calcBoth() { ran << "calcBoth"; }
    void calcMap() { ran << "calcMap"; }
    void calcTarget() { ran << "calcTarget"; }
    void calcAndWrite() { ran << "calcAndWrite"; }
    void clearLCFvs4PS(MouseC*) { ran << "clearLCFvs4PS"; }
    void newColorLCFvs4PS(MouseC*) { ran << "newColorLCFvs4PS"; }
    void updateDMap() { ran << "updateDMap"; }
    void draw(Displays::DispId id, DispABase*, QStylePainter*) { note("draw %1", id); }
    void drawMap(QStylePainter*) { ran << "drawMap"; }
    void drawDMap(QStylePainter*) { ran << "drawDMap"; }
    void selectedNewMap() { ran << "selectedNewMap"; }
    void receiveNowPosInMap(double x, double) { note("receiveNowPosInMap %1", x); }
    void receiveNowPosInDMap(double x, double) { note("receiveNowPosInDMap %1", x); }
    void lcf() { ran << "lcf"; }
    void mPressedInAllMut(MouseC*) { ran << "mPressedInAllMut"; }
    void dClickedInMap(MouseC*) { ran << "dClickedInMap"; }
    void newMultiEnergys() { ran << "newMultiEnergys"; }

    /// What ran since the last call.
    QStringList take() { return std::exchange(ran, {}); }

    QStringList ran;
    const QObject* fileSender = nullptr;

private:
    template <class Value>
    void note(const char* text, Value value)
    {
        ran << QString::fromLatin1(text).arg(value);
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

    void referencesAreHeard();
    void energyRowsAreHeard();
    void spectrumRowsAreHeard();
    void rowsOfSeveralFilesAreHeard();
    void buttonsStartTheirCalculation();
    void conditionsRunTheReflex();
    void edgeFieldsSetTheEdge();
    void backgroundChoicesAreHeard();
    void graphsAreDrawnAndClicked();
    void windowsOpenByTheirButtons();
    void mapsAreDrawnAndClicked();
    void choicesOfMapsAreHeard();
    void normalisationFitsThePlotOfAllSpectra();
    void movedLinesSetTheEdgeAndTheirReleaseCalculates();
    void edgeLinesStandInTheirPlots();
    void limitsAreMeasuredFromTheEdgeLine();

private:
    std::unique_ptr<LooseWidgets> m_loose;
    std::unique_ptr<SlotRecorder> m_panel;
    panel::EdgeMarks m_marks;
};

void tst_Wiring::initTestCase()
{
    m_loose = std::make_unique<LooseWidgets>();
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
    // In the program they live until the process ends.
    for (MarkLines* set : {m_marks.allSpectra, m_marks.singleSpectrum}) {
        qDeleteAll(set->lines);
        set->clear();
    }
    m_panel.reset();
    m_loose.reset();
    delete m_marks.allSpectra;
    delete m_marks.singleSpectrum;
}

void tst_Wiring::referencesAreHeard()
{
    for (int i = 0; i < 4; ++i) {
        ARefFile* row = m_loose->reference(i);
        Q_EMIT row->changedUse(true);
        QCOMPARE(m_panel->take(), QStringList{"calcBoth"});
        Q_EMIT row->foundNewEdge(8333.0);
        QCOMPARE(m_panel->take(), QStringList{"noticedNewEdge 8333"});
        int selected = 0;
        const auto heard =
            connect(&m_loose->references, &RefFiles::selectedFile, this, [&] { ++selected; });
        Q_EMIT row->selectedFile();
        QCOMPARE(selected, 1);
        disconnect(heard);
        QVERIFY(m_panel->take().isEmpty());
    }
}

void tst_Wiring::energyRowsAreHeard()
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

void tst_Wiring::spectrumRowsAreHeard()
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

void tst_Wiring::rowsOfSeveralFilesAreHeard()
{
    Q_EMIT m_loose->form.DispFSelect->newDir("/a");
    Q_EMIT m_loose->form.DispFSelect->newFilePaths({"x", "y"});
    Q_EMIT m_loose->mapFiles.newDir("/b");
    Q_EMIT m_loose->mapFiles.newFilePaths({"m", "n"});
    QCOMPARE(m_panel->take(), (QStringList{"receiveNewDir /a", "receiveNewDispFiles x,y",
                                           "receiveNewDir /b", "receiveNewPaths m,n"}));
    // The save row keeps its own folder.
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

void tst_Wiring::conditionsRunTheReflex()
{
    Q_EMIT m_loose->form.TypeNonEquiv->toggled(true);
    QCOMPARE(m_panel->take(), QStringList{"calcBoth"});
    Q_EMIT m_loose->form.NonEquivBGLinear->toggled(false);
    QCOMPARE(m_panel->take(), QStringList{"calcBoth"});
    // These two wait for the next reflex.
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

void tst_Wiring::backgroundChoicesAreHeard()
{
    Q_EMIT m_loose->form.SubPostEforRef->toggled(true);
    Q_EMIT m_loose->form.SubPostEforTarget->toggled(false);
    Q_EMIT m_loose->form.DispCondsB->toggled(true);
    QCOMPARE(m_panel->take(), (QStringList{"changedSubBGTypeForRef 1",
                                           "changedSubBGTypeForTarget 0", "dispCalcConditions 1"}));
}

void tst_Wiring::graphsAreDrawnAndClicked()
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

void tst_Wiring::windowsOpenByTheirButtons()
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

void tst_Wiring::mapsAreDrawnAndClicked()
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

void tst_Wiring::choicesOfMapsAreHeard()
{
    Q_EMIT m_loose->form.MapWGrid->toggled(true);
    QCOMPARE(m_panel->take(), QStringList{"updateMaps"});
    Q_EMIT m_loose->mapRadios.buttonToggled(nullptr, false);
    QCOMPARE(m_panel->take(), QStringList{"selectedNewMap"});
    Q_EMIT m_loose->mapRows.buttonToggled(nullptr, true);
    QCOMPARE(m_panel->take(), QStringList{"updateDMap"});
}

void tst_Wiring::normalisationFitsThePlotOfAllSpectra()
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

void tst_Wiring::movedLinesSetTheEdgeAndTheirReleaseCalculates()
{
    for (MarkLines* set : {m_marks.allSpectra, m_marks.singleSpectrum}) {
        Q_EMIT set->moving();
        QCOMPARE(m_panel->take(), QStringList{"setEdge"});
        Q_EMIT set->newPos();
        QCOMPARE(m_panel->take(), (QStringList{"setEdge", "calcBoth"}));
    }
}

void tst_Wiring::edgeLinesStandInTheirPlots()
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

void tst_Wiring::limitsAreMeasuredFromTheEdgeLine()
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
