// Tests of AXafsFileSelect, the spectrum row: reading the named file, the proposed edge
// energy, the energy shift, and mut minus a background line.

#include "rows/AXafsFileSelect.h"
#include "rows/DialogSettings.h"
#include "support/DebugLog.h"
#include "support/SameDouble.h"
#include "support/TestFiles.h"
#include "support/Unprivileged.h"

#include <QFileDialog>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace
{

// The slope is steepest between 8100 and 8110 eV, so the proposed edge is at 8105 eV.
const QByteArray goodSpectrum = "8000 0.0\n8100 0.1\n8110 1.1\n8200 1.2\n";

// A spectrum that is easy to interpolate by hand: mut is 0.1 at 8000 eV, 1.1 at 8010 eV
// and 1.3 at 8020 eV. The background lines are constant.
void setSpectrum(AMutE& spectrum)
{
    spectrum.points = {{0.0, 8000.0, 0.1}, {0.0, 8010.0, 1.1}, {0.0, 8020.0, 1.3}};
    spectrum.preLine = {0.25, 0.0, 0.0};
    spectrum.postLine = {1.5, 0.0, 0.0};
    spectrum.valid = true;
}

AMutE& spectrumOf(AXafsFileSelect& row)
{
    return row;
}

} // namespace

class tst_AXafsFileSelect : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void rowStartsWithoutFrameSpectrumOrShiftField();
    void slotsAreCallableByName();

    void newFileIsReadAndProposesItsEdge();
    void edgeIsProposedBeforeThePathIsSignalled();
    void fileSelectedInTheDialogIsRead();
    void secondFileProposesItsEdge();
    void failedReadProposesNoEdge_data();
    void failedReadProposesNoEdge();
    void unreadableFileProposesNoEdge();
    void missingFileKeepsTheSpectrumAndProposesNoEdge_data();
    void missingFileKeepsTheSpectrumAndProposesNoEdge();
    void fileWithoutPointsInvalidatesTheSpectrum();
    void newFileSlotReadsTheSpectrumButKeepsTheNameField();

    void shiftFieldHasNoEffectBeforeAttach();
    void attachingWithoutAFrameStillConnectsTheShiftField();
    void attachingTwiceConnectsTheShiftFieldOnce();

    void shiftOfValidSpectrumIsStoredAndSignalled();
    void shiftWithoutSpectrumIsStoredWithoutSignal();
    void unparsableShiftIsReadAsZero();
    void shiftDoesNotRefitTheBackgroundLines();
    void shiftIsKeptForANewFile();

    void mutIsInterpolatedAndThePreEdgeLineIsSubtracted_data();
    void mutIsInterpolatedAndThePreEdgeLineIsSubtracted();
    void subPostFlagSubtractsThePostEdgeLine();
    void mutAtFailsAboveTheSpectrumAndKeepsTheOutput();
    void mutAtFailsForAnEmptySpectrum();
    void mutAtUsesTheShiftedEnergies();
    void mutAtInterpolatesFromOriginToFirstPointOfDescendingScan();

private:
    const tests::DialogSettings m_settings;
    std::unique_ptr<QTemporaryDir> folder;
};

void tst_AXafsFileSelect::init()
{
    folder = std::make_unique<QTemporaryDir>();
    QVERIFY(folder->isValid());
}

void tst_AXafsFileSelect::rowStartsWithoutFrameSpectrumOrShiftField()
{
    const AXafsFileSelect row;
    QVERIFY(row.frame == nullptr);
    QCOMPARE(row.subPost, false);
    QCOMPARE(row.valid, false);
    QVERIFY(row.dEBase->isHidden());
}

void tst_AXafsFileSelect::slotsAreCallableByName()
{
    AXafsFileSelect row;
    const QString path = tests::writeFile(*folder, QStringLiteral("ni.dat"), goodSpectrum);
    QVERIFY(QMetaObject::invokeMethod(&row, "newFile", Q_ARG(QString, path)));
    QVERIFY(row.valid);
    row.Ui_AFileSelect::dE->setText(QStringLiteral("2"));
    QVERIFY(QMetaObject::invokeMethod(&row, "setNewDE"));
    QCOMPARE(spectrumOf(row).dE, 2.0);
}

