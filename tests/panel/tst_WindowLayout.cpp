// What a user reads on every window as it opens, in either language: no label or
// button is cut, numbers are whole, and what belongs together is in line.

#include "app/Body.h"
#include "app/Language.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "panel/FourPs.h"
#include "rows/ARefFile.h"
#include "support/SpectrumText.h"
#include "support/TestFiles.h"
#include "support/TextRecorder.h"

#include <QAbstractButton>
#include <QFontDatabase>
#include <QLabel>
#include <QTranslator>
#include <QtTest>

#include <memory>

namespace
{

/// The least room in which the words on @p widget can be read whole. A maximum
/// that the design gives a button goes before the padding that its style would
/// like to have.
QSize roomFor(const QWidget* widget)
{
    const QString text = widget->property("text").toString();
    // Nothing to read still has the height of a line.
    const QSize words = text.isEmpty() ? QSize() : widget->fontMetrics().size(0, text);
    // This button gives what it does not need to the read-outs beside it.
    const QSize most = widget->objectName() == QStringLiteral("PopDockB")
                           ? QSize(0, widget->maximumHeight())
                           : widget->maximumSize();
    return widget->sizeHint().boundedTo(most).expandedTo(words);
}

/// Labels and buttons in sight on @p window that have not the room they need, a
/// line for each.
QString cutOnes(const QWidget* window)
{
    QStringList cut;
    const QList<QWidget*> children = window->findChildren<QWidget*>();
    for (const QWidget* child : children) {
        const bool reads =
            qobject_cast<const QLabel*>(child) || qobject_cast<const QAbstractButton*>(child);
        const QSize room = reads && child->isVisibleTo(window) ? roomFor(child) : QSize(0, 0);
        if (room.width() > child->width() || room.height() > child->height()) {
            cut << QStringLiteral("%1 \"%2\" needs %3 x %4 and has %5 x %6")
                       .arg(child->objectName(), child->property("text").toString())
                       .arg(room.width())
                       .arg(room.height())
                       .arg(child->width())
                       .arg(child->height());
        }
    }
    return cut.join(u'\n');
}

QString cutOnesWhenShown(QWidget* window)
{
    window->show();
    if (!QTest::qWaitForWindowExposed(window)) {
        return QStringLiteral("not shown");
    }
    QCoreApplication::processEvents();
    const QString cut = cutOnes(window);
    window->hide();
    return cut;
}

/// Cut ones on a drawing that is in a window of its own for the time.
template <class Frame>
QString cutOnesPoppedOut(Frame* frame)
{
    frame->popDock();
    QString cut = QStringLiteral("not shown");
    if (QTest::qWaitForWindowExposed(frame->pop)) {
        QCoreApplication::processEvents();
        cut = cutOnes(frame->pop);
    }
    if (frame->pop->size() != QSize(800, 600)) {
        cut += QStringLiteral("\nits window has another size");
    }
    frame->popDock();
    return cut;
}

/// Whether @p edit shows @p number whole: no digit outside, no ellipsis.
bool showsWhole(QLineEdit* edit, const QString& number)
{
    edit->setText(number);
    // What the toolkit leaves free beside a text, and the cursor.
    const int room = edit->contentsRect().width() - 2 * 2 - 1;
    return edit->toolTip().isEmpty() &&
           QFontMetricsF(edit->font()).horizontalAdvance(number) <= room;
}

/// The plots that have a place in the graph window.
QList<DispABase*> plotsIn(const Displays* graphs)
{
    QList<DispABase*> plots;
    for (DispABase* plot : graphs->disps) {
        if (plot->parentWidget() == graphs) {
            plots.append(plot);
        }
    }
    return plots;
}

/// The texts on the surface of @p plot, as they reach a painter.
QList<tests::DrawnText> textsOn(DispABase* plot)
{
    tests::TextRecorder recorder;
    QStylePainter p(&recorder, plot->DispA);
    Q_EMIT plot->DispA->draw(&p);
    p.end();
    return recorder.texts();
}

/// Texts that begin at the left of @p from or end at the right of @p to, pixels.
QStringList outside(const QList<tests::DrawnText>& texts, double from, double to)
{
    constexpr double rounding = 1e-6;
    QStringList found;
    for (const tests::DrawnText& text : texts) {
        if (text.at.x() < from - rounding || text.at.x() + text.width > to + rounding) {
            found << QStringLiteral("\"%1\" from %2 to %3, outside %4 to %5")
                         .arg(text.text)
                         .arg(text.at.x())
                         .arg(text.at.x() + text.width)
                         .arg(from)
                         .arg(to);
        }
    }
    return found;
}

/// The texts of a spectrum's plot that leave their boxes: both labels of the y
/// axis the left margin, both of the x axis two margins' width below the plot,
/// and the edge jump three margins' width at the right of it.
QStringList labelsOutsideTheirBoxes(DispABase* plot)
{
    const ChCoord& cc = plot->DispA->cc;
    const int margin = static_cast<int>(0.1 * plot->DispA->width());
    const QList<tests::DrawnText> texts = textsOn(plot);
    if (texts.size() < 7) {
        return {QStringLiteral("too few texts")};
    }
    // The frame's four labels, the edge jump, and then both titles. A text of
    // letters from two fonts comes in parts.
    QStringList found = outside(texts.mid(0, 2), 0.0, 0.95 * margin) +
                        outside(texts.mid(2, 1), cc.areaX0, cc.areaX0 + 2 * margin) +
                        outside(texts.mid(3, 1), cc.areaX1 - 2 * margin, cc.areaX1);
    for (const tests::DrawnText& text : texts.mid(4)) {
        const bool titleOfX = text.at.y() > cc.areaY0;
        const bool titleOfY = text.at.x() < cc.areaX0;
        if (!titleOfY) {
            found += outside({text}, titleOfX ? cc.areaX0 : cc.areaX1 - 3 * margin, cc.areaX1);
        }
    }
    return found;
}

/// The program in one language, made anew.
class Speaking
{
public:
    explicit Speaking(app::Language language)
    {
        app::speak(language, m_translator);
        m_body = std::make_unique<Body>();
        panel = m_body->findChild<FourPs*>();
    }
    ~Speaking()
    {
        for (QWidget* window :
             std::initializer_list<QWidget*>{panel->Disps, panel->MapDisp, panel->DMapDisp}) {
            window->hide();
        }
    }
    Speaking(const Speaking&) = delete;
    Speaking& operator=(const Speaking&) = delete;

