// Tests of the layout of the windows, most of them in both languages: labels and buttons are
// not cut off, numbers are complete, and related widgets are aligned.

#include "app/Body.h"
#include "app/Language.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "panel/FourPs.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "support/SpectrumText.h"
#include "support/TestFiles.h"
#include "support/TextRecorder.h"

#include <QAbstractButton>
#include <QFontDatabase>
#include <QLabel>
#include <QStyleFactory>
#include <QTranslator>
#include <QtTest>

#include <memory>

namespace
{

/// The smallest size in which the text of @p widget is readable. A maximum size that the
/// design sets has priority over the padding that the style adds.
QSize sizeNeededBy(const QWidget* widget)
{
    const QString text = widget->property("text").toString();
    // QFontMetrics returns the height of a line of text even for an empty text.
    const QSize words = text.isEmpty() ? QSize() : widget->fontMetrics().size(0, text);
    // The pop-out button can be narrower than its size hint: the read-out fields next to it
    // get all the width that the button's text does not need.
    const QSize most = widget->objectName() == QStringLiteral("PopDockB")
                           ? QSize(0, widget->maximumHeight())
                           : widget->maximumSize();
    return widget->sizeHint().boundedTo(most).expandedTo(words);
}

/// The visible labels and buttons of @p window that are smaller than sizeNeededBy(),
/// one per line.
QString cutOffTexts(const QWidget* window)
{
    QStringList cut;
    const QList<QWidget*> children = window->findChildren<QWidget*>();
    for (const QWidget* child : children) {
        const bool hasText =
            qobject_cast<const QLabel*>(child) || qobject_cast<const QAbstractButton*>(child);
        const QSize needed =
            hasText && child->isVisibleTo(window) ? sizeNeededBy(child) : QSize(0, 0);
        if (needed.width() > child->width() || needed.height() > child->height()) {
            cut << QStringLiteral("%1 \"%2\" needs %3 x %4 and has %5 x %6")
                       .arg(child->objectName(), child->property("text").toString())
                       .arg(needed.width())
                       .arg(needed.height())
                       .arg(child->width())
                       .arg(child->height());
        }
    }
    return cut.join(u'\n');
}

/// The visible fields and texts whose height is less than a line of text. Widths are not
/// checked, because a large font is cut off where the design limits a width.
QString tooLowWidgets(const QWidget* window)
{
    QStringList low;
    for (const QWidget* child : window->findChildren<QWidget*>()) {
        const bool edit = qobject_cast<const QLineEdit*>(child);
        const bool hasText = edit || !child->property("text").toString().isEmpty();
        if (hasText && child->isVisibleTo(window) &&
            child->height() < child->fontMetrics().height()) {
            low << child->objectName();
        }
    }
    return low.join(u'\n');
}

QString cutOffTextsWhenShown(QWidget* window)
{
    window->show();
    if (!QTest::qWaitForWindowExposed(window)) {
        return QStringLiteral("not shown");
    }
    QCoreApplication::processEvents();
    const QString cut = cutOffTexts(window);
    window->hide();
    return cut;
}

/// The faults of @p frame while it is popped out: cut-off texts, a window that is not shown, and
/// a window of the wrong size.
template <class Frame>
QString cutOffTextsPoppedOut(Frame* frame)
{
    frame->popDock();
    QString cut = QStringLiteral("not shown");
    if (QTest::qWaitForWindowExposed(frame->pop)) {
        QCoreApplication::processEvents();
        cut = cutOffTexts(frame->pop);
    }
    if (frame->pop->size() != QSize(800, 600)) {
        cut += QStringLiteral("\nits window has the wrong size");
    }
    frame->popDock();
    return cut;
}

/// The pairs of visible widgets on @p window that overlap, one pair per line. Compares only
/// widgets with the same parent, and only if this parent has a layout.
QString overlaps(const QWidget* window)
{
    QStringList pairs;
    const auto name = [](const QWidget* w) {
        return w->objectName() + u' ' + w->property("text").toString();
    };
    for (const QWidget* parent : window->findChildren<QWidget*>()) {
        const auto children = parent->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        for (qsizetype i = 0; i < children.size() && parent->layout(); ++i) {
            for (qsizetype j = 0; j < i; ++j) {
                if (children.at(i)->isVisibleTo(window) && children.at(j)->isVisibleTo(window) &&
                    children.at(i)->geometry().intersects(children.at(j)->geometry())) {
                    pairs << name(children.at(i)) + QStringLiteral(" and ") + name(children.at(j));
                }
            }
        }
    }
    return pairs.join(u'\n');
}

/// The left edge (in window coordinates) and the width of @p widget.
std::pair<int, int> columnOf(const QWidget* widget)
{
    return {widget->mapTo(widget->window(), QPoint()).x(), widget->width()};
}

/// Returns the names of misaligned fields. The fields below the energy rows, which apply to all
/// rows, must be aligned with the corresponding fields of each energy row.
QStringList misaligned(const FourPs* panel)
{
    QStringList found;
    const auto compare = [&](const QWidget* below, const QWidget* above) {
        if (columnOf(below) != columnOf(above)) {
            found << below->objectName();
        }
    };
    for (const AEPoint* row : panel->EPoints) {
        compare(panel->MultiEnergys, row->Energy);
        compare(panel->MultiFiles, row->FileSelect);
        compare(panel->MultiFiles->SelectB, row->FileSelect->SelectB);
        compare(panel->MultiFiles->FileName, row->FileSelect->FileName);
        compare(panel->MultiFiles->ClearB, row->FileSelect->ClearB);
    }
    return found;
}

/// The path fields of the maps, the references and the target.
QList<QWidget*> pathFields(const FourPs* panel)
{
    QList<QWidget*> fields{panel->MultiFiles->FileName};
    for (const AEPoint* row : panel->EPoints) {
        fields << row->FileSelect->FileName;
    }
    for (const AXafsFileSelect* row : panel->XafsFiles) {
        fields << row->FileName;
    }
    return fields;
}

bool resizeTo(QWidget* window, int width, int height)
{
    window->resize(width, height);
    QCoreApplication::processEvents();
    return window->size() == QSize(width, height);
}

/// The number of pixel rows in which @p edit paints its text at this @p height.
int paintedRows(QLineEdit* edit, int height)
{
    edit->resize(200, height);
    const QImage picture = edit->grab(edit->rect().adjusted(4, 1, -4, -1)).toImage();
    int rows = 0;
    for (int y = 0; y < picture.height(); ++y) {
        bool dark = false;
        for (int x = 0; x < picture.width(); ++x) {
            dark = dark || qGray(picture.pixel(x, y)) < 128;
        }
        rows += dark ? 1 : 0;
    }
    return rows;
}

/// Sets another style and font size for the application. The destructor restores the earlier ones.
class ChangedDesktop
{
public:
    ChangedDesktop(const QString& style, int points)
        : m_font(QApplication::font())
        , m_style(QApplication::style()->name())
    {
        QFont font(m_font);
        font.setPointSize(points);
        QApplication::setFont(font);
        QApplication::setStyle(style);
    }
    ~ChangedDesktop()
    {
        QApplication::setFont(m_font);
        QApplication::setStyle(m_style);
    }
    Q_DISABLE_COPY_MOVE(ChangedDesktop)

private:
    QFont m_font;
    QString m_style;
};

/// Sets the text of @p edit to @p number. Returns whether the field shows it completely,
/// without an ellipsis.
bool showsCompletely(QLineEdit* edit, const QString& number)
{
    edit->setText(number);
    // Qt reserves 2 pixels on each side of the text and 1 pixel for the cursor.
    const int free = edit->contentsRect().width() - 2 * 2 - 1;
    return edit->toolTip().isEmpty() &&
           QFontMetricsF(edit->font()).horizontalAdvance(number) <= free;
}

/// The plots that are docked in the graph window.
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

/// The texts that @p plot paints.
QList<tests::DrawnText> textsOn(DispABase* plot)
{
    tests::TextRecorder recorder;
    QStylePainter p(&recorder, plot->DispA);
    Q_EMIT plot->DispA->draw(&p);
    p.end();
    return recorder.texts();
}

/// Describes the texts that begin left of x = @p from or end right of x = @p to.
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

/// Describes the texts of a spectrum plot that are outside their rectangles. The margin is a
/// tenth of the plot's width. Both labels of the y axis must be in the left 95 % of the left
/// margin. Each label of the x axis must be within two margins of its end of the axis, the edge
/// jump within three margins of the right end, and the title of the x axis between the ends.
QStringList labelsOutsideTheirRectangles(DispABase* plot)
{
    const ChCoord& cc = plot->DispA->cc;
    const int margin = static_cast<int>(0.1 * plot->DispA->width());
    const QList<tests::DrawnText> texts = textsOn(plot);
    if (texts.size() < 7) {
        return {QStringLiteral("too few texts")};
    }
    // Texts are drawn in this order: two y labels, two x labels, the edge jump, both titles. A
    // text that needs two fonts is drawn in several parts.
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

/// A new main window in the given language.
class Program
{
public:
    explicit Program(app::Language language)
    {
        app::installLanguage(language, m_translator);
        m_body = std::make_unique<Body>();
        panel = m_body->findChild<FourPs*>();
    }
    ~Program()
    {
        for (QWidget* window :
             std::initializer_list<QWidget*>{panel->Disps, panel->MapDisp, panel->DMapDisp}) {
            window->hide();
        }
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    Body* body() const { return m_body.get(); }

    /// Shows the main window; false if it is not exposed in time.
    bool show() const
    {
        m_body->show();
        return QTest::qWaitForWindowExposed(m_body.get());
    }

    FourPs* panel = nullptr;

private:
    QTranslator m_translator; ///< declared before the windows because it must outlive them
    std::unique_ptr<Body> m_body;
};

void addLanguageRows()
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

    void languageSelectsTheTexts();
    void mainWindowCutsOffNoText_data() { addLanguageRows(); }
    void mainWindowCutsOffNoText();
    void panelOpensAtLeastAsWideAsItsDesign_data() { addLanguageRows(); }
    void panelOpensAtLeastAsWideAsItsDesign();
    void mainWindowFitsOnASmallScreen_data() { addLanguageRows(); }
    void mainWindowFitsOnASmallScreen();
    void widgetsOfTheMainWindowDoNotOverlap_data() { addLanguageRows(); }
    void widgetsOfTheMainWindowDoNotOverlap();
    void lowFieldsShowCompleteLetters();
    void pathFieldsGetTheExtraWidthOfAWideWindow_data() { addLanguageRows(); }
    void pathFieldsGetTheExtraWidthOfAWideWindow();
    void fieldsForAllRowsAreAlignedWithTheRows_data() { addLanguageRows(); }
    void fieldsForAllRowsAreAlignedWithTheRows();
    void extraHeightOfATallWindowStaysEmpty();
    void widgetsAreHighEnoughAndDoNotOverlapInOtherStylesAndFonts_data();
    void widgetsAreHighEnoughAndDoNotOverlapInOtherStylesAndFonts();
    void noTextIsCutOffWhileMoreCondsIsOn_data() { addLanguageRows(); }
    void noTextIsCutOffWhileMoreCondsIsOn();
    void graphWindowShowsCompleteNumbers_data() { addLanguageRows(); }
    void graphWindowShowsCompleteNumbers();
    void graphWindowColumnsHaveEqualWidths_data() { addLanguageRows(); }
    void graphWindowColumnsHaveEqualWidths();
    void rotatedTitlesStayInTheirRectangles_data() { addLanguageRows(); }
    void rotatedTitlesStayInTheirRectangles();
    void plotLabelsStayInTheirRectangles_data() { addLanguageRows(); }
    void plotLabelsStayInTheirRectangles();
    void poppedOutWindowsAreTitledLikeTheirPlots_data() { addLanguageRows(); }
    void poppedOutWindowsAreTitledLikeTheirPlots();
    void graphWindowOpensInItsDesignSizeAndCutsOffNoText_data() { addLanguageRows(); }
    void graphWindowOpensInItsDesignSizeAndCutsOffNoText();
    void mapWindowsOpenInTheirDesignSizeAndCutOffNoText_data() { addLanguageRows(); }
    void mapWindowsOpenInTheirDesignSizeAndCutOffNoText();
    void noTextIsCutOffInPoppedOutPlots_data() { addLanguageRows(); }
    void noTextIsCutOffInPoppedOutPlots();
    void poppedOutMapsCutOffNoText_data() { addLanguageRows(); }
    void poppedOutMapsCutOffNoText();
    void graphWindowCanShrinkTo425By426Pixels_data() { addLanguageRows(); }
    void graphWindowCanShrinkTo425By426Pixels();
};

void tst_WindowLayout::initTestCase()
{
    // Without a Japanese font, Japanese characters are drawn as empty rectangles of another
    // width.
    QVERIFY2(!QFontDatabase::families(QFontDatabase::Japanese).isEmpty(),
             "no font with Japanese characters is installed, so text sizes cannot be measured");
}

void tst_WindowLayout::languageSelectsTheTexts()
{
    const auto labelText = [](app::Language language) {
        return Program(language).panel->ui.label_10->text();
    };
    QCOMPARE(labelText(app::Language::English), QString("Valence"));
    QCOMPARE(labelText(app::Language::Japanese), QStringLiteral("価数"));
    QCOMPARE(labelText(app::Language::English), QString("Valence"));
}

void tst_WindowLayout::mainWindowCutsOffNoText()
{
    QFETCH(app::Language, language);
    const Program program(language);
    QCOMPARE(cutOffTextsWhenShown(program.body()), QString());
}

// Japanese texts are short. Without a minimum width the window would be so narrow that
// the absorption fields of the rows would show only four digits.
void tst_WindowLayout::panelOpensAtLeastAsWideAsItsDesign()
{
    QFETCH(app::Language, language);
    const Program program(language);
    QVERIFY(program.show());
    QVERIFY(program.panel->width() >= 1016);
}

// On a screen of 1366 by 768 pixels, about 740 pixels of the height remain for a window and its
// frame. The test allows at most 720.
void tst_WindowLayout::mainWindowFitsOnASmallScreen()
{
    constexpr int windowFrameHeight = 25;
    QFETCH(app::Language, language);
    const Program program(language);
    QVERIFY(program.show());
    QVERIFY2(program.body()->height() + windowFrameHeight <= 720,
             qPrintable(QString::number(program.body()->height())));
    QVERIFY(program.body()->width() <= 1366);
    // The message box shows three messages and the empty line that follows them.
    const QTextEdit* messages = program.panel->ui.Message;
    QVERIFY(messages->viewport()->height() >= 4 * messages->fontMetrics().height());
    QVERIFY(messages->height() <= 60);
}

void tst_WindowLayout::widgetsOfTheMainWindowDoNotOverlap()
{
    QFETCH(app::Language, language);
    const Program program(language);
    QVERIFY(program.show());
    QCOMPARE(overlaps(program.body()), QString());
    program.panel->ui.DispCondsB->click();
    QCoreApplication::processEvents();
    QCOMPARE(overlaps(program.body()), QString());
}

// The text contains tall letters and letters with descenders. It must fill as many pixel rows in
// a field as low as the panel's fields as in a field that is high enough for any letter.
void tst_WindowLayout::lowFieldsShowCompleteLetters()
{
    const Program program(app::Language::English);
    QVERIFY(program.show());
    const QString text = QStringLiteral("gjpqyÉ(8)[µ]価");
    for (const QLineEdit* field : {program.panel->ui.EdgeE, program.panel->EPoints.at(0)->Energy}) {
        QLineEdit sample;
        sample.setText(text);
        QCOMPARE(paintedRows(&sample, field->height()), paintedRows(&sample, 40));
    }
}

void tst_WindowLayout::pathFieldsGetTheExtraWidthOfAWideWindow()
{
    QFETCH(app::Language, language);
    const Program program(language);
    QVERIFY(program.show());
    const int opening = program.body()->width();
    const int height = program.body()->height();
    const QList<QWidget*> fields = pathFields(program.panel);
    QList<int> widths;
    for (const QWidget* field : fields) {
        widths << field->width();
    }
    for (const int width : {1600, 3840}) {
        QVERIFY(resizeTo(program.body(), width, height));
        for (qsizetype i = 0; i < fields.size(); ++i) {
            QCOMPARE(fields.at(i)->width() - widths.at(i), width - opening);
        }
        QCOMPARE(overlaps(program.body()), QString());
    }
}

void tst_WindowLayout::fieldsForAllRowsAreAlignedWithTheRows()
{
    QFETCH(app::Language, language);
    const Program program(language);
    QVERIFY(program.show());
    QCOMPARE(misaligned(program.panel), QStringList());
    for (const int width : {1600, 3840}) {
        QVERIFY(resizeTo(program.body(), width, program.body()->height()));
        QCOMPARE(misaligned(program.panel), QStringList());
    }
}

void tst_WindowLayout::extraHeightOfATallWindowStaysEmpty()
{
    const Program program(app::Language::English);
    QVERIFY(program.show());
    const Ui_FourPs& ui = program.panel->ui;
    const QList<QWidget*> blocks{ui.frame_5, ui.frame_6, ui.FourPsFiles, ui.FourPsAction,
                                 ui.Message};
    QList<QRect> places;
    for (const QWidget* block : blocks) {
        places << block->geometry();
    }
    QVERIFY(resizeTo(program.body(), program.body()->width(), 1000));
    for (qsizetype i = 0; i < blocks.size(); ++i) {
        QCOMPARE(blocks.at(i)->geometry(), places.at(i));
    }
}

void tst_WindowLayout::widgetsAreHighEnoughAndDoNotOverlapInOtherStylesAndFonts_data()
{
    QTest::addColumn<QString>("style");
    QTest::addColumn<int>("points");
    QTest::addColumn<app::Language>("language");
    QTest::newRow("small font") << "fusion" << 7 << app::Language::English;
    QTest::newRow("large font") << "fusion" << 12 << app::Language::Japanese;
    QTest::newRow("very large font") << "fusion" << 16 << app::Language::English;
    QTest::newRow("another style") << "windows" << 9 << app::Language::English;
    QTest::newRow("another style, large font") << "windows" << 14 << app::Language::Japanese;
}

void tst_WindowLayout::widgetsAreHighEnoughAndDoNotOverlapInOtherStylesAndFonts()
{
    QFETCH(QString, style);
    QFETCH(int, points);
    QFETCH(app::Language, language);
    const ChangedDesktop desktop(style, points);
    const Program program(language);
    QVERIFY(program.show());
    QCOMPARE(tooLowWidgets(program.body()), QString());
    QCOMPARE(overlaps(program.body()), QString());
}

void tst_WindowLayout::noTextIsCutOffWhileMoreCondsIsOn()
{
    QFETCH(app::Language, language);
    const Program program(language);
    program.panel->ui.DispCondsB->click();
    QVERIFY(program.panel->ui.CConds->isVisibleTo(program.body()));
    QCOMPARE(cutOffTextsWhenShown(program.body()), QString());
}

void tst_WindowLayout::graphWindowOpensInItsDesignSizeAndCutsOffNoText()
{
    QFETCH(app::Language, language);
    const Program program(language);
    QCOMPARE(cutOffTextsWhenShown(program.panel->Disps), QString());
    QCOMPARE(program.panel->Disps->size(), QSize(1100, 853));
}

void tst_WindowLayout::graphWindowShowsCompleteNumbers()
{
    QFETCH(app::Language, language);
    const Program program(language);
    program.panel->Disps->show();
    QVERIFY(QTest::qWaitForWindowExposed(program.panel->Disps));
    const QList<DispABase*> plots = plotsIn(program.panel->Disps);
    QCOMPARE(plots.size(), 10);
    for (const DispABase* plot : plots) {
        for (const char* number : {"316.038", "8550.12", "-0.0123", "8888.88"}) {
            QVERIFY2(showsCompletely(plot->XPos, number), qPrintable(plot->Title->text()));
            QVERIFY2(showsCompletely(plot->YPos, number), qPrintable(plot->Title->text()));
        }
    }
}

void tst_WindowLayout::graphWindowColumnsHaveEqualWidths()
{
    QFETCH(app::Language, language);
    const Program program(language);
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

// The title of the y axis is rotated, so its rectangle is as wide as the text is high. It
// begins one text height from the left edge of the plot. The test checks the middle three
// fifths of the height, because the labels of the axis are at the ends.
void tst_WindowLayout::rotatedTitlesStayInTheirRectangles()
{
    QFETCH(app::Language, language);
    const QTemporaryDir dir;
    const Program program(language);
    program.panel->XafsFiles.at(0)->AFileSelect::newFile(
        tests::writeFile(dir, "a.dat", tests::spectrumText("0.9", "1.1", "1", "0.974817")));
    program.panel->Disps->show();
    QVERIFY(QTest::qWaitForWindowExposed(program.panel->Disps));
    for (const auto id : {Displays::DRef1, Displays::DMuts}) {
        DispArea* surface = program.panel->Disps->frame(id)->DispA;
        const QImage picture = surface->grab().toImage();
        const ChCoord& cc = surface->cc;
        const int box = static_cast<int>(std::abs(cc.textRow()) * cc.textFill);
        int ink = 0;
        for (int y = picture.height() / 5; y < picture.height() * 4 / 5; ++y) {
            for (int x = 2; x < static_cast<int>(cc.areaX0) - 1; ++x) {
                if (picture.pixelColor(x, y).lightness() < 160) {
                    ++ink;
                    QVERIFY2(x >= box - 1 && x <= 2 * box, qPrintable(QString::number(x)));
                }
            }
        }
        QVERIFY(ink > 10);
    }
}

// Several widths are tested, because font sizes are rounded to whole pixels: at some widths
// the text is larger than calculated.
void tst_WindowLayout::plotLabelsStayInTheirRectangles()
{
    QFETCH(app::Language, language);
    const QTemporaryDir dir;
    const Program program(language);
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
            QCOMPARE(labelsOutsideTheirRectangles(plot), QStringList());
        }
    }
}

void tst_WindowLayout::poppedOutWindowsAreTitledLikeTheirPlots()
{
    QFETCH(app::Language, language);
    const Program program(language);
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

void tst_WindowLayout::mapWindowsOpenInTheirDesignSizeAndCutOffNoText()
{
    QFETCH(app::Language, language);
    const Program program(language);
    for (DispMBase* window : {program.panel->MapDisp, program.panel->DMapDisp}) {
        QCOMPARE(cutOffTextsWhenShown(window), QString());
        QCOMPARE(window->size(), QSize(578, 528));
    }
}

void tst_WindowLayout::noTextIsCutOffInPoppedOutPlots()
{
    QFETCH(app::Language, language);
    const Program program(language);
    for (DispABase* plot : std::as_const(program.panel->Disps->disps)) {
        QCOMPARE(cutOffTextsPoppedOut(plot), QString());
    }
}

void tst_WindowLayout::poppedOutMapsCutOffNoText()
{
    QFETCH(app::Language, language);
    const Program program(language);
    for (DispMBase* window : {program.panel->MapDisp, program.panel->DMapDisp}) {
        QCOMPARE(cutOffTextsPoppedOut(window), QString());
    }
}

void tst_WindowLayout::graphWindowCanShrinkTo425By426Pixels()
{
    QFETCH(app::Language, language);
    const Program program(language);
    Displays* graphs = program.panel->Disps;
    graphs->show();
    graphs->resize(425, 426);
    QCoreApplication::processEvents();
    QCOMPARE(graphs->size(), QSize(425, 426));
}

QTEST_MAIN(tst_WindowLayout)
#include "tst_WindowLayout.moc"