void tst_AXafsFileSelect::newFileIsReadAndProposesItsEdge()
{
    AXafsFileSelect row;
    const QSignalSpy edges(&row, &AXafsFileSelect::foundNewEdge);
    const QString path = tests::writeFile(*folder, QStringLiteral("ni.dat"), goodSpectrum);
    row.AFileSelect::newFile(path);
    QVERIFY(row.valid);
    QCOMPARE(row.points.size(), 4);
    QCOMPARE(row.fileText(), path);
    QCOMPARE(edges.size(), 1);
    QCOMPARE(edges.at(0).at(0).toDouble(), 8105.0);
}

void tst_AXafsFileSelect::edgeIsProposedBeforeThePathIsSignalled()
{
    AXafsFileSelect row;
    QStringList received;
    // The panel connects its slot to newFilePath after the row has connected its own
    // slot. So the spectrum is already read when the panel's slot is called.
    connect(&row, &AXafsFileSelect::foundNewEdge, this,
            [&] { received << QStringLiteral("edge"); });
    connect(&row, &AFileSelect::newFilePath, this, [&] {
        received << (row.valid ? QStringLiteral("path, read") : QStringLiteral("path, not read"));
    });
    connect(&row, &AFileSelect::selectedFile, this,
            [&] { received << QStringLiteral("selected"); });
    row.AFileSelect::newFile(tests::writeFile(*folder, QStringLiteral("ni.dat"), goodSpectrum));
    const QStringList expected{QStringLiteral("edge"), QStringLiteral("path, read"),
                               QStringLiteral("selected")};
    QCOMPARE(received, expected);
}

void tst_AXafsFileSelect::fileSelectedInTheDialogIsRead()
{
    AXafsFileSelect row;
    const QString path = tests::writeFile(*folder, QStringLiteral("ni.dat"), goodSpectrum);
    const QSignalSpy edges(&row, &AXafsFileSelect::foundNewEdge);
    Q_EMIT row.dialog->fileSelected(path);
    QCOMPARE(edges.size(), 1);
    QCOMPARE(row.fileText(), path);
    QCOMPARE(row.AFileSelect::fileName, QStringLiteral("ni.dat"));
    QCOMPARE(row.AMutE::fileName, QStringLiteral("ni.dat"));
}

void tst_AXafsFileSelect::secondFileProposesItsEdge()
{
    AXafsFileSelect row;
    const QSignalSpy edges(&row, &AXafsFileSelect::foundNewEdge);
    row.AFileSelect::newFile(tests::writeFile(*folder, QStringLiteral("a.dat"), goodSpectrum));
    row.AFileSelect::newFile(
        tests::writeFile(*folder, QStringLiteral("b.dat"), "7000 0\n7100 1\n7200 1.5\n"));
    QCOMPARE(edges.size(), 2);
    QCOMPARE(edges.at(1).at(0).toDouble(), 7050.0);
    QCOMPARE(row.points.size(), 3);
}

void tst_AXafsFileSelect::failedReadProposesNoEdge_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("comments only") << QByteArray("# nothing\n# at all\n");
    QTest::newRow("beamline form without rows") << QByteArray("9809 Ni\nMode 0 0 1 2\nOffset 0\n");
}

void tst_AXafsFileSelect::failedReadProposesNoEdge()
{
    QFETCH(QByteArray, content);
    AXafsFileSelect row;
    const QSignalSpy edges(&row, &AXafsFileSelect::foundNewEdge);
    const QSignalSpy paths(&row, &AFileSelect::newFilePath);
    row.AFileSelect::newFile(tests::writeFile(*folder, QStringLiteral("bad.dat"), content));
    QVERIFY(!row.valid);
    QCOMPARE(edges.size(), 0);
    QCOMPARE(paths.size(), 1);
}