    Body* body() const { return m_body.get(); }

    FourPs* panel = nullptr;

private:
    QTranslator m_translator; ///< before the windows, which it has to outlive
    std::unique_ptr<Body> m_body;
};

void inBothLanguages()
{
    QTest::addColumn<app::Language>("language");
    QTest::newRow("English") << app::Language::English;
    QTest::newRow("Japanese") << app::Language::Japanese;
}

} // namespace

class tst_WindowLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void japaneseIsSpokenAndEnglishIsNot();
    void mainWindowCutsNothing_data() { inBothLanguages(); }
    void mainWindowCutsNothing();
    void panelOpensAtLeastAsWideAsItsDesign_data() { inBothLanguages(); }
    void panelOpensAtLeastAsWideAsItsDesign();
    void moreConditionsCutNothing_data() { inBothLanguages(); }
    void moreConditionsCutNothing();
    void graphWindowShowsWholeNumbersInAllReadOuts_data() { inBothLanguages(); }
    void graphWindowShowsWholeNumbersInAllReadOuts();
    void graphWindowHasEqualColumns_data() { inBothLanguages(); }
    void graphWindowHasEqualColumns();
    void plotLabelsStayInTheirBoxes_data() { inBothLanguages(); }
    void plotLabelsStayInTheirBoxes();
    void poppedOutWindowsCarryTheNamesOfTheirPlots_data() { inBothLanguages(); }
    void poppedOutWindowsCarryTheNamesOfTheirPlots();
    void graphWindowOpensAtItsSizeAndCutsNothing_data() { inBothLanguages(); }
    void graphWindowOpensAtItsSizeAndCutsNothing();
    void mapWindowsOpenAtTheirSizeAndCutNothing_data() { inBothLanguages(); }
    void mapWindowsOpenAtTheirSizeAndCutNothing();
    void poppedOutPlotsCutNothing_data() { inBothLanguages(); }
    void poppedOutPlotsCutNothing();
    void poppedOutMapsCutNothing_data() { inBothLanguages(); }
    void poppedOutMapsCutNothing();
    void graphWindowCanBeMadeHalfAsLarge_data() { inBothLanguages(); }
    void graphWindowCanBeMadeHalfAsLarge();
};

