// Tests of the panel's reactions to changes of its inputs, for example to new files, edges,
// energies, directories and methods.

#include "display/Histgram.h"
#include "support/SharedPanel.h"
#include "support/SpectrumText.h"
#include "support/TestFiles.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QUrl>

#include <cmath>

using namespace tests;

namespace
{

// The line that a map calculation with a four-point method writes if there is no V row.
const QString mapRefusal = QStringLiteral("V Point is not selected");

// Counts the runs of calcBoth(): with a four-point method and no V row, every run writes
// mapRefusal once.
class RunCounter
{
public:
    explicit RunCounter(FourPs& panel)
        : m_panel(panel)
    {
        chooseFourPoints(panel);
        for (AEPoint* row : std::as_const(panel.EPoints)) {
            row->VPointCB->setChecked(false);
        }
        clearMessages(panel);
    }

    qsizetype runs() const { return messages(m_panel).count(mapRefusal); }
    void restart() { clearMessages(m_panel); }

private:
    FourPs& m_panel;
};

struct Files {
    QTemporaryDir dir;
    QString ref1 = writeFile(dir, "ref1.dat", spectrumText("1.00", "1.5", "1.25", "1"));
    QString ref2 = writeFile(dir, "ref2.dat", spectrumText("1.00", "0.5", "1.25", "1"));
    QString target = writeFile(dir, "target.dat", spectrumText("2.00", "2.0", "2.50", "2"));
    QString broken = writeFile(dir, "broken.dat", "# nothing\n");
};

void load(AXafsFileSelect* row, const QString& path)
{
    static_cast<AFileSelect*>(row)->newFile(path);
}

QString mut(const FourPs& panel, int row, int reference)
{
    return panel.EPoints.at(row)->mutEdits.at(reference)->text();
}

} // namespace

class tst_FourPsReflexes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void loadingAReferenceFillsItsColumn();
    void loadingAReferenceProposesTheEdge();
    void loadingAReferenceRecalculatesThreeTimes();
    void loadingASecondReferenceRecalculatesFourTimes();
    void loadingTheTargetFillsItsColumnAndProposesNoEdge();
    void loadingAReferenceKeepsTheMutOfARowWithoutEnergy();
    void loadingAReferenceKeepsTheMutOfARowWithAnInvalidEnergy();
    void loadingAReferenceClearsTheMutOfARowAboveTheSpectrum();
    void targetColumnIsWrittenWithoutAnEnergyCheck();
    void missingFileKeepsTheSpectrumButRecalculates();
    void brokenFileInvalidatesTheReference();
    void clearingAReferenceRowKeepsItsSpectrum();

    void newEdgeIsWrittenWithSixDigits();
    void setEdgeSetsTheLimitsOfAllSpectra();
    void setEdgeRefitsThePostEdgeLinesBeforeRecalculating();
    void setEdgeUpdatesOnlyColumnsOfValidReferences();
    void newEdgeKeepsTheTargetColumn();

    void newEnergyUpdatesOnlyItsRow();
    void newEnergyStartsNoCalculation();
    void emptyEnergyUpdatesTheMutFieldsOfItsRow();
    void newEnergyFromAnUnknownSenderIsIgnored();

    void referencePostEdgeRadioChangesColumnsAndFlags();
    void targetPostEdgeRadioChangesItsColumnAndRecalculatesOnce();
    void targetPreEdgeRadioRecalculatesOnce();

    void togglingUseOfAReferenceRecalculatesOnce();
    void setUseRecalculatesTwiceOnChange();
    void clickingACheckBoxOfARowRecalculatesOnce();
    void setCheckedOnACheckBoxOfARowDoesNotRecalculate();
    void choosingAMethodRecalculates();
    void shiftOfAValidSpectrumRecalculatesWithoutRefit();

    void receiveNewRefIgnoresInvalidReferences();
    void numberedReferenceSlotsUpdateTheirColumns();
    void receiveNewFileWithoutASenderRecalculates();

    void displayFilesAreListedAndLoaded();
    void unreadableDisplayFilesAreSkipped();
    void newEdgeIsSetInTheDisplayFiles();
    void removeAFileRemovesTheSelectedFile();
    void removeAFileWithoutDisplayFilesKeepsTheList();

    void pathsFillTheRowsInOrderAndExtraPathsAreIgnored();
    void newDirectoryIsSetInAllRowsButTheSaveRow();
    void dropFromANetworkShareKeepsTheDialogDirectories();
    void listOfEnergiesIsCopiedToTheRowsAsTyped();
    void listOfEnergiesSkipsInvalidEnergies();
    void listOfEnergiesDoesNotEmitNewEnergy();

    void valenceRangeIncludesTheUsedReferences();
    void histogramRangeIsSetOnlyIfAutoIsChecked();
    void energyInAMapFileUpdatesTheRow();
    void recalculationSetsTheHistogramLimitsBeforeCounting();

