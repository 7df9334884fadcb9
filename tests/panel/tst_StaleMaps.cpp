// Tests of repeated map calculations with changed inputs: each result must equal the result of a
// panel without results and cached data of earlier calculations.
#include "display/Histgram.h"
#include "display/LineEditText.h"
#include "rows/AXafsFileSelect.h"
#include "support/PlainMapForms.h"
#include "support/RandomMaps.h"
#include "support/SharedPanel.h"
#include "support/TestFiles.h"

#include <QTest>

#include <functional>
#include <memory>

using analysis::HistogramCounts;

using namespace tests;

namespace
{

using Action = std::function<void(FourPs&)>;

/// A calculation method and a number of energy rows that it accepts.
struct Method {
    const char* name;
    int rows;
    bool nonEquivalent;
    bool exact;
    bool linear;
};

constexpr std::array<Method, 5> methods{{{"three points", 3, false, false, false},
                                         {"exact four points", 4, false, true, false},
                                         {"least squares", 6, false, false, false},
                                         {"linear", 6, true, false, true},
                                         {"Victoreen", 7, true, false, false}}};

const QList<double> energies{8300, 8320, 8335, 8345, 8350, 8360, 8380, 8420};
const QList<double> firstShape{0.01, 0.02, 0.4, 0.9, 1.3, 1.1, 0.95, 1.0};
const QList<double> secondShape{0.02, 0.01, 0.1, 0.5, 0.8, 1.4, 1.05, 1.0};

// The number of pixels is not a multiple of the block size of the calculation, so the last
// block is incomplete.
constexpr int width = 13;
constexpr int height = 11;

/// A text map with I0 = 1000 and pseudo-random intensities; @p seed starts the generator.
QByteArray textMap(int seed, int columns = width, int lines = height)
{
    QByteArray text =
        "# X-NUM " + QByteArray::number(columns) + "\n# Y-NUM " + QByteArray::number(lines) + '\n';
    std::mt19937_64 random(static_cast<unsigned>(seed));
    for (int y = 0; y < lines; ++y) {
        for (int x = 0; x < columns; ++x) {
            text += QByteArray::number(x) + ' ' + QByteArray::number(y) + ' ' +
                    QByteArray::number(wholeNumber(random, 100, 900)) + " 1000\n";
        }
    }
    return text;
}

/// A binary map with pseudo-random values of mut; @p seed starts the generator.
QByteArray binaryMap(int seed, int columns, int lines)
{
    QByteArray bytes = QByteArrayLiteral("2dData-V0.0 HeaderSize: 512").leftJustified(64, ' ');
    bytes += "\nWIDTH: " + QByteArray::number(columns) + "\nHEIGHT: " + QByteArray::number(lines) +
             "\nDATA_ID: mut\nEND_OF_HEADER:\n";
    bytes = bytes.leftJustified(512, '\0');
    std::mt19937_64 random(static_cast<unsigned>(seed));
    for (int i = 0; i < columns * lines; ++i) {
        const double value = wholeNumber(random, 0, 2000) * 0.001;
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    return bytes + QByteArray(columns * lines, '\1');
}

/// Sets the references, and the energies and mut values of all rows.
void prepareNumbers(FourPs& panel)
{
    for (int i = 0; i < 2; ++i) {
        setSpectrum(*panel.XafsFiles.at(i), energies, i == 0 ? firstShape : secondShape,
                    {0.1, 0, 0}, {1.1 + 0.25 * i, 0, 0});
    }
    useReferences(panel, {0, 1});
    panel.Refs.RefRows.at(0)->Valence->setText("2");
    panel.Refs.RefRows.at(1)->Valence->setText("3");
    for (int row = 0; row < panel.EPoints.size(); ++row) {
        setPoint(panel, row, QString::number(energies.at(row)), QString::number(firstShape.at(row)),
                 QString::number(secondShape.at(row)));
    }
}

QString nameOf(int row)
{
    return QStringLiteral("row%1.dat").arg(row);
}

void choose(FourPs& panel, const Method& method)
{
    chooseWithoutSignals(method.nonEquivalent ? panel.ui.TypeNonEquiv : panel.ui.radioButton);
    chooseWithoutSignals(method.exact ? panel.ui.TypeTMKisExact : panel.ui.TypeTMKisLS);
    chooseWithoutSignals(method.linear ? panel.ui.NonEquivBGLinear : panel.ui.NonEquivBGVic);
}

/// Copies inputs of a map calculation to another panel: the energy rows, the valences, and the
/// fields of the histograms. The other inputs must be equal already.
void copyState(const FourPs& from, FourPs& to)
{
    for (int row = 0; row < from.EPoints.size(); ++row) {
        const AEPoint* source = from.EPoints.at(row);
        AEPoint* target = to.EPoints.at(row);
        static_cast<A2DData&>(*target) = deepCopy(*source);
        target->loaded = source->loaded;
        target->UseCB->setChecked(source->UseCB->isChecked());
        target->VPointCB->setChecked(source->VPointCB->isChecked());
        target->Energy->setText(source->Energy->text());
        for (int i = 0; i < source->mutEdits.size(); ++i) {
            target->mutEdits.at(i)->setText(source->mutEdits.at(i)->text());
        }
    }
    for (int i = 0; i < from.Refs.RefRows.size(); ++i) {
        to.Refs.RefRows.at(i)->Valence->setText(from.Refs.RefRows.at(i)->Valence->text());
    }
    const QList<QLineEdit*> source{from.ui.HgAFrom, from.ui.HgATo, from.ui.HgABoxes,
                                   from.ui.HgTFrom, from.ui.HgTTo, from.ui.HgTBoxes};
    const QList<QLineEdit*> target{to.ui.HgAFrom, to.ui.HgATo, to.ui.HgABoxes,
                                   to.ui.HgTFrom, to.ui.HgTTo, to.ui.HgTBoxes};
    for (int i = 0; i < source.size(); ++i) {
        target.at(i)->setText(source.at(i)->text());
    }
}

/// The state after a calculation.
struct Outcome {
    A2DData map; ///< a deep copy
    QList<HistogramCounts> counts;
    bool isRefused = false;
};

Outcome calculate(FourPs& panel)
{
    clearMessages(panel);
    panel.calcMap();
    Outcome outcome{deepCopy(panel.BaseData), {*panel.HistV, *panel.HistT}, false};
    for (const Histgram* histogram : panel.HistRatio + panel.HistDMut) {
        outcome.counts.append(*histogram);
    }
    outcome.isRefused = !messages(panel).isEmpty();
    return outcome;
}

/// Removes the maps, the result map and the cached data of earlier calculations from the panel.
/// The calculation with empty maps empties the cache.
void makeLikeNew(FourPs& panel)
{
    panel.BaseData = {};
    for (int row = 0; row < panel.EPoints.size(); ++row) {
        panel.EPoints.at(row)->clear();
        panel.EPoints.at(row)->loaded = true;
        panel.EPoints.at(row)->VPointCB->setChecked(row == 2);
    }
    useRows(panel, {0, 1, 2});
    choose(panel, methods[0]);
    panel.calcMap();
    panel.BaseData = {};
}

QString differenceOf(const Outcome& a, const Outcome& b)
{
    for (qsizetype i = 0; i < a.counts.size(); ++i) {
        const HistogramCounts& p = a.counts.at(i);
        const HistogramCounts& q = b.counts.at(i);
        if (p.bins != q.bins || p.total != q.total || p.under != q.under || p.over != q.over ||
            !sameDouble(p.minV, q.minV) || !sameDouble(p.step, q.step)) {
            return QStringLiteral("histogram %1").arg(i);
        }
    }
    return tests::differenceOf(a.map, b.map);
}

} // namespace

Q_DECLARE_METATYPE(Action)

class tst_StaleMaps : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void recalculationAfterAnActionMatchesAResetPanel_data();
    void recalculationAfterAnActionMatchesAResetPanel();
    void recalculationAfterMapChangesMatchesANewPanel();
    void binaryMapLoadedOverATextMapKeepsTheTextPixels();
    void copyOfTheResultIsNotModifiedByLaterCalculations();

private:
    QString file(const QString& name, const QByteArray& content) const
    {
        return writeFile(*m_folder, name, content);
    }
    void loadAll(FourPs& panel) const;
    void addFileActions();
    void addChoiceActions();

