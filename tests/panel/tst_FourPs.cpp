// Tests of the panel: its initial state, its exclusive buttons, its message box, the values that
// it reads from its widgets, and the order of its slots.

#include "display/Histgram.h"
#include "support/MemberOrder.h"
#include "support/SharedPanel.h"

#include <QButtonGroup>
#include <QDir>
#include <QFileDialog>
#include <QTest>

using namespace tests;

class tst_FourPs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void panelAndItsWidgetsHaveTheirObjectNames();
    void referencesStartWithTwoInUseAndValences0To3();
    void energyRowsStartWithSixEnergiesAndFourRowsInUse();
    void energiesOfRows7And8StartEmpty();
    void thirdRowStartsAsTheVPointAndFirstMapIsShown();
    void energyGridContainsTheWidgetsOfTheEnergyRows();
    void onlyTheFileColumnHeadingIsLeftAligned();
    void moreConditionsSectionIsHiddenAtStart();
    void moreConditionsBoxShowsAndHidesItsSection();
    void fourPointsRadiosCannotBeChangedByTheUser();
    void constructorCalculatesTheHistogramLimits();
    void constructorRunsTheCalculationsOnce();
    void windowsStartHiddenAndTheirPlotsDocked();
    void showMapButtonsAreExclusive();
    void mapRadiosAreExclusive();
    void normalisationRadiosAreExclusive();
    void saveNameIsEditableAndTwoFileRowsAcceptSeveralFiles();
    void dialogTitlesNameTheirRows();
    void onlySpectrumRowsShowAnEnergyShift();
    void fileRowsExceptTheSaveRowStartInTheWorkingDirectory();
    void histogramsOfOnePlotShareTheirFields();

    void messageCollapsesWhiteSpaceAndEndsWithANewline();

    void outputColumnNameAndSelectionAreReadByIndex();
    void kindOfMapIsTheIndexOfTheCheckedRadio();
    void edgeJumpRatioIsRef1OverRef2AndValenceMixWeightsRef1();
    void slotsHaveTheExpectedOrder();

private:
    std::unique_ptr<const FourPs> m_fresh; ///< never modified: the state after construction
    std::unique_ptr<FourPs> m_panel;
};

void tst_FourPs::initTestCase()
{
    m_fresh = std::make_unique<FourPs>();
    m_panel = std::make_unique<FourPs>();
}

void tst_FourPs::init()
{
    resetPanel(*m_panel);
}

void tst_FourPs::cleanupTestCase()
{
    m_fresh.reset();
    closePanel(m_panel);
}

void tst_FourPs::panelAndItsWidgetsHaveTheirObjectNames()
{
    const FourPs& panel = *m_fresh;
    QCOMPARE(panel.objectName(), "FourPs");
    QCOMPARE(panel.findChild<QLineEdit*>("MultiEnergys"), panel.MultiEnergys);
    QCOMPARE(panel.findChild<AFileSelect*>("MultiFiles"), panel.MultiFiles);
    for (const char* name : {"SaveFSelect", "DispFSelect", "TargetFile"}) {
        QVERIFY2(panel.findChild<AFileSelect*>(name), name);
    }
    QCOMPARE(panel.XafsFiles.size(), 5);
    QCOMPARE(panel.XafsFiles.at(4), panel.ui.TargetFile);
    QCOMPARE(panel.EPoints.size(), 8);
}

void tst_FourPs::referencesStartWithTwoInUseAndValences0To3()
{
    const FourPs& panel = *m_fresh;
    QCOMPARE(panel.Refs.RefRows.size(), 4);
    for (int i = 0; i < 4; ++i) {
        const ARefFile* row = panel.Refs.RefRows.at(i);
        QCOMPARE(row->RefName->text(), QStringLiteral("Ref %1").arg(i + 1));
        QCOMPARE(row->UseCB->isChecked(), i < 2);
        QCOMPARE(row->Valence->text(), QString::number(i));
        QCOMPARE(row->Valence->cursorPosition(), 0);
        QCOMPARE(panel.XafsFiles.at(i), row->XafsFS);
    }
}

