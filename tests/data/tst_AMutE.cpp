// AMutE, the spectrum record: its initial values, its state after a read, and findToken().
#include "data/AMutE.h"
#include "support/SameDouble.h"
#include "support/TestFiles.h"

#include <QTest>

#include <limits>
#include <type_traits>

// The record is a plain value that can be copied and has no virtual functions, although the
// panel's spectrum row AXafsFileSelect inherits from it and from a widget.
static_assert(!std::is_polymorphic_v<AMutE>);
static_assert(std::is_copy_constructible_v<AMutE>);

class tst_AMutE : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newRecordIsEmpty();
    void newPointHasZeroAngleEnergyAndMut();
    void extremesSpanAllPoints();
    void extremesAreCalculatedAnewForEachFile_data();
    void extremesAreCalculatedAnewForEachFile();
    void descendingScanStaysDescending();
    void readingKeepsTheEnergyShiftAndTheFitLimits();
    void energyShiftDoesNotChangeThePointEnergies();
    void readingFitsBackgroundLinesWithinTheCurrentLimits();
    void failedReadKeepsTheBackgroundLines();
    void findTokenReturnsIndexOfFirstMatchOrMinusOne_data();
    void findTokenReturnsIndexOfFirstMatchOrMinusOne();

private:
    bool read(AMutE* spectrum, const QByteArray& content);

    QTemporaryDir dir;
};

bool tst_AMutE::read(AMutE* spectrum, const QByteArray& content)
{
    return spectrum->readFile(tests::writeFile(dir, "spectrum.txt", content));
}

void tst_AMutE::newRecordIsEmpty()
{
    const AMutE spectrum;
    QVERIFY(!spectrum.valid);
    QVERIFY(spectrum.switchedOn);
    QVERIFY(spectrum.filePath.isEmpty());
    QVERIFY(spectrum.fileName.isEmpty());
    QVERIFY(spectrum.points.isEmpty());
    QCOMPARE(spectrum.preEdgeEnd, 8000.0);
    QCOMPARE(spectrum.postEdgeStart, 8500.0);
    for (const double zero :
         {spectrum.minAngle, spectrum.maxAngle, spectrum.minEnergy, spectrum.maxEnergy,
          spectrum.minMut, spectrum.maxMut, spectrum.edgeEnergy, spectrum.dE, spectrum.preLine.c,
          spectrum.preLine.a, spectrum.preLine.b, spectrum.postLine.c, spectrum.postLine.a,
          spectrum.postLine.b}) {
        QVERIFY(tests::sameDouble(zero, 0.0));
    }
}

void tst_AMutE::newPointHasZeroAngleEnergyAndMut()
{
    const MutPoint point;
    QCOMPARE(point.angle, 0.0);
    QCOMPARE(point.energy, 0.0);
    QCOMPARE(point.mut, 0.0);
}

void tst_AMutE::extremesSpanAllPoints()
{
    AMutE spectrum;
    QVERIFY(read(&spectrum, "8300 0.5\n8200 -1.25\n8400 2\n"));
    QCOMPARE(spectrum.minEnergy, 8200.0);
    QCOMPARE(spectrum.maxEnergy, 8400.0);
    QCOMPARE(spectrum.minMut, -1.25);
    QCOMPARE(spectrum.maxMut, 2.0);
    QCOMPARE(spectrum.minAngle, spectrum.points.at(2).angle); // at the highest energy
    QCOMPARE(spectrum.maxAngle, spectrum.points.at(1).angle);
}

void tst_AMutE::extremesAreCalculatedAnewForEachFile_data()
{
    using Numbers = QList<double>;
    constexpr double inf = std::numeric_limits<double>::infinity();
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<Numbers>("energy"); // lowest and highest
    QTest::addColumn<Numbers>("mut");
    const auto row = [](const char* name, const QByteArray& content, const Numbers& energy,
                        const Numbers& mut) { QTest::newRow(name) << content << energy << mut; };
    row("two points", "8300 1\n8400 2\n", {8300, 8400}, {1, 2});
    row("one point", "8300 -0.5\n", {8300, 8300}, {-0.5, -0.5});
    row("NaN is ignored", "8300 nan\nnan 1\n8400 2\n", {8300, 8400}, {1, 2});
    row("infinities are extremes", "8300 inf\n8400 2\n8500 -inf\n", {8300, 8500}, {-inf, inf});
    row("only NaN: the initial values", "8300 nan\n", {8300, 8300}, {1e300, -1e300});
}