void tst_AXafsFileSelect::unreadableFileProposesNoEdge()
{
    const QString path = tests::writeFile(*folder, QStringLiteral("ni.dat"), goodSpectrum);
    QVERIFY(QFile::setPermissions(path, {}));
    QVERIFY(QFile::setPermissions(folder->path(), QFile::Permissions(0x7755)));
    AXafsFileSelect row;
    const QSignalSpy edges(&row, &AXafsFileSelect::foundNewEdge);
    {
        const tests::Unprivileged rights;
        QVERIFY(rights.holds());
        row.AFileSelect::newFile(path);
    }
    QVERIFY(!row.valid);
    QCOMPARE(edges.size(), 0);
    QCOMPARE(row.fileText(), path);
}

void tst_AXafsFileSelect::missingFileKeepsTheSpectrumAndProposesNoEdge_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing file") << "missing.dat";
    QTest::newRow("a folder") << ".";
    QTest::newRow("cleared row") << "";
}

void tst_AXafsFileSelect::missingFileKeepsTheSpectrumAndProposesNoEdge()
{
    QFETCH(QString, name);
    AXafsFileSelect row;
    row.AFileSelect::newFile(tests::writeFile(*folder, QStringLiteral("ni.dat"), goodSpectrum));
    const QSignalSpy edges(&row, &AXafsFileSelect::foundNewEdge);
    const QSignalSpy paths(&row, &AFileSelect::newFilePath);
    if (name.isEmpty()) {
        QTest::mouseClick(row.ClearB, Qt::LeftButton);
    } else {
        row.AFileSelect::newFile(folder->filePath(name));
    }
    QVERIFY(row.valid);
    QCOMPARE(row.points.size(), 4);
    QCOMPARE(edges.size(), 0);
    QCOMPARE(paths.size(), 1);
}

void tst_AXafsFileSelect::fileWithoutPointsInvalidatesTheSpectrum()
{
    AXafsFileSelect row;
    row.AFileSelect::newFile(tests::writeFile(*folder, QStringLiteral("ni.dat"), goodSpectrum));
    const QSignalSpy edges(&row, &AXafsFileSelect::foundNewEdge);
    row.AFileSelect::newFile(tests::writeFile(*folder, QStringLiteral("bad.dat"), "# none\n"));
    QVERIFY(!row.valid);
    QCOMPARE(edges.size(), 0);
}

void tst_AXafsFileSelect::newFileSlotReadsTheSpectrumButKeepsTheNameField()
{
    AXafsFileSelect row;
    const QSignalSpy paths(&row, &AFileSelect::newFilePath);
    row.newFile(tests::writeFile(*folder, QStringLiteral("ni.dat"), goodSpectrum));
    QVERIFY(row.valid);
    QCOMPARE(row.fileText(), QString());
    QCOMPARE(paths.size(), 0);
}

void tst_AXafsFileSelect::shiftFieldHasNoEffectBeforeAttach()
{
    AXafsFileSelect row;
    row.Ui_AFileSelect::dE->setText(QStringLiteral("1.5"));
    Q_EMIT row.newDE();
    QCOMPARE(spectrumOf(row).dE, 0.0);
}

void tst_AXafsFileSelect::attachingWithoutAFrameStillConnectsTheShiftField()
{
    AXafsFileSelect row;
    row.attach(nullptr);
    QVERIFY(row.frame == nullptr);
    QVERIFY(!row.dEBase->isHidden());
    row.Ui_AFileSelect::dE->setText(QStringLiteral("1.5"));
    QTest::keyClick(row.Ui_AFileSelect::dE, Qt::Key_Return);
    QCOMPARE(spectrumOf(row).dE, 1.5);
    row.AFileSelect::newFile(tests::writeFile(*folder, QStringLiteral("ni.dat"), goodSpectrum));
    QVERIFY(row.valid);
    row.draw(nullptr); // no-op without a frame
}

