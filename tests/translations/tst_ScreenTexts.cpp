// Tests that every text on the screen is translatable: a translator that marks each text that
// it returns is installed, so an unmarked text did not pass through tr().

#include "app/Body.h"
#include "app/Language.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "rows/AXafsFileSelect.h"
#include "support/MarkingTranslator.h"
#include "support/SharedPanel.h"
#include "support/TestFiles.h"
#include "support/TextRecorder.h"

#include <QFileDialog>
#include <QRegularExpression>
#include <QStylePainter>
#include <QtTest>

#include <functional>
#include <memory>

using namespace tests;

namespace
{

constexpr int rowCount = 8;

/// An operation on a panel.
using Action = std::function<void(FourPs&)>;

/// Whether @p widget is a file dialog of Qt or a widget inside it.
bool isPartOfFileDialog(const QWidget* widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (qobject_cast<const QFileDialog*>(widget)) {
            return true;
        }
    }
    return false;
}

/// All widgets of the program, visible or hidden, except file dialogs of Qt and the widgets
/// inside them.
QWidgetList ownWidgets()
{
    QWidgetList widgets = QApplication::allWidgets();
    widgets.removeIf(isPartOfFileDialog);
    return widgets;
}

bool isMarked(const QString& text)
{
    return text.startsWith(u'«') && text.endsWith(u'»');
}

/// The texts that @p plot paints in its current state.
QStringList drawnTexts(DispABase* plot)
{
    // If the plot is not shown, grab() sets the size that a paint event would set.
    plot->DispA->grab();
    plot->DispA->cc.drawn = true;
    TextRecorder recorder;
    QStylePainter painter(&recorder, plot->DispA);
    plot->receiveDraw(&painter);
    painter.end();
    QStringList texts;
    for (const DrawnText& drawn : recorder.texts()) {
        texts << drawn.text;
    }
    return texts;
}

bool isNumber(const QString& text)
{
    bool is = false;
    text.toDouble(&is);
    return is;
}

/// The sorted texts of a plot without the numbers of its scales.
QStringList textsIn(DispABase* plot)
{
    QStringList texts = drawnTexts(plot);
    texts.removeIf(isNumber);
    texts.sort();
    return texts;
}

/// Loads a spectrum with an edge at 8350 eV: mut is 0.5 below the edge and 2.5 above it.
bool loadEdge(AMutE& spectrum, const QTemporaryDir& folder, const QString& name)
{
    const QString path = writeFile(folder, name,
                                   "8250 0.5\n8300 0.5\n8320 0.5\n8340 0.5\n8360 2.5\n"
                                   "8455 2.5\n8480 2.5\n8490 2.5\n8500 2.5\n");
    return spectrum.readFile(path);
}

/// Sets the pre-edge line to the constant 0.5 and the post-edge line to the constant 2.5.
void setLines(AMutE& spectrum)
{
    spectrum.preLine = {0.5, 0.0, 0.0};
    spectrum.postLine = {2.5, 0.0, 0.0};
}

/// Selects two energy rows, whose energies are the ends of the fit's energy range.
void markFitRange(FourPs& panel)
{
    panel.EPoints.at(6)->Energy->setText(QStringLiteral("8250"));
    panel.EPoints.at(7)->Energy->setText(QStringLiteral("8500"));
    panel.EPoints.at(6)->LCFCB->setChecked(true);
    panel.EPoints.at(7)->LCFCB->setChecked(true);
}

} // namespace

class tst_ScreenTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void labelsAndButtonsAreTranslatable();
    void windowTitlesAreTranslatable();
    void fieldsContainNumbersOrTranslatableTexts();
    void axisTitlesAreTranslatable_data();
    void axisTitlesAreTranslatable();
    void drawnTextsAreNumbersOrTranslatable_data();
    void drawnTextsAreNumbersOrTranslatable();

    void errorMessagesAreTranslatable_data();
    void errorMessagesAreTranslatable();
    void resultTextsAreTranslatable_data();
    void resultTextsAreTranslatable();

    void requestedTextsEqualTheVocabulary();
    void untranslatedAxisTitlesOfTheComparisonStayEnglish();