    std::unique_ptr<QTemporaryDir> m_folder;
    const SharedPanel m_panel; ///< the panel under test
    const SharedPanel m_other; ///< made like new before each of its calculations
};

void tst_StaleMaps::initTestCase()
{
    m_folder = std::make_unique<QTemporaryDir>();
    for (int row = 0; row < 8; ++row) {
        file(nameOf(row), textMap(row));
    }
    prepareNumbers(*m_panel);
    prepareNumbers(*m_other);
}

/// Sets the initial state of each test: the numbers of prepareNumbers() and a text map in each row.
void tst_StaleMaps::loadAll(FourPs& panel) const
{
    file(nameOf(2), textMap(2)); // an earlier test might have overwritten this file
    prepareNumbers(panel);
    for (int row = 0; row < panel.EPoints.size(); ++row) {
        panel.EPoints.at(row)->loadData(m_folder->filePath(nameOf(row)));
        panel.EPoints.at(row)->VPointCB->setChecked(row == 2);
    }
}

void tst_StaleMaps::recalculationAfterAnActionMatchesAResetPanel_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<bool>("changes"); // whether the action changes the result of every method
    addFileActions();
    addChoiceActions();
}

void tst_StaleMaps::addFileActions()
{
    const auto add = [](const char* name, bool changes, const Action& action) {
        QTest::newRow(name) << action << changes;
    };
    add("another map of the same size", true,
        [this](FourPs& panel) { panel.EPoints.at(0)->loadData(file("other.dat", textMap(100))); });
    add("the same file with new content", true,
        [this](FourPs& panel) { panel.EPoints.at(2)->loadData(file("row2.dat", textMap(101))); });
    add("smaller map in the first row", true, [this](FourPs& panel) {
        panel.EPoints.at(0)->loadData(file("small.dat", textMap(102, 7, 10)));
    });
    add("larger map in the V row", true, [this](FourPs& panel) {
        panel.EPoints.at(2)->loadData(file("large.dat", textMap(103, 16, 12)));
    });
    add("path that cannot be read", false,
        [](FourPs& panel) { panel.EPoints.at(1)->loadData(QStringLiteral("/nowhere/map.dat")); });
    add("file without rows", false, [this](FourPs& panel) {
        panel.EPoints.at(1)->loadData(file("empty.dat", "# X-NUM 13\n# Y-NUM 11\n"));
    });
    add("file without a size", false, [this](FourPs& panel) {
        panel.EPoints.at(1)->loadData(file("sizeless.dat", "1 2 300 1000\n2 2 400 1000\n"));
    });
    add("failed load, then a successful load", true, [this](FourPs& panel) {
        panel.EPoints.at(1)->loadData(QStringLiteral("/nowhere/map.dat"));
        panel.calcMap();
        panel.EPoints.at(1)->loadData(file("other.dat", textMap(104)));
    });
    add("larger binary map loaded over a text map", true, [this](FourPs& panel) {
        panel.EPoints.at(2)->loadData(file("map.2dp", binaryMap(105, 20, 10)));
    });
    add("binary maps loaded over all text maps", true, [this](FourPs& panel) {
        for (int i = 0; i < panel.EPoints.size(); ++i) {
            panel.EPoints.at(i)->loadData(file("map.2dp", binaryMap(120 + i, 20, 10)));
        }
    });
    add("text map after a binary map", true, [this](FourPs& panel) {
        panel.EPoints.at(1)->loadData(file("map.2dp", binaryMap(107, width, height)));
        panel.calcMap();
        panel.EPoints.at(1)->loadData(file("other.dat", textMap(108)));
    });
    add("binary map loaded twice", true, [this](FourPs& panel) {
        for (int round = 0; round < 2; ++round) {
            panel.EPoints.at(0)->loadData(file("map.2dp", binaryMap(109 + round, 20, 12)));
            panel.EPoints.at(2)->loadData(file("map.2dp", binaryMap(111 + round, 20, 20)));
            panel.calcMap();
        }
    });
    add("the same map in two rows", true, [this](FourPs& panel) {
        panel.EPoints.at(0)->loadData(file("both.dat", textMap(113)));
        panel.EPoints.at(1)->loadData(file("both.dat", textMap(113)));
    });
}

