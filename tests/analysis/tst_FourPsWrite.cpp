// Result output by the panel: the files it writes, their content, and the messages. See also
// tst_ResultText (text of a result), tst_ResultFile (write errors) and tst_Histgram (histogram
// files).
#include "support/CalculationPanel.h"
#include "support/Mixes.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

using namespace tests;

namespace
{

const QString cannotOpen = QStringLiteral("Can't open the file [%1]");

PanelInputs threePointMaps()
{
    return threePointInputs().addMaps(3);
}

PanelInputs mixedMaps(const QList<mixes::Mix>& pixels)
{
    PanelInputs inputs = mixes::mixedInputs(mixes::quarter);
    mixes::setPixels(inputs, pixels);
    return inputs;
}

} // namespace

class tst_FourPsWrite : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void writeButtonCalculatesTheMapAndWritesTheResult();
    void writeButtonWritesTheCheckedExtendedColumns();
    void valenceIsCalculatedWhenWriting();
    void refusedRunWritesTheEarlierResult();
    void selectedFileWithAnotherSuffixGetsTheDatSuffix();
    void existingFileIsOverwrittenWithoutAMessage();
    void fileThatCannotBeWrittenIsReported_data();
    void fileThatCannotBeWrittenIsReported();
    void histogramLinkToAFullDeviceIsReportedByItsTargetPath();
    void histogramsAreWrittenIfTheResultCannotBeWritten();
    void saveCreatesNoHistogramFile();
    void saveUpdatesExistingHistogramFiles();

private:
    // Sets the text of the save field to the path of @p name in m_dir. Returns the path.
    QString saveTo(const QString& name) const;

    SharedPanel m_shared;
    FourPs& panel = *m_shared;
    std::unique_ptr<QTemporaryDir> m_dir;
};