void tst_FourPs::energyRowsStartWithSixEnergiesAndFourRowsInUse()
{
    const FourPs& panel = *m_fresh;
    const QStringList energies{"8313", "8381", "8390", "8404.5", "8460", "8475"};
    for (int i = 0; i < 6; ++i) {
        QCOMPARE(panel.EPoints.at(i)->Energy->text(), energies.at(i));
        QCOMPARE(panel.EPoints.at(i)->Energy->cursorPosition(), 0);
    }
    for (int i = 0; i < 8; ++i) {
        QCOMPARE(panel.EPoints.at(i)->UseCB->isChecked(), i < 4);
        QCOMPARE(panel.EPoints.at(i)->NumDisp->text(), QStringLiteral("%1:  ").arg(i + 1));
    }
}

void tst_FourPs::energiesOfRows7And8StartEmpty()
{
    const FourPs& panel = *m_fresh;
    QVERIFY(panel.EPoints.at(6)->Energy->text().isEmpty());
    QVERIFY(panel.EPoints.at(7)->Energy->text().isEmpty());
}

void tst_FourPs::thirdRowStartsAsTheVPointAndFirstMapIsShown()
{
    const FourPs& panel = *m_fresh;
    for (int i = 0; i < 8; ++i) {
        QCOMPARE(panel.EPoints.at(i)->VPointCB->isChecked(), i == 2);
        QCOMPARE(panel.EPoints.at(i)->ShowMapB->isChecked(), i == 0);
        QVERIFY(!panel.EPoints.at(i)->LCFCB->isChecked());
    }
}

void tst_FourPs::energyGridContainsTheWidgetsOfTheEnergyRows()
{
    const FourPs& panel = *m_fresh;
    for (int i = 0; i < 8; ++i) {
        const AEPoint* row = panel.EPoints.at(i);
        const QList<QWidget*> inColumns{row->UseCB, row->VPointCB,   row->LCFCB,   row->Energy,
                                        row->Mut1,  row->Mut2,       row->Mut3,    row->Mut4,
                                        row->MutT,  row->FileSelect, row->ShowMapB};
        for (int k = 0; k < inColumns.size(); ++k) {
            QLayoutItem* item = panel.ui.CLayout->itemAtPosition(i + 2, k + 1);
            QVERIFY(item);
            QCOMPARE(item->widget(), inColumns.at(k));
            // The path field fills its column. All other widgets are centred.
            const bool path = inColumns.at(k) == row->FileSelect;
            QCOMPARE(item->alignment(), path ? Qt::AlignVCenter : Qt::AlignCenter);
            QCOMPARE(inColumns.at(k)->parentWidget(), panel.ui.FourPsFiles);
        }
    }
}

void tst_FourPs::onlyTheFileColumnHeadingIsLeftAligned()
{
    for (int column = 0; column < 12; ++column) {
        const QWidget* heading = m_fresh->ui.CLayout->itemAtPosition(0, column)->widget();
        const auto* label = qobject_cast<const QLabel*>(heading);
        QVERIFY(label);
        QCOMPARE(bool(label->alignment() & Qt::AlignLeft), column == 10);
    }
}

void tst_FourPs::moreConditionsSectionIsHiddenAtStart()
{
    const FourPs& panel = *m_fresh;
    QVERIFY(panel.ui.CConds->isHidden());
}

void tst_FourPs::moreConditionsBoxShowsAndHidesItsSection()
{
    FourPs& panel = *m_panel;
    panel.ui.DispCondsB->click();
    QVERIFY(!panel.ui.CConds->isHidden());
    panel.ui.DispCondsB->click();
    QVERIFY(panel.ui.CConds->isHidden());
}