private:
    Files m_files;
    const SharedPanel m_panel;
};

void tst_FourPsReflexes::init()
{
    resetPanel(*m_panel);
}

void tst_FourPsReflexes::loadingAReferenceFillsItsColumn()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    // The pre-edge line is 0, so the mut fields show the values of the spectrum: 0 at 8313 eV,
    // three given values, and the constant 1 at 8460 and 8475 eV.
    const QStringList expected{"0", "1", "1.5", "1.25", "1", "1"};
    for (int i = 0; i < expected.size(); ++i) {
        QCOMPARE(mut(panel, i, 0), expected.at(i));
        QCOMPARE(panel.EPoints.at(i)->mutEdits.at(0)->cursorPosition(), 0);
        QVERIFY(mut(panel, i, 1).isEmpty());
    }
}

void tst_FourPsReflexes::loadingAReferenceProposesTheEdge()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    QCOMPARE(panel.ui.EdgeE->text(), "8345");
    QCOMPARE(panel.ui.EdgeE->cursorPosition(), 0);
    QCOMPARE(panel.XafsFiles.at(0)->edgeEnergy, 8345.0);
    QCOMPARE(panel.XafsFiles.at(0)->preEdgeEnd, 8295.0);
    QCOMPARE(panel.XafsFiles.at(0)->postEdgeStart, 8445.0);
}

void tst_FourPsReflexes::loadingAReferenceRecalculatesThreeTimes()
{
    // After it has set the proposed edge, the panel recalculates once for each valid reference:
    // here once. Then it recalculates once for the column of the loaded reference and once for the
    // new file.
    FourPs& panel = *m_panel;
    RunCounter counter(panel);
    load(panel.XafsFiles.at(0), m_files.ref1);
    QCOMPARE(counter.runs(), 3);
}

void tst_FourPsReflexes::loadingASecondReferenceRecalculatesFourTimes()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    RunCounter counter(panel);
    load(panel.XafsFiles.at(1), m_files.ref2);
    QCOMPARE(counter.runs(), 4); // 2 for the new edge, 1 for the loaded column, 1 for the file
}

void tst_FourPsReflexes::loadingTheTargetFillsItsColumnAndProposesNoEdge()
{
    FourPs& panel = *m_panel;
    panel.setEdge();
    RunCounter counter(panel);
    load(panel.ui.TargetFile, m_files.target);
    QCOMPARE(panel.ui.EdgeE->text(), "8350");
    QCOMPARE(panel.EPoints.at(1)->MutT->text(), "2");
    QCOMPARE(panel.EPoints.at(3)->MutT->text(), "2.5");
    QCOMPARE(counter.runs(), 1);
}

void tst_FourPsReflexes::loadingAReferenceKeepsTheMutOfARowWithoutEnergy()
{
    FourPs& panel = *m_panel;
    panel.EPoints.at(6)->Mut1->setText("typed");
    load(panel.XafsFiles.at(0), m_files.ref1);
    QCOMPARE(mut(panel, 6, 0), "typed");
}