void tst_FourPsWrite::init()
{
    resetPanel(*m_shared);
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

QString tst_FourPsWrite::saveTo(const QString& name) const
{
    const QString path = m_dir->filePath(name);
    panel.ui.SaveFSelect->FileName->setText(path);
    return path;
}

void tst_FourPsWrite::writeButtonCalculatesTheMapAndWritesTheResult()
{
    PanelInputs inputs = threePointMaps();
    inputs.maps[2].headerLines = {"# sample  A", "#\ttab"};
    enterInputs(panel, inputs);
    const QString path = saveTo("result.dat");
    QTest::mouseClick(panel.ui.WriteB, Qt::LeftButton);
    QVERIFY(messages(panel).isEmpty());
    // The columns are x 0, y 0.5, a 0.5, valence 2.5 and thickness 1. Each number is
    // right-aligned to 10 characters after one blank; before a there are four blanks.
    QCOMPARE(readFile(path), "# qelk result map V1.0\n"
                             "# sample  A\n"
                             "#\ttab\n"
                             "\n"
                             "          0        0.5           0.5        2.5          1\n"
                             "\n");
}

void tst_FourPsWrite::writeButtonWritesTheCheckedExtendedColumns()
{
    // C1 is 0.5 / hc for the first pixel and -1 / hc for the second. 1 / hc is 8.06554e-05
    // with hc = 12398.4 eV angstrom.
    PanelInputs inputs = mixedMaps({mixes::quarter, mixes::negative});
    inputs.maps[0].headerLines = {"# sample  A"};
    enterInputs(panel, inputs);
    for (QCheckBox* box :
         {panel.ui.RecRatio1, panel.ui.RecRatio2, panel.ui.RecRatio3, panel.ui.RecDMut1,
          panel.ui.RecDMut2, panel.ui.RecDMut4, panel.ui.RecMut0, panel.ui.RecC1, panel.ui.RecC2}) {
        box->setChecked(true);
    }
    const QString path = saveTo("result.dat");
    const QString valence = writeFile(*m_dir, "result_HGAlpha.dat", "old");
    const QString total = writeFile(*m_dir, "result_HGThick.dat", "old");
    QTest::mouseClick(panel.ui.WriteB, Qt::LeftButton);
    QVERIFY(messages(panel).isEmpty());
    const auto line = [](const QStringList& numbers) {
        QByteArray text;
        for (const QString& number : numbers) {
            text += ' ' + number.rightJustified(10).toUtf8();
        }
        return text + '\n';
    };
    QCOMPARE(readFile(path),
             "# qelk result map V1.0\n"
             "# sample  A\n"
             "\n"
             "# y x alpha1 alpha2 alpha3 dMut1 dMut2 dMut4 Mut0 C1 C2 Valence Total-dMut\n" +
                 line({"0", "0.5", "0.25", "0.75", "0", "1", "3", "0", "1.25", "4.03277e-05", "0",
                       "4.25", "4"}) +
                 line({"1", "0.5", "-0.2", "1.2", "0", "-1", "6", "0", "-2", "-8.06554e-05", "0",
                       "5.6", "5"}) +
                 "\n");
    QCOMPARE(readFile(valence), panel.HistV->fileText());
    QCOMPARE(readFile(total), panel.HistT->fileText());
}

void tst_FourPsWrite::valenceIsCalculatedWhenWriting()
{
    enterInputs(panel, threePointMaps());
    panel.calcMap();
    panel.Refs.RefRows.at(1)->Valence->setText("4"); // after the calculation
    const QString path = saveTo("result.dat");
    panel.write();
    QVERIFY(readFile(path).contains("  0.5          3          1\n"));
    panel.XafsFiles.at(1)->valid = false;
    panel.write(); // with fewer than two valid references the valence is 0
    QVERIFY(readFile(path).contains("  0.5          0          1\n"));
}

void tst_FourPsWrite::refusedRunWritesTheEarlierResult()
{
    PanelInputs inputs = threePointMaps();
    enterInputs(panel, inputs);
    panel.calcMap();
    inputs.markVRows({});
    enterInputs(panel, inputs);
    const QString path = saveTo("result.dat");
    panel.calcAndWrite();
    QCOMPARE(messages(panel), QStringList{"V Point is not selected"});
    QVERIFY(readFile(path).contains("  0.5        2.5          1\n"));
}

void tst_FourPsWrite::selectedFileWithAnotherSuffixGetsTheDatSuffix()
{
    panel.ui.SaveFSelect->newFile(m_dir->filePath("map.txt"));
    panel.write();
    QVERIFY(QFileInfo::exists(m_dir->filePath("map.txt.dat")));
}

void tst_FourPsWrite::existingFileIsOverwrittenWithoutAMessage()
{
    const QString path = writeFile(*m_dir, "no suffix", QByteArray(100000, 'x'));
    saveTo("no suffix"); // a path in the field is used without adding a suffix
    panel.write();
    QCOMPARE(readFile(path), "# qelk result map V1.0\n\n");
    QVERIFY(messages(panel).isEmpty());
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_FourPsWrite::fileThatCannotBeWrittenIsReported_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing folder") << "/missing folder/result.dat";
    QTest::newRow("no name") << "";
    if (QFileInfo::exists("/dev/full")) {
        QTest::newRow("full disk") << "/dev/full";
    }
}

void tst_FourPsWrite::fileThatCannotBeWrittenIsReported()
{
    QFETCH(QString, path);
    panel.ui.SaveFSelect->FileName->setText(path);
    panel.write();
    QCOMPARE(messages(panel), QStringList{cannotOpen.arg(path)});
}

void tst_FourPsWrite::histogramLinkToAFullDeviceIsReportedByItsTargetPath()
{
    if (!QFileInfo::exists("/dev/full")) {
        QSKIP("needs /dev/full, the device that is always full");
    }
    enterInputs(panel, threePointMaps());
    const QString path = saveTo("map.dat");
    QVERIFY(QFile::link("/dev/full", m_dir->filePath("map_HGThick.dat")));
    panel.calcAndWrite();
    QCOMPARE(messages(panel), QStringList{cannotOpen.arg("/dev/full")});
    QVERIFY(readFile(path).startsWith("# qelk result map V1.0\n"));
    QVERIFY(!QFileInfo::exists(m_dir->filePath("map_HGAlpha.dat")));
}

void tst_FourPsWrite::histogramsAreWrittenIfTheResultCannotBeWritten()
{
    // The result cannot be written, because a folder has its name. The histogram file already
    // exists.
    QVERIFY(QDir(m_dir->path()).mkdir("result.dat"));
    const QString path = saveTo("result.dat");
    const QString histogram = writeFile(*m_dir, "result_HGAlpha.dat", "old");
    enterInputs(panel, threePointMaps());
    panel.ui.HgABoxes->setText("1");
    panel.calcMap();
    panel.write();
    QCOMPARE(messages(panel), QStringList{cannotOpen.arg(path)});
    QCOMPARE(readFile(histogram).count('\n'), 3); // values below, one bin, values above
}

void tst_FourPsWrite::saveCreatesNoHistogramFile()
{
    enterInputs(panel, threePointMaps());
    saveTo("a.b.dat");
    panel.calcAndWrite();
    QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList{"a.b.dat"});
}

void tst_FourPsWrite::saveUpdatesExistingHistogramFiles()
{
    enterInputs(panel, threePointMaps());
    panel.ui.HgAFrom->setText("2");
    panel.ui.HgATo->setText("3");
    panel.ui.HgABoxes->setText("3");
    panel.ui.HgTFrom->setText("3");
    panel.ui.HgTTo->setText("4");
    panel.ui.HgTBoxes->setText("2");
    const QString alpha = writeFile(*m_dir, "a.b_HGAlpha.dat", "old");
    const QString thick = writeFile(*m_dir, "a.b_HGThick.dat", "old");
    saveTo("a.b.dat");
    panel.calcAndWrite();
    // The valence 2.5 is in the middle bin of three. The thickness 1 is below the two bins of
    // its histogram, so the first line of the file counts it.
    QCOMPARE(readFile(alpha), "1.25 1.5 1.75  0\n"
                              "1.75 2 2.25  0\n"
                              "2.25 2.5 2.75  1\n"
                              "2.75 3 3.25  0\n"
                              "3.25 3.5 3.75  0\n");
    QCOMPARE(readFile(thick), "1.5 2 2.5  1\n"
                              "2.5 3 3.5  0\n"
                              "3.5 4 4.5  0\n"
                              "4.5 5 5.5  0\n");
}

QTEST_MAIN(tst_FourPsWrite)
#include "tst_FourPsWrite.moc"