void tst_WindowLayout::initTestCase()
{
    // Without one all Japanese characters are boxes of some other width.
    QVERIFY2(!QFontDatabase::families(QFontDatabase::Japanese).isEmpty(),
             "no font with Japanese characters is installed, so nothing can be measured");
}

void tst_WindowLayout::japaneseIsSpokenAndEnglishIsNot()
{
    const auto words = [](app::Language language) {
        return Speaking(language).panel->ui.label_10->text();
    };
    QCOMPARE(words(app::Language::English), QString("Valence"));
    QCOMPARE(words(app::Language::Japanese), QStringLiteral("価数"));
    QCOMPARE(words(app::Language::English), QString("Valence"));
}

void tst_WindowLayout::mainWindowCutsNothing()
{
    QFETCH(app::Language, language);
    const Speaking program(language);
    QCOMPARE(cutOnesWhenShown(program.body()), QString());
}

// Japanese words are short: by them alone the window would be so narrow that the
// absorptions in the rows show four digits.
void tst_WindowLayout::panelOpensAtLeastAsWideAsItsDesign()
{
    QFETCH(app::Language, language);
    const Speaking program(language);
    program.body()->show();
    QVERIFY(QTest::qWaitForWindowExposed(program.body()));
    QVERIFY(program.panel->width() >= 1016);
}

void tst_WindowLayout::moreConditionsCutNothing()
{
    QFETCH(app::Language, language);
    const Speaking program(language);
    program.panel->ui.DispCondsB->click();
    QVERIFY(program.panel->ui.CConds->isVisibleTo(program.body()));
    QCOMPARE(cutOnesWhenShown(program.body()), QString());
}

void tst_WindowLayout::graphWindowOpensAtItsSizeAndCutsNothing()
{
    QFETCH(app::Language, language);
    const Speaking program(language);
    QCOMPARE(cutOnesWhenShown(program.panel->Disps), QString());
    QCOMPARE(program.panel->Disps->size(), QSize(1100, 853));
}

void tst_WindowLayout::graphWindowShowsWholeNumbersInAllReadOuts()
{
    QFETCH(app::Language, language);
    const Speaking program(language);
    program.panel->Disps->show();
    QVERIFY(QTest::qWaitForWindowExposed(program.panel->Disps));
    const QList<DispABase*> plots = plotsIn(program.panel->Disps);
    QCOMPARE(plots.size(), 10);
    for (const DispABase* plot : plots) {
        for (const char* number : {"316.038", "8550.12", "-0.0123", "8888.88"}) {
            QVERIFY2(showsWhole(plot->XPos, number), qPrintable(plot->Title->text()));
            QVERIFY2(showsWhole(plot->YPos, number), qPrintable(plot->Title->text()));
        }
    }
}

void tst_WindowLayout::graphWindowHasEqualColumns()
{
    QFETCH(app::Language, language);
    const Speaking program(language);
    Displays* graphs = program.panel->Disps;
    graphs->show();
    QVERIFY(QTest::qWaitForWindowExposed(graphs));
    const int column = graphs->frame(Displays::DRef1)->width();
    const int step = graphs->frame(Displays::DRef2)->x() - graphs->frame(Displays::DRef1)->x();
    QCOMPARE(step, column + 2);
    for (const DispABase* plot : plotsIn(graphs)) {
        const bool wide = plot == graphs->frame(Displays::DMuts);
        QCOMPARE(plot->width(), wide ? 2 * column + 2 : column);
        QCOMPARE((plot->x() - graphs->frame(Displays::DRef1)->x()) % step, 0);
    }
}