void tst_FourPsReflexes::loadingAReferenceKeepsTheMutOfARowWithAnInvalidEnergy()
{
    FourPs& panel = *m_panel;
    panel.EPoints.at(0)->Energy->setText("edge");
    panel.EPoints.at(0)->Mut1->setText("typed");
    panel.EPoints.at(1)->Energy->setText("-8381");
    panel.EPoints.at(1)->Mut1->setText("typed");
    load(panel.XafsFiles.at(0), m_files.ref1);
    QCOMPARE(mut(panel, 0, 0), "typed");
    QCOMPARE(mut(panel, 1, 0), "typed");
}

void tst_FourPsReflexes::loadingAReferenceClearsTheMutOfARowAboveTheSpectrum()
{
    FourPs& panel = *m_panel;
    panel.EPoints.at(0)->Energy->setText("8851");
    panel.EPoints.at(0)->Mut1->setText("typed");
    load(panel.XafsFiles.at(0), m_files.ref1);
    QVERIFY(mut(panel, 0, 0).isEmpty());
}

void tst_FourPsReflexes::targetColumnIsWrittenWithoutAnEnergyCheck()
{
    FourPs& panel = *m_panel;
    panel.EPoints.at(0)->Energy->setText("9000");
    panel.EPoints.at(0)->MutT->setText("typed");
    panel.EPoints.at(6)->MutT->setText("typed"); // row 6 has no energy
    load(panel.ui.TargetFile, m_files.target);
    QVERIFY(panel.EPoints.at(0)->MutT->text().isEmpty());
    QVERIFY(panel.EPoints.at(6)->MutT->text() != "typed");
}

void tst_FourPsReflexes::missingFileKeepsTheSpectrumButRecalculates()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    panel.ui.EdgeE->setText("8333");
    RunCounter counter(panel);
    load(panel.XafsFiles.at(0), m_files.dir.filePath("missing.dat"));
    QVERIFY(panel.XafsFiles.at(0)->valid);
    QCOMPARE(panel.ui.EdgeE->text(), "8333"); // no edge is proposed
    QCOMPARE(counter.runs(), 2);              // 1 for the column, 1 for the file
}

void tst_FourPsReflexes::brokenFileInvalidatesTheReference()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    panel.ui.EdgeE->setText("8333");
    RunCounter counter(panel);
    load(panel.XafsFiles.at(0), m_files.broken);
    QVERIFY(!panel.XafsFiles.at(0)->valid);
    QCOMPARE(panel.ui.EdgeE->text(), "8333"); // no edge is proposed
    QCOMPARE(mut(panel, 1, 0), "1");          // the values of the earlier file remain
    QCOMPARE(counter.runs(), 1);
}

void tst_FourPsReflexes::clearingAReferenceRowKeepsItsSpectrum()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    panel.XafsFiles.at(0)->ClearB->click();
    QVERIFY(panel.XafsFiles.at(0)->FileName->text().isEmpty());
    QVERIFY(panel.XafsFiles.at(0)->valid);
}

void tst_FourPsReflexes::newEdgeIsWrittenWithSixDigits()
{
    FourPs& panel = *m_panel;
    panel.noticedNewEdge(8333.123456);
    QCOMPARE(panel.ui.EdgeE->text(), "8333.12");
    QCOMPARE(panel.XafsFiles.at(3)->edgeEnergy, 8333.12); // the rounded value of the field
}

void tst_FourPsReflexes::setEdgeSetsTheLimitsOfAllSpectra()
{
    FourPs& panel = *m_panel;
    panel.ui.EdgeE->setText("8340");
    panel.ui.PreEEndDE->setText("-30");
    panel.ui.PostEStartDE->setText("80.5");
    panel.setEdge();
    for (const AXafsFileSelect* row : std::as_const(panel.XafsFiles)) {
        QCOMPARE(row->preEdgeEnd, 8310.0);
        QCOMPARE(row->edgeEnergy, 8340.0);
        QCOMPARE(row->postEdgeStart, 8420.5);
    }
}