void tst_AXafsFileSelect::attachingTwiceConnectsTheShiftFieldOnce()
{
    AXafsFileSelect row;
    row.attach(nullptr);
    row.attach(nullptr);
    setSpectrum(row);
    const QSignalSpy updates(&row, &AXafsFileSelect::updated);
    Q_EMIT row.newDE();
    QCOMPARE(updates.size(), 1);
}

void tst_AXafsFileSelect::shiftOfValidSpectrumIsStoredAndSignalled()
{
    AXafsFileSelect row;
    row.attach(nullptr);
    setSpectrum(row);
    const QSignalSpy updates(&row, &AXafsFileSelect::updated);
    row.Ui_AFileSelect::dE->setText(QStringLiteral("-2.5"));
    const tests::DebugLog log;
    QTest::keyClick(row.Ui_AFileSelect::dE, Qt::Key_Return);
    QCOMPARE(spectrumOf(row).dE, -2.5);
    QCOMPARE(updates.size(), 1);
    const QStringList expected{QStringLiteral("set new de"), QStringLiteral("bb")};
    QCOMPARE(log.lines(), expected);
}

void tst_AXafsFileSelect::shiftWithoutSpectrumIsStoredWithoutSignal()
{
    AXafsFileSelect row;
    row.attach(nullptr);
    const QSignalSpy updates(&row, &AXafsFileSelect::updated);
    row.Ui_AFileSelect::dE->setText(QStringLiteral("3"));
    const tests::DebugLog log;
    QTest::keyClick(row.Ui_AFileSelect::dE, Qt::Key_Return);
    QCOMPARE(spectrumOf(row).dE, 3.0);
    QCOMPARE(updates.size(), 0);
    QCOMPARE(log.lines(), QStringList(QStringLiteral("set new de")));
}

void tst_AXafsFileSelect::unparsableShiftIsReadAsZero()
{
    AXafsFileSelect row;
    spectrumOf(row).dE = 4.0;
    row.Ui_AFileSelect::dE->setText(QStringLiteral("two"));
    row.setNewDE();
    QCOMPARE(spectrumOf(row).dE, 0.0);
}

void tst_AXafsFileSelect::shiftDoesNotRefitTheBackgroundLines()
{
    AXafsFileSelect row;
    QByteArray spectrum;
    for (int energy = 7800; energy <= 8700; energy += 10) {
        const double mut = energy < 8350 ? 0.1 + 1e-4 * energy : 1.5 - 1e-4 * energy;
        spectrum += QByteArray::number(energy) + ' ' + QByteArray::number(mut, 'g', 17) + '\n';
    }
    row.AFileSelect::newFile(tests::writeFile(*folder, QStringLiteral("ni.dat"), spectrum));
    const data::VictoreenLine pre = row.preLine;
    const data::VictoreenLine post = row.postLine;
    row.Ui_AFileSelect::dE->setText(QStringLiteral("37.5"));
    row.setNewDE();
    QVERIFY(tests::sameDouble(row.preLine.c, pre.c) && tests::sameDouble(row.preLine.a, pre.a) &&
            tests::sameDouble(row.preLine.b, pre.b));
    QVERIFY(tests::sameDouble(row.postLine.c, post.c) &&
            tests::sameDouble(row.postLine.a, post.a) && tests::sameDouble(row.postLine.b, post.b));
    // A new fit of the shifted spectrum yields other lines. So the comparison above
    // would have noticed a refit.
    row.fitLines();
    QVERIFY(!tests::sameDouble(row.preLine.c, pre.c));
    QVERIFY(!tests::sameDouble(row.postLine.c, post.c));
}

void tst_AXafsFileSelect::shiftIsKeptForANewFile()
{
    AXafsFileSelect row;
    row.Ui_AFileSelect::dE->setText(QStringLiteral("5"));
    row.setNewDE();
    const QSignalSpy edges(&row, &AXafsFileSelect::foundNewEdge);
    row.AFileSelect::newFile(tests::writeFile(*folder, QStringLiteral("ni.dat"), goodSpectrum));
    QCOMPARE(spectrumOf(row).dE, 5.0);
    QCOMPARE(row.points.at(0).energy, 8000.0);
    QCOMPARE(edges.size(), 1);
    QCOMPARE(edges.at(0).at(0).toDouble(), 8100.0); // 8105 eV minus the shift of 5 eV
}

