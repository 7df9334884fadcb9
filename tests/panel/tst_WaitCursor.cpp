// Tests of the wait cursor: it is shown while files are read or written and during long
// calculations, but not during short ones.

#include "display/WaitCursor.h"

#include "display/MarkLines.h"
#include "support/DropInput.h"
#include "support/SharedPanel.h"
#include "support/SpectrumText.h"
#include "support/TestFiles.h"

#include <QComboBox>
#include <QGuiApplication>
#include <QTest>

#include <functional>

using display::WaitCursor;

using namespace tests;

namespace
{

bool isWaiting()
{
    const QCursor* cursor = QGuiApplication::overrideCursor();
    return cursor && cursor->shape() == Qt::WaitCursor;
}

/// Records, for each emission of a signal, whether the wait cursor is shown.
class CursorSpy : public QObject
{
public:
    template <class Sender, class Signal>
    CursorSpy(const Sender* sender, Signal signal)
    {
        connect(sender, signal, this, [this] { waiting.append(isWaiting()); });
    }

    QList<bool> waiting;
};

const QByteArray mapText = "# map\n# ENERGY : 8381\n# X-NUM 2\n# Y-NUM 1\n0 0 1 2\n0 0 1 3\n";

} // namespace

class tst_WaitCursor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void guardShowsTheWaitCursorDuringItsLifetime();
    void nestedGuardsSetTheWaitCursorOnce();
    void guardConstructedWithFalseKeepsTheCursor();
    void guardRestoresAnEarlierOverrideCursor();

    void readingAMapShowsTheWaitCursor();
    void readingSeveralMapsShowsTheWaitCursorThroughout();
    void readingADroppedMapShowsTheWaitCursor();
    void failedReadsRestoreTheCursor_data();
    void failedReadsRestoreTheCursor();
    void readingASpectrumShowsTheWaitCursor_data();
    void readingASpectrumShowsTheWaitCursor();
    void readingDisplayFilesShowsTheWaitCursor();
    void writingAResultShowsTheWaitCursor();

    void longCalculationShowsTheWaitCursor_data();
    void longCalculationShowsTheWaitCursor();
    void fitAndTargetOfLongSpectraShowTheWaitCursor();
    void shortCalculationShowsNoWaitCursor();
    void draggingTheEdgeWithSmallMapsShowsNoWaitCursor();
    void refusedCalculationRestoresTheCursor();

private:
    void prepareLargeMaps();
    AEPoint* row(int index) const { return m_panel->EPoints.at(index); }

    const SharedPanel m_panel;
    QTemporaryDir m_dir;
};

void tst_WaitCursor::init()
{
    resetPanel(*m_panel);
    m_panel->ui.SelectedFs->clear();
}

void tst_WaitCursor::cleanup()
{
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_WaitCursor::guardShowsTheWaitCursorDuringItsLifetime()
{
    QVERIFY(!isWaiting());
    {
        const WaitCursor cursor;
        QVERIFY(isWaiting());
    }
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_WaitCursor::nestedGuardsSetTheWaitCursorOnce()
{
    const auto nested = [] {
        const WaitCursor inner;
        QVERIFY(isWaiting());
    };
    {
        const WaitCursor outer;
        nested();
        QVERIFY(isWaiting());
        QGuiApplication::restoreOverrideCursor();
        QVERIFY(!QGuiApplication::overrideCursor()); // only one override cursor was set
    }
    QVERIFY(!QGuiApplication::overrideCursor());
}

void tst_WaitCursor::guardConstructedWithFalseKeepsTheCursor()
{
    const WaitCursor unwanted(false);
    QVERIFY(!isWaiting());
    {
        const WaitCursor cursor;
        const WaitCursor inner(false);
        QVERIFY(isWaiting());
    }
    QVERIFY(!isWaiting());
}

void tst_WaitCursor::guardRestoresAnEarlierOverrideCursor()
{
    QGuiApplication::setOverrideCursor(Qt::CrossCursor);
    {
        const WaitCursor cursor;
        QVERIFY(isWaiting());
    }
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::CrossCursor);
    QGuiApplication::restoreOverrideCursor();
}

void tst_WaitCursor::readingAMapShowsTheWaitCursor()
{
    const CursorSpy inside(row(0), &AEPoint::newEnergy);
    const CursorSpy after(row(0), &AEPoint::newData);
    row(0)->FileSelect->newFile(writeFile(m_dir, "map.dat", mapText));
    QCOMPARE(inside.waiting, QList<bool>{true});
    QCOMPARE(after.waiting, QList<bool>{true});
}

void tst_WaitCursor::readingSeveralMapsShowsTheWaitCursorThroughout()
{
    const QString path = writeFile(m_dir, "map.dat", mapText);
    const CursorSpy first(row(0)->FileSelect, &AFileSelect::newDir);
    const CursorSpy last(row(1)->FileSelect, &AFileSelect::selectedFile);
    m_panel->MultiFiles->newFiles({path, path});
    QCOMPARE(first.waiting, QList<bool>{true});
    QCOMPARE(last.waiting, QList<bool>{true});
}

void tst_WaitCursor::readingADroppedMapShowsTheWaitCursor()
{
    const CursorSpy inside(row(0), &AEPoint::newEnergy);
    dropFile(row(0)->FileSelect, writeFile(m_dir, "map.dat", mapText));
    QCOMPARE(inside.waiting, QList<bool>{true});
}

void tst_WaitCursor::failedReadsRestoreTheCursor_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing file") << m_dir.filePath("missing.dat");
    QTest::newRow("empty file") << writeFile(m_dir, "empty.dat", {});
    QTest::newRow("folder") << m_dir.path();
    QTest::newRow("no name") << QString();
    QTest::newRow("truncated binary map") << writeFile(m_dir, "short.2dp", "2dData");
}