void tst_FourPsReflexes::setEdgeRefitsThePostEdgeLinesBeforeRecalculating()
{
    // The upper thickness limit is the sum of the edge jumps, 1 + 1, plus 0.5. It is 2.5 only
    // if the post-edge lines of both spectra are fitted again before the last recalculation.
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    load(panel.XafsFiles.at(1), m_files.ref2);
    enter(panel.ui.PostEStartDE, "1000"); // no point is above 9345 eV, so the post-edge line is NaN
    QCOMPARE(panel.ui.HgTTo->text(), "nan");
    enter(panel.ui.PostEStartDE, "100");
    QVERIFY(std::abs(panel.ui.HgTTo->text().toDouble() - 2.5) < 1e-4);
}

void tst_FourPsReflexes::setEdgeUpdatesOnlyColumnsOfValidReferences()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    panel.EPoints.at(1)->Mut1->setText("typed");
    panel.EPoints.at(1)->Mut2->setText("typed");
    RunCounter counter(panel);
    panel.setEdge();
    QCOMPARE(mut(panel, 1, 0), "1");
    QCOMPARE(mut(panel, 1, 1), "typed");
    QCOMPARE(counter.runs(), 1);
}

void tst_FourPsReflexes::newEdgeKeepsTheTargetColumn()
{
    FourPs& panel = *m_panel;
    load(panel.ui.TargetFile, m_files.target);
    panel.EPoints.at(1)->MutT->setText("typed");
    enter(panel.ui.EdgeE, "8341");
    QCOMPARE(panel.EPoints.at(1)->MutT->text(), "typed");
}

void tst_FourPsReflexes::newEnergyUpdatesOnlyItsRow()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    load(panel.ui.TargetFile, m_files.target);
    panel.EPoints.at(1)->Mut1->setText("typed");
    enter(panel.EPoints.at(0)->Energy, "8390");
    QCOMPARE(mut(panel, 0, 0), "1.5");
    QCOMPARE(panel.EPoints.at(0)->MutT->text(), "2");
    QCOMPARE(mut(panel, 1, 0), "typed");
}

void tst_FourPsReflexes::newEnergyStartsNoCalculation()
{
    FourPs& panel = *m_panel;
    RunCounter counter(panel);
    enter(panel.EPoints.at(0)->Energy, "8390");
    QVERIFY(messages(panel).isEmpty());
}

void tst_FourPsReflexes::emptyEnergyUpdatesTheMutFieldsOfItsRow()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    panel.EPoints.at(0)->Mut1->setText("typed");
    panel.EPoints.at(0)->Mut2->setText("typed"); // without a spectrum the field is cleared
    enter(panel.EPoints.at(0)->Energy, "");
    QVERIFY(mut(panel, 0, 0) != "typed");
    QVERIFY(mut(panel, 0, 1).isEmpty());
}

void tst_FourPsReflexes::newEnergyFromAnUnknownSenderIsIgnored()
{
    FourPs& panel = *m_panel;
    AEPoint outsider;
    panel.EPoints.at(0)->Mut1->setText("typed");
    connect(&outsider, &AEPoint::newEnergy, &panel, &FourPs::receiveNewEnergy);
    Q_EMIT outsider.newEnergy(8390);
    panel.receiveNewEnergy(8390);
    QCOMPARE(mut(panel, 0, 0), "typed");
}

void tst_FourPsReflexes::referencePostEdgeRadioChangesColumnsAndFlags()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    RunCounter counter(panel);
    panel.ui.SubPostEforRef->click();
    // The post-edge line is 1, so 1.5 becomes 0.5. The tolerance 1e-4 is above the
    // numerical error of the three-term fit and far below any real difference.
    QVERIFY(std::abs(mut(panel, 2, 0).toDouble() - 0.5) < 1e-4);
    QVERIFY(panel.XafsFiles.at(0)->subPost);
    QVERIFY(panel.XafsFiles.at(3)->subPost);
    QVERIFY(!panel.ui.TargetFile->subPost);
    QVERIFY(panel.EPoints.at(0)->subBGForRef);
    QVERIFY(!panel.EPoints.at(0)->subBGForTarget);
    QCOMPARE(counter.runs(), 1);
    panel.ui.SubPreEforRef->click();
    QCOMPARE(mut(panel, 2, 0), "1.5");
    QVERIFY(!panel.EPoints.at(0)->subBGForRef);
}