void tst_FourPs::fourPointsRadiosCannotBeChangedByTheUser()
{
    FourPs& panel = *m_panel;
    panel.show();
    panel.ui.DispCondsB->click();
    QTest::mouseClick(panel.ui.TypeTMKisExact, Qt::LeftButton);
    panel.hide();
    QVERIFY(!panel.ui.TypeTMKisExact->isChecked());
    QVERIFY(panel.ui.TypeTMKisLS->isChecked());
    QVERIFY(!panel.ui.CConds3->isEnabled());
}

void tst_FourPs::constructorCalculatesTheHistogramLimits()
{
    // The valence limits are 0.5 outside the valences of the references in use, 0 and 1. The
    // thickness limits are 0.5 outside the range from 0 to the sum of the edge jumps, which is 0
    // without spectra.
    const FourPs& panel = *m_fresh;
    QCOMPARE(panel.ui.HgAFrom->text(), "-0.5");
    QCOMPARE(panel.ui.HgATo->text(), "1.5");
    QCOMPARE(panel.ui.HgTFrom->text(), "-0.5");
    QCOMPARE(panel.ui.HgTTo->text(), "0.5");
    QCOMPARE(panel.ui.HgABoxes->text(), "51");
}

void tst_FourPs::constructorRunsTheCalculationsOnce()
{
    // The constructor calculates map, target and fit once; without spectra each calculation
    // is refused with these messages.
    const FourPs& panel = *m_fresh;
    const QString few("Number of valied Ref Files is 0, which is less than 2.");
    QCOMPARE(messages(panel), (QStringList{few, "Ref File 0 is not valid.", few,
                                           "The 1st Ref File is not valid.", noFitRange}));
}

void tst_FourPs::windowsStartHiddenAndTheirPlotsDocked()
{
    const FourPs& panel = *m_fresh;
    for (const QWidget* window : QList<QWidget*>{panel.Disps, panel.MapDisp, panel.DMapDisp}) {
        QVERIFY(window->isWindow() && !window->parent() && window->isHidden());
    }
    for (const DispABase* each : std::as_const(panel.Disps->disps)) {
        QVERIFY(each->docked && each->pop->isHidden() && !each->DispA->hasScale);
    }
    QVERIFY(panel.LCFvs4PS.isEmpty());
    QCOMPARE(panel.LCFColor, 0);
}

void tst_FourPs::showMapButtonsAreExclusive()
{
    FourPs& panel = *m_panel;
    panel.EPoints.at(5)->ShowMapB->click();
    QVERIFY(!panel.EPoints.at(0)->ShowMapB->isChecked());
    QVERIFY(panel.EPoints.at(5)->ShowMapB->group());
    QCOMPARE(panel.EPoints.at(5)->ShowMapB->group()->buttons().size(), 8);
}

void tst_FourPs::mapRadiosAreExclusive()
{
    FourPs& panel = *m_panel;
    QList<QAbstractButton*> expected{panel.ui.MapValence, panel.ui.MapAmount, panel.ui.MapRatio1,
                                     panel.ui.MapRatio2,  panel.ui.MapRatio3, panel.ui.MapRatio4,
                                     panel.ui.MapDMut1,   panel.ui.MapDMut2,  panel.ui.MapDMut3,
                                     panel.ui.MapDMut4,   panel.ui.MapMut0,   panel.ui.MapC1,
                                     panel.ui.MapC2};
    QVERIFY(panel.ui.MapValence->group());
    QCOMPARE(panel.ui.MapValence->group()->buttons(), expected);
    panel.ui.MapC2->click();
    QVERIFY(!panel.ui.MapValence->isChecked());
}

void tst_FourPs::normalisationRadiosAreExclusive()
{
    FourPs& panel = *m_panel;
    const QList<QAbstractButton*> expected{panel.ui.NNone, panel.ui.NBySubPre, panel.ui.NByEJ,
                                           panel.ui.NBy2Vics};
    QVERIFY(panel.ui.NNone->group());
    QCOMPARE(panel.ui.NNone->group()->buttons(), expected);
    panel.ui.NNone->click();
    QVERIFY(!panel.ui.NBy2Vics->isChecked());
}