void tst_StaleMaps::addChoiceActions()
{
    const auto add = [](const char* name, bool changes, const Action& action) {
        QTest::newRow(name) << action << changes;
    };
    add("method changed and changed back", false, [](FourPs& panel) {
        const QList<QAbstractButton*> chosen{panel.ui.TypeNonEquiv, panel.ui.radioButton};
        const bool isNonEquivalent = panel.ui.TypeNonEquiv->isChecked();
        chosen.at(isNonEquivalent ? 1 : 0)->click();
        panel.calcMap();
        chosen.at(isNonEquivalent ? 0 : 1)->click();
    });
    add("row unchecked and checked again", false, [](FourPs& panel) {
        panel.EPoints.at(1)->UseCB->click();
        panel.calcMap();
        panel.EPoints.at(1)->UseCB->click();
    });
    add("row in use replaced by another row", true, [](FourPs& panel) {
        panel.EPoints.at(0)->UseCB->click();
        panel.EPoints.at(7)->UseCB->click();
    });
    add("V point in another row", false, [](FourPs& panel) {
        panel.EPoints.at(1)->VPointCB->click();
        panel.EPoints.at(2)->VPointCB->click();
    });
    add("new valence", false, [](FourPs& panel) {
        enter(panel.Refs.RefRows.at(1)->Valence, QStringLiteral("2.25"));
        panel.calcBoth();
    });
    add("new energy", false,
        [](FourPs& panel) { enter(panel.EPoints.at(1)->Energy, QStringLiteral("8327")); });
}