void tst_FourPsReflexes::targetPostEdgeRadioChangesItsColumnAndRecalculatesOnce()
{
    FourPs& panel = *m_panel;
    load(panel.ui.TargetFile, m_files.target);
    RunCounter counter(panel);
    panel.ui.SubPostEforTarget->click();
    QVERIFY(std::abs(panel.EPoints.at(3)->MutT->text().toDouble() - 0.5) < 1e-4);
    QVERIFY(panel.ui.TargetFile->subPost);
    QVERIFY(!panel.XafsFiles.at(0)->subPost);
    QVERIFY(panel.EPoints.at(7)->subBGForTarget);
    QCOMPARE(counter.runs(), 1);
}

void tst_FourPsReflexes::targetPreEdgeRadioRecalculatesOnce()
{
    FourPs& panel = *m_panel;
    panel.ui.SubPostEforTarget->click();
    RunCounter counter(panel);
    panel.ui.SubPreEforTarget->click(); // also unchecks the other radio button
    QCOMPARE(counter.runs(), 1);
}

void tst_FourPsReflexes::togglingUseOfAReferenceRecalculatesOnce()
{
    FourPs& panel = *m_panel;
    RunCounter counter(panel);
    panel.Refs.RefRows.at(2)->UseCB->click();
    QCOMPARE(counter.runs(), 1);
    panel.Refs.RefRows.at(2)->UseCB->setChecked(false);
    QCOMPARE(counter.runs(), 2);
}

void tst_FourPsReflexes::setUseRecalculatesTwiceOnChange()
{
    FourPs& panel = *m_panel;
    RunCounter counter(panel);
    panel.Refs.RefRows.at(3)->setUse(true);
    QCOMPARE(counter.runs(), 2);
    panel.Refs.RefRows.at(3)->setUse(true);
    QCOMPARE(counter.runs(), 2);
}

void tst_FourPsReflexes::clickingACheckBoxOfARowRecalculatesOnce()
{
    FourPs& panel = *m_panel;
    RunCounter counter(panel);
    panel.EPoints.at(5)->UseCB->click();
    QCOMPARE(counter.runs(), 1);
    panel.EPoints.at(5)->LCFCB->click();
    QCOMPARE(counter.runs(), 2);
    panel.EPoints.at(5)->VPointCB->click(); // without a map, row 5 is not accepted as the V row
    QCOMPARE(counter.runs(), 3);
}

void tst_FourPsReflexes::setCheckedOnACheckBoxOfARowDoesNotRecalculate()
{
    FourPs& panel = *m_panel;
    RunCounter counter(panel);
    panel.EPoints.at(5)->UseCB->setChecked(true);
    QVERIFY(messages(panel).isEmpty());
}

void tst_FourPsReflexes::choosingAMethodRecalculates()
{
    FourPs& panel = *m_panel;
    RunCounter counter(panel);
    panel.ui.NonEquivBGVic->click();
    QCOMPARE(counter.runs(), 1);
    // The non-equivalent method refuses the map with another message.
    panel.ui.TypeNonEquiv->click();
    QCOMPARE(messages(panel).count("Ref File 0 is not valid."), 1);
}

void tst_FourPsReflexes::shiftOfAValidSpectrumRecalculatesWithoutRefit()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    AMutE& spectrum = *panel.XafsFiles.at(0);
    const double before = spectrum.postValue(8500);
    RunCounter counter(panel);
    enter(panel.XafsFiles.at(0)->Ui_AFileSelect::dE, "5");
    QCOMPARE(spectrum.dE, 5.0);
    QCOMPARE(spectrum.postValue(8500), before);
    QCOMPARE(counter.runs(), 1);
    QCOMPARE(mut(panel, 2, 0), "1.5"); // an energy shift does not update the mut columns
}