private:
    FourPs& panel() { return *m_panel; }

    MarkingTranslator m_translator;
    std::unique_ptr<Body> m_body;
    FourPs* m_panel = nullptr;
};

void tst_ScreenTexts::initTestCase()
{
    QVERIFY(QCoreApplication::installTranslator(&m_translator));
    m_body = std::make_unique<Body>();
    m_panel = m_body->findChild<FourPs*>();
    QVERIFY(m_panel);
    // The translator also marks the numbers in the fields. The marks are removed, because the panel
    // could not parse the numbers with marks.
    const auto fields = m_body->findChildren<QLineEdit*>();
    for (QLineEdit* field : fields) {
        field->setText(field->text().remove(u'«').remove(u'»'));
    }
}

void tst_ScreenTexts::init()
{
    resetData(panel());
    chooseWithoutSignals(panel().ui.TypeNonEquiv);
    chooseWithoutSignals(panel().ui.TypeTMKisLS);
    useReferences(panel(), {0, 1});
    panel().ui.CalcRes->clear();
    panel().ui.LCFRes->clear();
}

void tst_ScreenTexts::cleanupTestCase()
{
    resetData(panel());
    m_body.reset();
}

void tst_ScreenTexts::labelsAndButtonsAreTranslatable()
{
    // These row numbers belong to frames that are never shown; they do not go through tr().
    QSet<QString> neverShown;
    for (int n = 1; n <= rowCount; ++n) {
        neverShown.insert(QStringLiteral("%1:  ").arg(n));
    }
    int requested = 0;
    const QWidgetList widgets = ownWidgets();
    for (const QWidget* widget : widgets) {
        if (!qobject_cast<const QLabel*>(widget) && !qobject_cast<const QAbstractButton*>(widget)) {
            continue;
        }
        const QString text = widget->property("text").toString();
        QVERIFY2(text.isEmpty() || isMarked(text) || neverShown.contains(text), qPrintable(text));
        requested += isMarked(text) ? 1 : 0;
    }
    QVERIFY(requested > 200);
    const auto shows = [this](const char* name, const char* source) {
        const auto* widget = m_body->findChild<QWidget*>(QLatin1String(name));
        return widget &&
               widget->property("text") == MarkingTranslator::marked(QLatin1String(source));
    };
    QVERIFY(shows("radioButton", "multi points"));
    QVERIFY(shows("MapWGrid", "with Grid"));
    QVERIFY(shows("HgAmount", "Amouont"));
}

void tst_ScreenTexts::windowTitlesAreTranslatable()
{
    int requested = 0;
    const QWidgetList widgets = ownWidgets();
    for (const QWidget* widget : widgets) {
        const QString title = widget->windowTitle();
        if (widget == m_body.get()) {
            QCOMPARE(title, QString("aelk"));
        } else if (widget->isWindow() || !title.isEmpty()) {
            QVERIFY2(isMarked(title), qPrintable(widget->objectName() + ": " + title));
            ++requested;
        }
    }
    QVERIFY(requested > 30);
    QCOMPARE(panel().Disps->windowTitle(), MarkingTranslator::marked("Frame"));
    QCOMPARE(panel().MapDisp->windowTitle(), MarkingTranslator::marked("Result Map"));
    QCOMPARE(panel().DMapDisp->windowTitle(), MarkingTranslator::marked("Data Map"));
    QCOMPARE(panel().MapDisp->pop->windowTitle(), MarkingTranslator::marked("Frame"));
    QCOMPARE(panel().Disps->frame(Displays::DMuts)->pop->windowTitle(),
             MarkingTranslator::marked("Frame"));
}