void tst_FourPs::saveNameIsEditableAndTwoFileRowsAcceptSeveralFiles()
{
    const FourPs& panel = *m_fresh;
    QVERIFY(!panel.ui.SaveFSelect->FileName->isReadOnly());
    QCOMPARE(panel.ui.SaveFSelect->mode, 1);
    for (const AFileSelect* row : {panel.ui.DispFSelect, panel.MultiFiles}) {
        QVERIFY(row->multi);
        QCOMPARE(row->dialog->fileMode(), QFileDialog::ExistingFiles);
    }
    QCOMPARE(panel.EPoints.at(0)->FileSelect->dialog->fileMode(), QFileDialog::ExistingFile);
}

void tst_FourPs::dialogTitlesNameTheirRows()
{
    const FourPs& panel = *m_fresh;
    for (int i = 0; i < panel.Refs.RefRows.size(); ++i) {
        QCOMPARE(panel.Refs.RefRows.at(i)->XafsFS->dialog->windowTitle(),
                 QStringLiteral("Ref %1").arg(i + 1));
    }
    QCOMPARE(panel.ui.TargetFile->dialog->windowTitle(), QStringLiteral("Target"));
    QCOMPARE(panel.ui.DispFSelect->dialog->windowTitle(), QStringLiteral("Disp. Only"));
    QCOMPARE(panel.ui.SaveFSelect->dialog->windowTitle(), QStringLiteral("Write"));
    QCOMPARE(panel.MultiFiles->dialog->windowTitle(), QStringLiteral("Select 2D Map Data"));
    for (int i = 0; i < panel.EPoints.size(); ++i) {
        QCOMPARE(panel.EPoints.at(i)->FileSelect->dialog->windowTitle(),
                 QStringLiteral("Select 2D Map Data %1").arg(i + 1));
    }
}

void tst_FourPs::onlySpectrumRowsShowAnEnergyShift()
{
    const FourPs& panel = *m_fresh;
    for (const AXafsFileSelect* row : std::as_const(panel.XafsFiles)) {
        QVERIFY(!row->dEBase->isHidden());
    }
    for (const AFileSelect* row :
         {panel.ui.SaveFSelect, panel.ui.DispFSelect, panel.EPoints.at(0)->FileSelect}) {
        QVERIFY(row->dEBase->isHidden());
    }
}

void tst_FourPs::fileRowsExceptTheSaveRowStartInTheWorkingDirectory()
{
    const FourPs& panel = *m_fresh;
    QCOMPARE(panel.EPoints.at(7)->FileSelect->dir, QDir::currentPath());
    QCOMPARE(panel.XafsFiles.at(0)->dir, QDir::currentPath());
    QCOMPARE(panel.ui.TargetFile->dir, QDir::currentPath());
    QCOMPARE(panel.ui.DispFSelect->dir, QDir::currentPath());
    QCOMPARE(panel.MultiFiles->dir, QDir::currentPath());
    QVERIFY(panel.ui.SaveFSelect->dir.isEmpty());
}

void tst_FourPs::histogramsOfOnePlotShareTheirFields()
{
    const FourPs& panel = *m_fresh;
    QCOMPARE(panel.HistV->fromEdit, panel.ui.HgAFrom);
    QCOMPARE(panel.HistT->toEdit, panel.ui.HgTTo);
    QCOMPARE(panel.HistRatio.size(), 4);
    QCOMPARE(panel.HistDMut.size(), 4);
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(panel.HistRatio.at(i)->boxesEdit, panel.ui.HgABoxes);
        QCOMPARE(panel.HistRatio.at(i)->autoBox, panel.ui.HgAAuto);
        QCOMPARE(panel.HistDMut.at(i)->fromEdit, panel.ui.HgTFrom);
        QCOMPARE(panel.HistDMut.at(i)->autoBox, panel.ui.HgTAuto);
    }
}