void tst_AXafsFileSelect::mutIsInterpolatedAndThePreEdgeLineIsSubtracted_data()
{
    QTest::addColumn<double>("energy"); // eV
    QTest::addColumn<double>("mut");
    QTest::newRow("between two points") << 8005.0 << 0.6 - 0.25;
    QTest::newRow("in the second segment") << 8015.0 << 1.2 - 0.25;
    QTest::newRow("on a point") << 8010.0 << 1.1 - 0.25;
    QTest::newRow("on the first point") << 8000.0 << 0.1 - 0.25;
    QTest::newRow("on the last point") << 8020.0 << 1.3 - 0.25;
    QTest::newRow("below the spectrum, midway between (0, 0) and the first point")
        << 4000.0 << 0.05 - 0.25;
}

void tst_AXafsFileSelect::mutIsInterpolatedAndThePreEdgeLineIsSubtracted()
{
    QFETCH(double, energy);
    QFETCH(double, mut);
    AXafsFileSelect row;
    setSpectrum(row);
    double out = -7.0;
    QVERIFY(row.MutAt(energy, &out));
    // The tolerance of 1e-12 is far above the rounding error of numbers near 1 (2e-16)
    // and far below any real difference.
    QVERIFY2(qAbs(out - mut) < 1e-12, qPrintable(QString::number(out, 'g', 17)));
}

void tst_AXafsFileSelect::subPostFlagSubtractsThePostEdgeLine()
{
    AXafsFileSelect row;
    setSpectrum(row);
    row.subPost = true;
    double out = -7.0;
    QVERIFY(row.MutAt(8005.0, &out));
    QVERIFY2(qAbs(out - (0.6 - 1.5)) < 1e-12, qPrintable(QString::number(out, 'g', 17)));
}

void tst_AXafsFileSelect::mutAtFailsAboveTheSpectrumAndKeepsTheOutput()
{
    AXafsFileSelect row;
    setSpectrum(row);
    double out = -7.0;
    QVERIFY(!row.MutAt(8020.5, &out));
    QCOMPARE(out, -7.0);
}

void tst_AXafsFileSelect::mutAtFailsForAnEmptySpectrum()
{
    const AXafsFileSelect row;
    double out = -7.0;
    QVERIFY(!row.MutAt(8000.0, &out));
    QCOMPARE(out, -7.0);
}

void tst_AXafsFileSelect::mutAtUsesTheShiftedEnergies()
{
    AXafsFileSelect row;
    setSpectrum(row);
    spectrumOf(row).dE = 5.0;
    double out = -7.0;
    // The points are now at 7995, 8005 and 8015 eV.
    QVERIFY(row.MutAt(8000.0, &out));
    QVERIFY2(qAbs(out - (0.6 - 0.25)) < 1e-12, qPrintable(QString::number(out, 'g', 17)));
    QVERIFY(!row.MutAt(8016.0, &out));
}

void tst_AXafsFileSelect::mutAtInterpolatesFromOriginToFirstPointOfDescendingScan()
{
    AXafsFileSelect row;
    setSpectrum(row);
    std::reverse(row.points.begin(), row.points.end());
    double out = -7.0;
    // The first point, at 8020 eV, is already above 8010 eV. So mut is interpolated
    // between (0 eV, 0) and this point: 1.3 * 8010 / 8020.
    QVERIFY(row.MutAt(8010.0, &out));
    QVERIFY2(qAbs(out - (1.3 * 8010.0 / 8020.0 - 0.25)) < 1e-12,
             qPrintable(QString::number(out, 'g', 17)));
}

QTEST_MAIN(tst_AXafsFileSelect)
#include "tst_AXafsFileSelect.moc"