void tst_AMutE::extremesAreCalculatedAnewForEachFile()
{
    AMutE spectrum;
    QVERIFY(read(&spectrum, "1000 -100\n9000 100\n"));
    QFETCH(QByteArray, content);
    QVERIFY(read(&spectrum, content));
    QCOMPARE(spectrum.points.size(), content.count('\n'));
    QTEST((QList<double>{spectrum.minEnergy, spectrum.maxEnergy}), "energy");
    QTEST((QList<double>{spectrum.minMut, spectrum.maxMut}), "mut");
}

void tst_AMutE::descendingScanStaysDescending()
{
    AMutE spectrum;
    QVERIFY(read(&spectrum, "8500 3\n8400 2\n8300 1\n"));
    QCOMPARE(spectrum.points.at(0).energy, 8500.0);
    QCOMPARE(spectrum.points.at(2).energy, 8300.0);
    QCOMPARE(spectrum.minEnergy, 8300.0);
    QCOMPARE(spectrum.maxEnergy, 8500.0);
}

void tst_AMutE::readingKeepsTheEnergyShiftAndTheFitLimits()
{
    AMutE spectrum;
    spectrum.dE = 5.0;
    spectrum.preEdgeEnd = 8320.0;
    spectrum.edgeEnergy = 8333.0;
    spectrum.postEdgeStart = 8390.0;
    QVERIFY(read(&spectrum, "8300 1\n"));
    QVERIFY(!read(&spectrum, ""));
    QCOMPARE(spectrum.dE, 5.0);
    QCOMPARE(spectrum.preEdgeEnd, 8320.0);
    QCOMPARE(spectrum.edgeEnergy, 8333.0);
    QCOMPARE(spectrum.postEdgeStart, 8390.0);
}

void tst_AMutE::energyShiftDoesNotChangeThePointEnergies()
{
    AMutE spectrum;
    spectrum.dE = 5.0;
    QVERIFY(read(&spectrum, "8300 1\n8400 2\n"));
    QCOMPARE(spectrum.points.at(0).energy, 8300.0);
    QCOMPARE(spectrum.minEnergy, 8300.0);
}

void tst_AMutE::readingFitsBackgroundLinesWithinTheCurrentLimits()
{
    // The spectrum is constant below and above the edge, so the lines are 1 and 3. The normal
    // equations have a condition number of up to 7e8, so the fit loses nine of sixteen digits;
    // the tolerance is 1e-6.
    const QByteArray content = "8100 1\n8200 1\n8250 1\n8300 1\n8400 3\n8500 3\n8600 3\n8700 3\n";
    AMutE spectrum;
    spectrum.preEdgeEnd = 8350.0;
    spectrum.postEdgeStart = 8350.0;
    QVERIFY(read(&spectrum, content));
    QVERIFY(std::fabs(spectrum.preValue(8200.0) - 1.0) < 1e-6);
    QVERIFY(std::fabs(spectrum.postValue(8500.0) - 3.0) < 1e-6);

    spectrum.preEdgeEnd = 0.0; // no point is below this energy
    QVERIFY(read(&spectrum, content));
    QVERIFY(std::isnan(spectrum.preLine.c));
    QVERIFY(std::fabs(spectrum.postValue(8500.0) - 3.0) < 1e-6);
}

void tst_AMutE::failedReadKeepsTheBackgroundLines()
{
    AMutE spectrum;
    spectrum.preLine = {1.0, 2.0, 3.0};
    QVERIFY(!read(&spectrum, "# no points\n"));
    QCOMPARE(spectrum.preLine.c, 1.0);
    QCOMPARE(spectrum.preLine.a, 2.0);
    QCOMPARE(spectrum.preLine.b, 3.0);
}

void tst_AMutE::findTokenReturnsIndexOfFirstMatchOrMinusOne_data()
{
    QTest::addColumn<QStringList>("tokens");
    QTest::addColumn<QString>("word");
    QTest::addColumn<int>("index");

    const QStringList line{"Angle(c)", "Mode", "0", "Mode"};
    QTest::newRow("first of two") << line << "Mode" << 1;
    QTest::newRow("at the start") << line << "Angle(c)" << 0;
    QTest::newRow("missing") << line << "Offset" << -1;
    QTest::newRow("case-sensitive") << line << "mode" << -1;
    QTest::newRow("whole token only") << line << "Angle" << -1;
    QTest::newRow("empty list") << QStringList() << "Mode" << -1;
    QTest::newRow("empty word") << QStringList{"a", ""} << "" << 1;
}

void tst_AMutE::findTokenReturnsIndexOfFirstMatchOrMinusOne()
{
    QFETCH(QStringList, tokens);
    QFETCH(QString, word);
    QFETCH(int, index);
    QCOMPARE(AMutE::findToken(tokens, word), index);
}

QTEST_APPLESS_MAIN(tst_AMutE)
#include "tst_AMutE.moc"