void tst_ScreenTexts::fieldsContainNumbersOrTranslatableTexts()
{
    const Body fresh;
    const QWidgetList widgets = ownWidgets();
    for (const QWidget* widget : widgets) {
        if (const auto* field = qobject_cast<const QLineEdit*>(widget)) {
            QVERIFY2(field->text().isEmpty() || isNumber(field->text()) || isMarked(field->text()),
                     qPrintable(field->objectName() + ": " + field->text()));
            QCOMPARE(field->placeholderText(), QString());
        }
        QCOMPARE(widget->toolTip(), QString());
        QCOMPARE(widget->whatsThis(), QString());
    }
    QCOMPARE(fresh.findChild<QLineEdit*>("EdgeE")->text(), MarkingTranslator::marked("8350"));
}

void tst_ScreenTexts::axisTitlesAreTranslatable_data()
{
    QTest::addColumn<Displays::DispId>("plot");
    QTest::addColumn<QString>("x");
    QTest::addColumn<QString>("y");
    QTest::newRow("reference 1") << Displays::DRef1 << "Eng.[eV]"
                                 << "mut";
    QTest::newRow("reference 4") << Displays::DRef4 << "Eng.[eV]"
                                 << "mut";
    QTest::newRow("target") << Displays::DTarget << "Eng.[eV]"
                            << "mut";
    QTest::newRow("all spectra") << Displays::DMuts << "Eng.[eV]"
                                 << "mut";
    QTest::newRow("comparison") << Displays::DLCFvs4PS << "LCF"
                                << "MPs";
    QTest::newRow("valence histogram") << Displays::DHistA << "Valence"
                                       << "Num.";
    QTest::newRow("amount histogram") << Displays::DHistDMut << "Thick."
                                      << "Num.";
    QTest::newRow("amount against valence") << Displays::DDMutVsA << "Valence"
                                            << "Thick.";
    QTest::newRow("M2/M3") << Displays::DM2M3 << "M2"
                           << "M3";
}

void tst_ScreenTexts::axisTitlesAreTranslatable()
{
    QFETCH(Displays::DispId, plot);
    QFETCH(QString, x);
    QFETCH(QString, y);
    DispABase* frame = panel().Disps->frame(plot);
    drawnTexts(frame);
    QCOMPARE(frame->xTitle, MarkingTranslator::marked(x));
    QCOMPARE(frame->yTitle, MarkingTranslator::marked(y));
}

void tst_ScreenTexts::drawnTextsAreNumbersOrTranslatable_data()
{
    QTest::addColumn<Displays::DispId>("plot");
    QTest::addColumn<QStringList>("words");
    QTest::newRow("reference") << Displays::DRef1
                               << QStringList{"«Edge Jump : 2»", "«Eng.[eV]»", "«mut»"};
    QTest::newRow("target") << Displays::DTarget
                            << QStringList{"«Edge Jump : 2»", "«Eng.[eV]»", "«mut»"};
    QTest::newRow("all spectra") << Displays::DMuts
                                 << QStringList{"«Eng.[eV]»", "«first.dat»", "«mut»",
                                                "«second.dat»"};
    QTest::newRow("comparison") << Displays::DLCFvs4PS << QStringList{"«LCF»", "«MPs»"};
    QTest::newRow("valence histogram") << Displays::DHistA << QStringList{"«Num.»", "«Valence»"};
    QTest::newRow("amount histogram") << Displays::DHistDMut << QStringList{"«Num.»", "«Thick.»"};
    QTest::newRow("amount against valence")
        << Displays::DDMutVsA << QStringList{"«Thick.»", "«Valence»"};
    QTest::newRow("M2/M3") << Displays::DM2M3 << QStringList{"«M2»", "«M3»"};
}

