// Tests of ARefFile, one row of the reference table: its form, its "Use" button and
// the signals that it forwards.

#include "rows/ARefFile.h"
#include "rows/DialogSettings.h"
#include "rows/FormChecks.h"
#include "support/TestFiles.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <QtTest>

namespace
{

// Clicks on the indicator. If the layout makes the button wider than its indicator and its
// text, a click at its center can have no effect.
void click(QAbstractButton* button)
{
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
}

} // namespace

class tst_ARefFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:

    void formContainsTheExpectedWidgets();
    void formHasTheExpectedWidthsAndStyles();
    void rowIsInitiallySwitchedOff();

    void clickTogglesTheRowAndEmitsChangedUseOnce();
    void setUseEmitsChangedUseTwiceButOnlyOnChange();
    void rowsAreNotMutuallyExclusive();

    void signalsOfTheSpectrumRowAreForwarded();
    void unparsableValenceIsKeptAsTyped();

private:
    const tests::DialogSettings m_settings;
};

void tst_ARefFile::formContainsTheExpectedWidgets()
{
    const ARefFile row;
    const QList<tests::FormWidget> expectedForm{
        {"RefName", 0, "QLabel", "Ref 1"}, {"UseCB", 1, "QRadioButton", "Use"},
        {"XafsFS", 2, "AXafsFileSelect"},  {"label_20", 3, "QLabel", "Valence"},
        {"Valence", 4, "QLineEdit", "1"},  {"label", 5, "QLabel", "Ratio"},
        {"RatioDisp", 6, "QLineEdit"},     {"label_2", 7, "QLabel", "dMut"},
        {"AmountDisp", 8, "QLineEdit"},
    };
    QCOMPARE(tests::formDifferences(&row, expectedForm), QStringList());
}

void tst_ARefFile::formHasTheExpectedWidthsAndStyles()
{
    const ARefFile row;
    QCOMPARE(row.objectName(), QStringLiteral("ARefFile"));
    QCOMPARE(row.frameShape(), QFrame::NoFrame);
    const auto* grid = qobject_cast<QGridLayout*>(row.layout());
    QVERIFY(grid != nullptr);
    QCOMPARE(grid->horizontalSpacing(), 3);
    QCOMPARE(grid->verticalSpacing(), 3);
    QCOMPARE(grid->contentsMargins(), QMargins(0, 0, 0, 0));
    QCOMPARE(row.RefName->minimumWidth(), 50);
    QCOMPARE(row.Valence->maximumWidth(), 40);
    QVERIFY(tests::isRightAligned(row.Valence));
    for (const QLineEdit* result : {row.RatioDisp, row.AmountDisp}) {
        QCOMPARE(result->maximumWidth(), 40);
        QCOMPARE(result->styleSheet(), QString(tests::resultStyle));
    }
}

void tst_ARefFile::rowIsInitiallySwitchedOff()
{
    const ARefFile row;
    QVERIFY(!row.UseCB->isChecked());
    QVERIFY(!row.XafsFS->valid);
}

void tst_ARefFile::clickTogglesTheRowAndEmitsChangedUseOnce()
{
    ARefFile row;
    row.show();
    const QSignalSpy uses(&row, &ARefFile::changedUse);
    click(row.UseCB);
    QVERIFY(row.UseCB->isChecked());
    QCOMPARE(uses.size(), 1);
    QCOMPARE(uses.at(0).at(0).toBool(), true);
    click(row.UseCB);
    QVERIFY(!row.UseCB->isChecked());
    QCOMPARE(uses.size(), 2);
    QCOMPARE(uses.at(1).at(0).toBool(), false);
}

void tst_ARefFile::setUseEmitsChangedUseTwiceButOnlyOnChange()
{
    ARefFile row;
    for (const bool on : {true, false, true}) {
        const QSignalSpy uses(&row, &ARefFile::changedUse);
        row.setUse(on);
        QCOMPARE(row.UseCB->isChecked(), on);
        QCOMPARE(uses.size(), 2);
        QCOMPARE(uses.at(0).at(0).toBool(), on);
        QCOMPARE(uses.at(1).at(0).toBool(), on);
        row.setUse(on); // setting the same state emits nothing
        QCOMPARE(row.UseCB->isChecked(), on);
        QCOMPARE(uses.size(), 2);
    }
}

void tst_ARefFile::rowsAreNotMutuallyExclusive()
{
    QWidget table;
    auto* layout = new QVBoxLayout(&table);
    QList<ARefFile*> rows;
    for (int i = 0; i < 4; ++i) {
        rows << new ARefFile(&table);
        layout->addWidget(rows.last());
    }
    table.show();
    for (int i = 0; i < 4; ++i) {
        click(rows.at(i)->UseCB);
        for (int j = 0; j < 4; ++j) {
            QCOMPARE(rows.at(j)->UseCB->isChecked(), j <= i);
        }
    }
    for (ARefFile* row : std::as_const(rows)) {
        click(row->UseCB);
        QVERIFY(!row->UseCB->isChecked());
    }
}

void tst_ARefFile::signalsOfTheSpectrumRowAreForwarded()
{
    const QTemporaryDir folder;
    const QString path = tests::writeFile(folder, QStringLiteral("ni.dat"), "8000 0\n8010 1\n");
    ARefFile row;
    QStringList received;
    connect(&row, &ARefFile::foundNewEdge, this,
            [&](double e) { received << QStringLiteral("edge %1").arg(e); });
    connect(&row, &ARefFile::selectedFile, this, [&] { received << QStringLiteral("selected"); });
    row.XafsFS->AFileSelect::newFile(path);
    // The proposed edge energy is midway between the two points of the spectrum.
    const QStringList expected{QStringLiteral("edge 8005"), QStringLiteral("selected")};
    QCOMPARE(received, expected);
}

void tst_ARefFile::unparsableValenceIsKeptAsTyped()
{
    ARefFile row;
    row.Valence->setText(QStringLiteral("two"));
    QTest::keyClick(row.Valence, Qt::Key_Return);
    QCOMPARE(row.Valence->text(), QStringLiteral("two"));
}

QTEST_MAIN(tst_ARefFile)
#include "tst_ARefFile.moc"