// For each method, the panel calculates before and after the action. A second panel, which
// has no earlier results and no cached data, then calculates with the same inputs. Both
// panels must have the same result. If the calculation is refused, the first panel must keep
// its earlier result.
void tst_StaleMaps::recalculationAfterAnActionMatchesAResetPanel()
{
    QFETCH(Action, action);
    QFETCH(bool, changes);
    for (const Method& method : methods) {
        loadAll(*m_panel);
        QList<int> rows;
        for (int i = 0; i < method.rows; ++i) {
            rows.append(i);
        }
        useRows(*m_panel, rows);
        choose(*m_panel, method);
        const Outcome before = calculate(*m_panel);
        QVERIFY2(!before.isRefused && before.map.rows.size() == width * height, method.name);
        action(*m_panel);
        const Outcome after = calculate(*m_panel);
        QVERIFY2(!changes || !differenceOf(after, before).isEmpty(), method.name);

        makeLikeNew(*m_other);
        choose(*m_other, method);
        copyState(*m_panel, *m_other);
        const Outcome expected = calculate(*m_other);
        QCOMPARE(after.isRefused, expected.isRefused);
        if (after.isRefused) {
            QCOMPARE(tests::differenceOf(after.map, before.map), QString());
        } else {
            QVERIFY2(
                differenceOf(after, expected).isEmpty(),
                qPrintable(method.name + QStringLiteral(": ") + differenceOf(after, expected)));
        }
    }
}