void tst_FourPsReflexes::receiveNewRefIgnoresInvalidReferences()
{
    FourPs& panel = *m_panel;
    RunCounter counter(panel);
    for (const int n : {-1, 0, 4, 1000}) {
        panel.receiveNewRef(n); // index 0 exists, but no reference is valid
    }
    QVERIFY(messages(panel).isEmpty());
}

void tst_FourPsReflexes::numberedReferenceSlotsUpdateTheirColumns()
{
    FourPs& panel = *m_panel;
    for (int i = 0; i < 4; ++i) {
        load(panel.XafsFiles.at(i), m_files.ref1);
    }
    for (QLineEdit* cell : std::as_const(panel.EPoints.at(2)->mutEdits)) {
        cell->setText("typed");
    }
    panel.receiveNewRef1("ignored");
    QCOMPARE(mut(panel, 2, 0), "1.5");
    QCOMPARE(mut(panel, 2, 1), "typed");
    panel.receiveNewRef2({});
    panel.receiveNewRef3({});
    panel.receiveNewRef4({});
    for (int i = 1; i < 4; ++i) {
        QCOMPARE(mut(panel, 2, i), "1.5");
    }
}

void tst_FourPsReflexes::receiveNewFileWithoutASenderRecalculates()
{
    FourPs& panel = *m_panel;
    RunCounter counter(panel);
    panel.receiveNewFile("whatever");
    QCOMPARE(counter.runs(), 1);
}

void tst_FourPsReflexes::displayFilesAreListedAndLoaded()
{
    FourPs& panel = *m_panel;
    panel.ui.DispFSelect->newFiles({m_files.ref1, m_files.target});
    QCOMPARE(panel.ui.SelectedFs->count(), 2);
    QCOMPARE(panel.ui.SelectedFs->itemText(0), m_files.ref1);
    QCOMPARE(panel.ui.SelectedFs->itemText(1), m_files.target);
    QCOMPARE(panel.DispMuts.size(), 2);
    QCOMPARE(panel.DispMuts.at(1)->maxMut, 2.5);
}

void tst_FourPsReflexes::unreadableDisplayFilesAreSkipped()
{
    FourPs& panel = *m_panel;
    clearMessages(panel);
    panel.receiveNewDispFiles({m_files.dir.path(), m_files.dir.filePath("missing"), m_files.broken,
                               m_files.ref2, QString()});
    QCOMPARE(panel.ui.SelectedFs->count(), 1);
    QCOMPARE(panel.DispMuts.size(), 1);
    QVERIFY(messages(panel).isEmpty());
}

void tst_FourPsReflexes::newEdgeIsSetInTheDisplayFiles()
{
    FourPs& panel = *m_panel;
    panel.receiveNewDispFiles({m_files.ref1});
    QCOMPARE(panel.DispMuts.at(0)->edgeEnergy, 8350.0);
    enter(panel.ui.EdgeE, "8340");
    QCOMPARE(panel.DispMuts.at(0)->edgeEnergy, 8340.0);
    QCOMPARE(panel.DispMuts.at(0)->postEdgeStart, 8440.0);
}

void tst_FourPsReflexes::removeAFileRemovesTheSelectedFile()
{
    FourPs& panel = *m_panel;
    panel.receiveNewDispFiles({m_files.ref1, m_files.ref2, m_files.target});
    panel.ui.SelectedFs->setCurrentIndex(1);
    panel.ui.RemoveAFile->click();
    QCOMPARE(panel.ui.SelectedFs->count(), 2);
    QCOMPARE(panel.DispMuts.size(), 2);
    QCOMPARE(panel.ui.SelectedFs->itemText(1), m_files.target);
    QCOMPARE(panel.DispMuts.at(1)->fileName, "target.dat");
}