void tst_WaitCursor::failedReadsRestoreTheCursor()
{
    QFETCH(QString, path);
    row(0)->FileSelect->newFile(path);
    QVERIFY(!isWaiting());
    m_panel->XafsFiles.at(0)->AFileSelect::newFile(path);
    QVERIFY(!isWaiting());
    m_panel->ui.DispFSelect->newFiles({path});
    QVERIFY(!isWaiting());
    m_panel->MultiFiles->newFiles({path});
    QVERIFY(!isWaiting());
}

void tst_WaitCursor::readingASpectrumShowsTheWaitCursor_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("reference") << 0;
    QTest::newRow("target") << 4;
}

void tst_WaitCursor::readingASpectrumShowsTheWaitCursor()
{
    QFETCH(int, index);
    const CursorSpy read(m_panel->XafsFiles.at(index), &AXafsFileSelect::foundNewEdge);
    const CursorSpy used(m_panel->ui.Message, &QTextEdit::textChanged);
    m_panel->XafsFiles.at(index)->AFileSelect::newFile(
        writeFile(m_dir, "a.dat", spectrumText("0.5", "2", "1.5", "1")));
    QCOMPARE(read.waiting, QList<bool>{true});
    QVERIFY(!used.waiting.isEmpty());
    QVERIFY(!used.waiting.contains(false));
}

void tst_WaitCursor::readingDisplayFilesShowsTheWaitCursor()
{
    const QString path = writeFile(m_dir, "a.dat", spectrumText("0.5", "2", "1.5", "1"));
    const CursorSpy inside(m_panel->ui.SelectedFs, &QComboBox::currentIndexChanged);
    m_panel->ui.DispFSelect->newFiles({path, path});
    QCOMPARE(inside.waiting, QList<bool>{true}); // the first file is selected during the read
}

// An empty path cannot be written. The error message appears during the write, so the test
// can check the cursor at that moment.
void tst_WaitCursor::writingAResultShowsTheWaitCursor()
{
    m_panel->ui.SaveFSelect->FileName->clear();
    const CursorSpy inside(m_panel->ui.Message, &QTextEdit::textChanged);
    m_panel->write();
    QCOMPARE(inside.waiting, QList<bool>{true});
    m_panel->ui.WriteB->click();
    QVERIFY(!inside.waiting.contains(false));
    m_panel->ui.SaveFSelect->FileName->setText(m_dir.filePath("result.dat"));
    m_panel->ui.WriteB->click();
    QVERIFY(!isWaiting());
}

// Prepares three maps of 400 by 400 pixels, which make a calculation long.
void tst_WaitCursor::prepareLargeMaps()
{
    prepareThreePointMaps(*m_panel);
    for (int i = 0; i < 3; ++i) {
        A2DRow pixel = row(i)->rows.at(0);
        row(i)->rows.fill(pixel, 400 * 400);
        row(i)->xNum = 400;
        row(i)->yNum = 400;
    }
    row(0)->LCFCB->setChecked(true);
    row(2)->LCFCB->setChecked(true);
    for (QLineEdit* shown :
         QList<QLineEdit*>{m_panel->ui.CalcRes, m_panel->ui.LCFRes, m_panel->ui.HgAFrom}) {
        shown->clear();
    }
    m_panel->ui.HgAAuto->setChecked(true);
}