void tst_StaleMaps::recalculationAfterMapChangesMatchesANewPanel()
{
    loadAll(*m_panel);
    useRows(*m_panel, {0, 1, 2, 3, 4, 5});
    choose(*m_panel, methods[3]);
    calculate(*m_panel);
    m_panel->EPoints.at(0)->loadData(file("other.dat", textMap(300)));
    m_panel->EPoints.at(4)->loadData(file("map.2dp", binaryMap(301, 20, 10)));
    FourPs newPanel;
    prepareNumbers(newPanel);
    for (const Method& method : methods) {
        const bool isThreePoints = method.rows == 3;
        useRows(*m_panel, isThreePoints ? QList<int>{0, 1, 2} : QList<int>{0, 2, 3, 4, 5, 6});
        choose(*m_panel, method);
        const Outcome outcome = calculate(*m_panel);
        choose(newPanel, method);
        copyState(*m_panel, newPanel);
        const Outcome expected = calculate(newPanel);
        QCOMPARE(outcome.isRefused, expected.isRefused);
        QVERIFY2(outcome.isRefused || differenceOf(outcome, expected).isEmpty(), method.name);
    }
}

// Loading a binary map over a text map appends the binary pixels to the text map's pixels,
// but sets the size of the binary map. Pixels are accessed by index, so the first pixels of
// the new map are still the pixels of the text map.
void tst_StaleMaps::binaryMapLoadedOverATextMapKeepsTheTextPixels()
{
    FourPs& panel = *m_panel;
    loadAll(panel);
    useRows(panel, {0, 1, 2});
    choose(panel, methods[0]);
    calculate(panel);
    const double ofText = data::pixelMut(*panel.EPoints.at(2), 3, 4);
    panel.EPoints.at(2)->loadData(file("map.2dp", binaryMap(200, 20, 10)));
    const AEPoint& base = *panel.EPoints.at(2);
    QCOMPARE(base.rows.size(), width * height + 200);
    // Pixel (15, 2) of the binary map has the index 2 * 20 + 15 = 55, and pixel (3, 4) of the
    // text map has the same index, 4 * 13 + 3.
    QCOMPARE(data::pixelMut(base, 15, 2), ofText);
    const A2DData result = calculate(panel).map;
    QCOMPARE(result.rows.size(), 200);

    PlainStack stack;
    for (int row = 0; row < 3; ++row) {
        const AEPoint* point = panel.EPoints.at(row);
        stack.points.append(
            {point, row == 2, point->Energy->text(), point->Mut1->text(), point->Mut2->text()});
    }
    A2DData expected;
    PlainHistogram unused{0.0, 1.0, {}, 0, 0, 0};
    plainThreePoints(stack, expected, unused, unused);
    QCOMPARE(tests::differenceOf(result, expected), QString());
}

void tst_StaleMaps::copyOfTheResultIsNotModifiedByLaterCalculations()
{
    FourPs& panel = *m_panel;
    loadAll(panel);
    useRows(panel, {0, 1, 2, 3, 4, 5});
    choose(panel, methods[3]);
    calculate(panel);
    const A2DData copy = panel.BaseData;
    const A2DData then = deepCopy(copy);
    const QList<double> list = copy.rows.at(64).values;
    const QList<double> listThen = deepCopy(list);
    panel.EPoints.at(0)->loadData(file("other.dat", textMap(201)));
    QVERIFY(!tests::differenceOf(calculate(panel).map, then).isEmpty());
    QCOMPARE(tests::differenceOf(copy, then), QString());
    for (const Method& method : methods) {
        choose(panel, method);
        calculate(panel);
        QVERIFY(sameNumbers(list, listThen));
    }
    QCOMPARE(tests::differenceOf(copy, then), QString());
}

QTEST_MAIN(tst_StaleMaps)
#include "tst_StaleMaps.moc"