void tst_FourPsReflexes::removeAFileWithoutDisplayFilesKeepsTheList()
{
    FourPs& panel = *m_panel;
    panel.ui.RemoveAFile->click();
    QCOMPARE(panel.ui.SelectedFs->count(), 0);
    panel.ui.SelectedFs->addItem("an item without a spectrum");
    panel.removeAFile();
    QCOMPARE(panel.ui.SelectedFs->count(), 1);
}

void tst_FourPsReflexes::pathsFillTheRowsInOrderAndExtraPathsAreIgnored()
{
    QTemporaryDir dir;
    QStringList paths;
    for (int i = 0; i < 10; ++i) {
        paths.append(writeFile(dir, QStringLiteral("map%1.dat").arg(i),
                               "# X-NUM 1\n# Y-NUM 1\n0 0 " + QByteArray::number(i) + " 1\n"));
    }
    FourPs& panel = *m_panel;
    clearMessages(panel);
    panel.MultiFiles->newFiles(paths);
    for (int i = 0; i < 8; ++i) {
        QCOMPARE(panel.EPoints.at(i)->FileSelect->FileName->text(), paths.at(i));
        QVERIFY(panel.EPoints.at(i)->loaded);
        QCOMPARE(panel.EPoints.at(i)->rows.at(0).intensity, static_cast<double>(i));
    }
    QVERIFY(messages(panel).isEmpty()); // loading maps starts no calculation
}

void tst_FourPsReflexes::dropFromANetworkShareKeepsTheDialogDirectories()
{
    FourPs& panel = *m_panel;
    panel.show();
    const QList<AFileSelect*> rows = panel.findChildren<AFileSelect*>();
    QCOMPARE(rows.size(), 16);
    const QTemporaryDir folder;
    panel.receiveNewDir(folder.path());
    panel.ui.SaveFSelect->dialog->setDirectory(folder.path());
    AFileSelect* open = panel.XafsFiles.at(1);
    QTest::mouseClick(open->SelectB, Qt::LeftButton);

    QMimeData mime;
    mime.setUrls({QUrl(QStringLiteral("file://server/share/x.dat"))});
    AFileSelect* row = panel.XafsFiles.at(0);
    QDragEnterEvent enter(row->rect().center(), Qt::CopyAction, &mime, Qt::LeftButton,
                          Qt::NoModifier);
    QCoreApplication::sendEvent(row, &enter);
    QDropEvent event(row->rect().center(), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(row, &event);
    QCOMPARE(row->fileText(), QStringLiteral("//server/share/x.dat"));
    for (const AFileSelect* each : rows) {
        QCOMPARE(each->dialog->directory().path(), folder.path());
        QVERIFY(each == row || each == panel.ui.SaveFSelect || each->dir == folder.path());
    }
    open->dialog->close();
    panel.hide();
}

void tst_FourPsReflexes::newDirectoryIsSetInAllRowsButTheSaveRow()
{
    FourPs& panel = *m_panel;
    panel.ui.SaveFSelect->dir = "own";
    Q_EMIT panel.EPoints.at(2)->newDir("/elsewhere");
    for (const AEPoint* row : std::as_const(panel.EPoints)) {
        QCOMPARE(row->FileSelect->dir, "/elsewhere");
    }
    for (const AXafsFileSelect* row : std::as_const(panel.XafsFiles)) {
        QCOMPARE(row->dir, "/elsewhere");
    }
    QCOMPARE(panel.ui.DispFSelect->dir, "/elsewhere");
    QCOMPARE(panel.MultiFiles->dir, "/elsewhere");
    QCOMPARE(panel.ui.SaveFSelect->dir, "own");
    Q_EMIT panel.XafsFiles.at(4)->newDir("/target");
    QCOMPARE(panel.EPoints.at(0)->FileSelect->dir, "/target");
}

void tst_FourPsReflexes::listOfEnergiesIsCopiedToTheRowsAsTyped()
{
    FourPs& panel = *m_panel;
    enter(panel.MultiEnergys, "8300.0, 8.35e3,8390 \"8400\"");
    const QStringList expected{"8300.0", "8.35e3", "8390", "8400", "8460"};
    for (int i = 0; i < expected.size(); ++i) {
        QCOMPARE(panel.EPoints.at(i)->Energy->text(), expected.at(i));
    }
}

void tst_FourPsReflexes::listOfEnergiesSkipsInvalidEnergies()
{
    FourPs& panel = *m_panel;
    enter(panel.MultiEnergys, "eV 0 -5 8300 words 8320");
    QCOMPARE(panel.EPoints.at(0)->Energy->text(), "8300");
    QCOMPARE(panel.EPoints.at(1)->Energy->text(), "8320");
    QCOMPARE(panel.EPoints.at(2)->Energy->text(), "8390");
}

void tst_FourPsReflexes::listOfEnergiesDoesNotEmitNewEnergy()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    QSignalSpy spy(panel.EPoints.at(0), &AEPoint::newEnergy);
    enter(panel.MultiEnergys, "8390");
    QCOMPARE(spy.count(), 0);
    QCOMPARE(mut(panel, 0, 0), "0"); // still the value at 8313 eV
}