void tst_ScreenTexts::drawnTextsAreNumbersOrTranslatable()
{
    QFETCH(Displays::DispId, plot);
    QFETCH(QStringList, words);
    const QTemporaryDir folder;
    QVERIFY(loadEdge(*panel().XafsFiles.at(0), folder, "first.dat"));
    QVERIFY(loadEdge(*panel().XafsFiles.at(1), folder, "second.dat"));
    QVERIFY(loadEdge(*panel().ui.TargetFile, folder, "target.dat"));
    prepareThreePointMaps(panel());
    for (AMutE* spectrum : {static_cast<AMutE*>(panel().XafsFiles.at(0)),
                            static_cast<AMutE*>(panel().XafsFiles.at(1)),
                            static_cast<AMutE*>(panel().ui.TargetFile)}) {
        setLines(*spectrum);
    }
    panel().calcMap();
    panel().LCFvs4PS.append({0.5, 2.5, 0.5, 2.5, 0});
    QCOMPARE(textsIn(panel().Disps->frame(plot)).join(u' '), words.join(u' '));
}

void tst_ScreenTexts::errorMessagesAreTranslatable_data()
{
    QTest::addColumn<Action>("prepare");
    QTest::addColumn<Action>("run");
    QTest::addColumn<QStringList>("sources"); // English texts with numbers in place of "%1"
    const Action target = &FourPs::calcTarget;
    const Action map = &FourPs::calcMap;
    const Action fit = &FourPs::lcf;
    const Action write = &FourPs::write;
    const auto invalidate = [](int row) {
        return [row](FourPs& panel) { panel.XafsFiles.at(row)->valid = false; };
    };
    const auto reduceTo = [](const QList<int>& rows) {
        return [rows](FourPs& panel) { useRows(panel, rows); };
    };
    const Action noVPoint = [](FourPs& panel) { panel.EPoints.at(2)->VPointCB->setChecked(false); };
    const Action nonEquivalent = [](FourPs& panel) { chooseWithoutSignals(panel.ui.TypeNonEquiv); };
    const QString oneValid =
        QStringLiteral("Number of valied Ref Files is 1, which is less than 2.");

    QTest::newRow("target without V point")
        << noVPoint << target << QStringList{"V Point is not selected."};
    QTest::newRow("target without first reference")
        << Action(invalidate(0)) << target
        << QStringList{oneValid, "The 1st Ref File is not valid."};
    QTest::newRow("target without second reference")
        << Action(invalidate(1)) << target
        << QStringList{oneValid, "The 2nd Ref File is not valid."};
    QTest::newRow("target without its spectrum")
        << Action(invalidate(4)) << target << QStringList{"Target File1 is not valid."};
    QTest::newRow("target of two rows") << Action(reduceTo({1, 2})) << target
                                        << QStringList{"Number of selected data sets 2 is not 4."};
    QTest::newRow("target with an invalid third reference")
        << Action([nonEquivalent](FourPs& panel) {
               nonEquivalent(panel);
               useRows(panel, {0, 1, 2, 3});
               makeReferenceValid(panel, 3);
               useReferences(panel, {0, 1, 2, 3});
           })
        << target << QStringList{"Ref File 2 is not valid."};

    QTest::newRow("map without V point")
        << noVPoint << map << QStringList{"V Point is not selected"};
    QTest::newRow("map without second reference")
        << Action(invalidate(1)) << map << QStringList{oneValid, "Ref File 1 is not valid."};
    QTest::newRow("map of two rows") << Action(reduceTo({1, 2})) << map
                                     << QStringList{"Number of selected data sets 2 is not 4."};
    QTest::newRow("map of too few rows for the non-equivalent method")
        << nonEquivalent << map << QStringList{"Number of selected data sets 3 is less than 4."};

    QTest::newRow("fit without range")
        << Action(clearMessages) << fit
        << QStringList{"Energy Range is not selected, which should by selected by CB of TR."};
    QTest::newRow("fit with one reference") << Action([](FourPs& panel) {
        markFitRange(panel);
        useReferences(panel, {0});
    }) << fit << QStringList{"Number of Valid Reference files is 1, which is less than 2"};

    QTest::newRow("file that cannot be written") << Action([](FourPs& panel) {
        panel.ui.SaveFSelect->FileName->setText("no-such-folder/map.dat");
    }) << write << QStringList{"Can't open the file [no-such-folder/map.dat]"};
}