// At several widths, since fonts come in whole pixels: some sizes are rounded up.
void tst_WindowLayout::plotLabelsStayInTheirBoxes()
{
    QFETCH(app::Language, language);
    const QTemporaryDir dir;
    const Speaking program(language);
    Displays* graphs = program.panel->Disps;
    program.panel->XafsFiles.at(0)->AFileSelect::newFile(
        tests::writeFile(dir, "a.dat", tests::spectrumText("0.9", "1.1", "1", "0.974817")));
    DispABase* plot = graphs->frame(Displays::DRef1);
    graphs->show();
    QVERIFY(QTest::qWaitForWindowExposed(graphs));
    for (const int width : {1100, 850, 901, 955, 1013, 1061, 1366}) {
        graphs->resize(width, 853);
        QCoreApplication::processEvents();
        for (const auto& [low, high] : {std::pair(-198.8, 2186.4), {0.4684, 2.2546}}) {
            plot->DispA->hasScale = true;
            plot->DispA->cc.setReal(7955.5, low, 8945.5, high);
            QCOMPARE(labelsOutsideTheirBoxes(plot), QStringList());
        }
    }
}

void tst_WindowLayout::poppedOutWindowsCarryTheNamesOfTheirPlots()
{
    QFETCH(app::Language, language);
    const Speaking program(language);
    for (DispABase* plot : std::as_const(program.panel->Disps->disps)) {
        QTest::mouseClick(plot->PopDockB, Qt::LeftButton);
        QVERIFY(plot->pop->isVisible());
        QCOMPARE(plot->pop->windowTitle(), plot->Title->text());
        plot->popDock();
    }
    for (DispMBase* window : {program.panel->MapDisp, program.panel->DMapDisp}) {
        QTest::mouseClick(window->PopDockB, Qt::LeftButton);
        QVERIFY(window->pop->isVisible());
        QCOMPARE(window->pop->windowTitle(), window->Title->text());
        window->popDock();
    }
    const bool english = language == app::Language::English;
    QCOMPARE(program.panel->Disps->frame(Displays::DTarget)->pop->windowTitle(),
             english ? QString("Target") : QStringLiteral("対象"));
}

void tst_WindowLayout::mapWindowsOpenAtTheirSizeAndCutNothing()
{
    QFETCH(app::Language, language);
    const Speaking program(language);
    for (DispMBase* window : {program.panel->MapDisp, program.panel->DMapDisp}) {
        QCOMPARE(cutOnesWhenShown(window), QString());
        QCOMPARE(window->size(), QSize(578, 528));
    }
}

void tst_WindowLayout::poppedOutPlotsCutNothing()
{
    QFETCH(app::Language, language);
    const Speaking program(language);
    for (DispABase* plot : std::as_const(program.panel->Disps->disps)) {
        QCOMPARE(cutOnesPoppedOut(plot), QString());
    }
}

void tst_WindowLayout::poppedOutMapsCutNothing()
{
    QFETCH(app::Language, language);
    const Speaking program(language);
    for (DispMBase* window : {program.panel->MapDisp, program.panel->DMapDisp}) {
        QCOMPARE(cutOnesPoppedOut(window), QString());
    }
}

void tst_WindowLayout::graphWindowCanBeMadeHalfAsLarge()
{
    QFETCH(app::Language, language);
    const Speaking program(language);
    Displays* graphs = program.panel->Disps;
    graphs->show();
    graphs->resize(425, 426);
    QCoreApplication::processEvents();
    QCOMPARE(graphs->size(), QSize(425, 426));
}

QTEST_MAIN(tst_WindowLayout)
#include "tst_WindowLayout.moc"