void tst_WaitCursor::longCalculationShowsTheWaitCursor_data()
{
    using Run = std::function<void(FourPs*)>;
    QTest::addColumn<Run>("run");
    QTest::newRow("all calculations") << Run(&FourPs::calcBoth);
    QTest::newRow("edge is set") << Run(&FourPs::setEdge);
    QTest::newRow("click on the check box of a row") << Run([](FourPs* panel) {
        panel->EPoints.at(7)->UseCB->click();
        panel->EPoints.at(7)->UseCB->click();
    });
    QTest::newRow("background of references") << Run([](FourPs* panel) {
        panel->changedSubBGTypeForRef(panel->ui.SubPostEforRef->isChecked());
    });
    QTest::newRow("background of the target") << Run([](FourPs* panel) {
        panel->changedSubBGTypeForTarget(panel->ui.SubPostEforTarget->isChecked());
    });
}

void tst_WaitCursor::longCalculationShowsTheWaitCursor()
{
    QFETCH(std::function<void(FourPs*)>, run);
    prepareLargeMaps();
    CursorSpy limits(m_panel->ui.HgAFrom, &QLineEdit::textChanged);
    CursorSpy target(m_panel->ui.CalcRes, &QLineEdit::textChanged);
    CursorSpy fit(m_panel->ui.LCFRes, &QLineEdit::textChanged);
    run(m_panel.get());
    for (const CursorSpy* spy : {&limits, &target, &fit}) {
        QVERIFY(!spy->waiting.isEmpty());
        QVERIFY(!spy->waiting.contains(false));
    }
    QVERIFY(!isWaiting());
}

void tst_WaitCursor::fitAndTargetOfLongSpectraShowTheWaitCursor()
{
    prepareThreePoints(*m_panel);
    row(0)->LCFCB->setChecked(true);
    row(2)->LCFCB->setChecked(true);
    QList<MutPoint>& points = m_panel->ui.TargetFile->points;
    points.fill({10.0, 9000.0, 1.0}, 100'000);
    m_panel->ui.LCFRes->clear();
    m_panel->ui.CalcRes->clear();
    const CursorSpy fit(m_panel->ui.LCFRes, &QLineEdit::textChanged);
    const CursorSpy target(m_panel->ui.CalcRes, &QLineEdit::textChanged);
    m_panel->ui.LCFB->click();
    m_panel->ui.CalcTargetB->click();
    QCOMPARE(fit.waiting, QList<bool>{true});
    QCOMPARE(target.waiting, QList<bool>{true});
}

void tst_WaitCursor::shortCalculationShowsNoWaitCursor()
{
    prepareThreePointMaps(*m_panel);
    row(0)->LCFCB->setChecked(true);
    row(2)->LCFCB->setChecked(true);
    m_panel->ui.CalcRes->clear();
    m_panel->ui.LCFRes->clear();
    const CursorSpy target(m_panel->ui.CalcRes, &QLineEdit::textChanged);
    const CursorSpy fit(m_panel->ui.LCFRes, &QLineEdit::textChanged);
    m_panel->calcBoth();
    QCOMPARE(target.waiting, QList<bool>{false});
    QCOMPARE(fit.waiting, QList<bool>{false});
}

void tst_WaitCursor::draggingTheEdgeWithSmallMapsShowsNoWaitCursor()
{
    prepareThreePointMaps(*m_panel);
    const CursorSpy messages(m_panel->ui.Message, &QTextEdit::textChanged);
    const MarkLines* lines = m_panel->Disps->frame(Displays::DMuts)->DispA->markLines;
    Q_EMIT const_cast<MarkLines*>(lines)->moving();
    Q_EMIT const_cast<MarkLines*>(lines)->newPos();
    QVERIFY(!messages.waiting.isEmpty());
    QVERIFY(!messages.waiting.contains(true));
}

void tst_WaitCursor::refusedCalculationRestoresTheCursor()
{
    prepareLargeMaps();
    row(2)->VPointCB->setChecked(false);
    const CursorSpy refusal(m_panel->ui.Message, &QTextEdit::textChanged);
    m_panel->ui.CalcMapB->click();
    QCOMPARE(refusal.waiting, QList<bool>{true});
    QVERIFY(!isWaiting());
    m_panel->calcBoth();
    QVERIFY(!isWaiting());
}

QTEST_MAIN(tst_WaitCursor)
#include "tst_WaitCursor.moc"