void tst_ScreenTexts::errorMessagesAreTranslatable()
{
    QFETCH(Action, prepare);
    QFETCH(Action, run);
    QFETCH(QStringList, sources);
    prepareThreePointMaps(panel());
    prepare(panel());
    clearMessages(panel());
    run(panel());
    QStringList expected;
    for (const QString& source : std::as_const(sources)) {
        expected << MarkingTranslator::marked(source);
    }
    QCOMPARE(messages(panel()), expected);
}

void tst_ScreenTexts::resultTextsAreTranslatable_data()
{
    QTest::addColumn<Action>("prepare");
    QTest::addColumn<QString>("pattern"); // matches the text of the result's line edit
    QTest::newRow("three points") << Action(prepareThreePoints) << "«3ps: a = 0.5, Valence = 2.5»";
    QTest::newRow("exact four points") << Action([](FourPs& panel) {
        prepareFourPoints(panel);
        panel.ui.TypeTMKisExact->setChecked(true);
    }) << "«a = 0.5, Valence = 2.5, t/ts = 1»";
    QTest::newRow("least squares")
        << Action(prepareFourPoints) << "«4ps2: a = 0.5, Valence = 2.5, t/ts = 1»";
    QTest::newRow("non-equivalent method") << Action([](FourPs& panel) {
        prepareFourPoints(panel);
        chooseWithoutSignals(panel.ui.TypeNonEquiv);
    }) << "«Result of NEQ :: »[^«»]*«, Valence = [^«»]*, t = [^«»]*»";
}

void tst_ScreenTexts::resultTextsAreTranslatable()
{
    QFETCH(Action, prepare);
    QFETCH(QString, pattern);
    const QRegularExpression whole(QRegularExpression::anchoredPattern(pattern));
    prepare(panel());
    panel().calcTarget();
    const QString result = panel().ui.CalcRes->text();
    QVERIFY2(whole.match(result).hasMatch(), qPrintable(result));
    for (const QString& line : messages(panel())) {
        QVERIFY2(line == result.simplified(), qPrintable(line));
    }

    const QRegularExpression fit(QRegularExpression::anchoredPattern(
        QStringLiteral("«Result of LCF :: »[^«»]*«, Valence = [^«»]*, Base = [^«»]*»")));
    markFitRange(panel());
    panel().lcf();
    QVERIFY2(fit.match(panel().ui.LCFRes->text()).hasMatch(),
             qPrintable(panel().ui.LCFRes->text()));
}

// Must be the last test that uses this translator: it checks the texts requested by all
// tests above.
void tst_ScreenTexts::requestedTextsEqualTheVocabulary()
{
    QSet<SourceText> requested = m_translator.requested();
    requested.removeIf([](const SourceText& text) {
        // Qt's own classes request translations too, for example in dialogs and fields.
        return text.first.startsWith(u'Q');
    });
    QCOMPARE(surplus(requested, requestedTexts()), QStringList());
    QCOMPARE(surplus(requestedTexts(), requested), QStringList());
}

void tst_ScreenTexts::untranslatedAxisTitlesOfTheComparisonStayEnglish()
{
    QCoreApplication::removeTranslator(&m_translator);
    QTranslator translator;
    app::installLanguage(app::Language::Japanese, translator);
    panel().LCFvs4PS.append({0.5, 2.5, 0.5, 2.5, 0});
    QCOMPARE(textsIn(panel().Disps->frame(Displays::DLCFvs4PS)), (QStringList{"LCF", "MPs"}));
    // The axis title of this histogram, in contrast, has a translation in the table.
    drawnTexts(panel().Disps->frame(Displays::DHistA));
    QCOMPARE(panel().Disps->frame(Displays::DHistA)->xTitle, QStringLiteral("価数"));
}

QTEST_MAIN(tst_ScreenTexts)
#include "tst_ScreenTexts.moc"
