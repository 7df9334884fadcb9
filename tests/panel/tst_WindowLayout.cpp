// What a user reads on every window as it opens, in either language: no label or
// button is cut.

#include "app/Body.h"
#include "app/Language.h"
#include "display/DispMBase.h"
#include "display/Displays.h"
#include "panel/FourPs.h"

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
    return widget->sizeHint().boundedTo(widget->maximumSize()).expandedTo(words);
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
    QCOMPARE(program.panel->Disps->size(), QSize(850, 853));
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