void tst_FourPsReflexes::valenceRangeIncludesTheUsedReferences()
{
    FourPs& panel = *m_panel;
    panel.Refs.RefRows.at(0)->Valence->setText("2.5");
    panel.Refs.RefRows.at(1)->Valence->setText("words");
    double lo = 0, hi = 0, span = 0;
    panel.ValenceRange(lo, hi, span);
    QCOMPARE(lo, 0.0);
    QCOMPARE(hi, 2.5);
    QCOMPARE(span, 2.5);
}

void tst_FourPsReflexes::histogramRangeIsSetOnlyIfAutoIsChecked()
{
    FourPs& panel = *m_panel;
    panel.ui.HgAAuto->setChecked(false);
    panel.ui.HgAFrom->setText("mine");
    panel.ui.HgTFrom->setText("mine");
    panel.SetHistogramRanges();
    QCOMPARE(panel.ui.HgAFrom->text(), "mine");
    QCOMPARE(panel.ui.HgTFrom->text(), "-0.5");
    QCOMPARE(panel.ui.HgTTo->cursorPosition(), 0);
}

void tst_FourPsReflexes::energyInAMapFileUpdatesTheRow()
{
    FourPs& panel = *m_panel;
    load(panel.XafsFiles.at(0), m_files.ref1);
    QTemporaryDir dir;
    const QString path =
        writeFile(dir, "map.dat", "# X-NUM 1\n# Y-NUM 1\n# ENERGY : 8390\n0 0 1 1\n");
    panel.EPoints.at(0)->FileSelect->newFile(path);
    QCOMPARE(panel.EPoints.at(0)->Energy->text(), "8390");
    QCOMPARE(mut(panel, 0, 0), "1.5");
}

void tst_FourPsReflexes::recalculationSetsTheHistogramLimitsBeforeCounting()
{
    // The panel sets the histogram limits from the current valences 2 and 5 before it counts the
    // pixels: 2 - 0.5 = 1.5 and 5 + 0.5 = 5.5.
    FourPs& panel = *m_panel;
    prepareThreePointMaps(panel);
    panel.ui.HgABoxes->setText("2");
    panel.Refs.RefRows.at(1)->Valence->setText("5");
    panel.calcBoth();
    // With two bins, the bin width is (5.5 - 1.5) / (2 - 1) = 4. The first bin begins half a
    // width below its centre 1.5: 1.5 - 2 = -0.5.
    QCOMPARE(panel.ui.HgATo->text(), "5.5");
    QCOMPARE(panel.HistV->step, 4.0);
    QCOMPARE(panel.HistV->minV, -0.5);
}

QTEST_MAIN(tst_FourPsReflexes)
#include "tst_FourPsReflexes.moc"