void tst_FourPs::messageCollapsesWhiteSpaceAndEndsWithANewline()
{
    FourPs& panel = *m_panel;
    clearMessages(panel);
    panel.message("  one \n\n two\tthree  ");
    panel.message("four");
    QCOMPARE(panel.ui.Message->toPlainText(), "one two three\nfour\n");
}

void tst_FourPs::outputColumnNameAndSelectionAreReadByIndex()
{
    FourPs& panel = *m_panel;
    for (int i = 0; i < 13; ++i) {
        // Of the check boxes of the columns, only those of columns 11 and 12 are initially checked.
        QCOMPARE(panel.isColumnWanted(i), i >= 11);
    }
    panel.ui.RecC1->toggle();
    QVERIFY(panel.isColumnWanted(9));
    QCOMPARE(panel.columnName(9), "C1");
    for (const int outside : {-1, 13}) {
        QVERIFY(!panel.isColumnWanted(outside));
        QCOMPARE(panel.columnName(outside), "UnKnown");
    }
}

void tst_FourPs::kindOfMapIsTheIndexOfTheCheckedRadio()
{
    FourPs& panel = *m_panel;
    QCOMPARE(panel.kindOfMap(), 11);
    panel.ui.MapRatio3->click();
    QCOMPARE(panel.kindOfMap(), 2);
}

void tst_FourPs::edgeJumpRatioIsRef1OverRef2AndValenceMixWeightsRef1()
{
    FourPs& panel = *m_panel;
    makeReferenceValid(panel, 0, 3.0);
    makeReferenceValid(panel, 1, 2.0);
    QCOMPARE(panel.edgeJumpRatio(), 1.5);
    QCOMPARE(panel.valenceMix(0.25), 0.75); // 0.25 * 0 + (1 - 0.25) * 1
    panel.ui.NByEJ->setChecked(true);
    QCOMPARE(panel.NormMode(), 3);
}

void tst_FourPs::slotsHaveTheExpectedOrder()
{
    const QStringList slotNames = memberNames(FourPs::staticMetaObject, QMetaMethod::Slot);
    QCOMPARE(slotNames.size(), 36);
    QCOMPARE(slotNames, (QStringList{"noticedNewEdge(double)",
                                     "setEdge()",
                                     "updateMaps(bool)",
                                     "dispCalcConditions(bool)",
                                     "changedSubBGTypeForRef(bool)",
                                     "changedSubBGTypeForTarget(bool)",
                                     "removeAFile()",
                                     "receiveNewDir(QString)",
                                     "receiveNewEnergy(double)",
                                     "receiveNewFile(QString)",
                                     "receiveNewRef(int)",
                                     "receiveNewRef1(QString)",
                                     "receiveNewRef2(QString)",
                                     "receiveNewRef3(QString)",
                                     "receiveNewRef4(QString)",
                                     "receiveNewTarget(QString)",
                                     "receiveNewDispFiles(QStringList)",
                                     "receiveNewPaths(QStringList)",
                                     "calcBoth()",
                                     "calcMap()",
                                     "calcTarget()",
                                     "calcAndWrite()",
                                     "write()",
                                     "clearLCFvs4PS(MouseC*)",
                                     "newColorLCFvs4PS(MouseC*)",
                                     "updateDMap()",
                                     "draw(Displays::DispId,DispABase*,QStylePainter*)",
                                     "drawMap(QStylePainter*)",
                                     "drawDMap(QStylePainter*)",
                                     "selectedNewMap()",
                                     "receiveNowPosInMap(double,double)",
                                     "receiveNowPosInDMap(double,double)",
                                     "lcf()",
                                     "mPressedInAllMut(MouseC*)",
                                     "dClickedInMap(MouseC*)",
                                     "newMultiEnergys()"}));
}

QTEST_MAIN(tst_FourPs)
#include "tst_FourPs.moc"
