// Tests of the panel's form: the names, layout cells, texts and settings of its controls, the
// groups of radio buttons, and whether all texts fit.

#include "rows/AFileSelect.h"
#include "rows/AXafsFileSelect.h"
#include "support/Vocabulary.h"
#include "ui_FourPs.h"

#include <QButtonGroup>
#include <QHash>
#include <QStyle>
#include <QTest>
#include <QTranslator>

#include <algorithm>
#include <memory>

namespace
{

struct Control {
    const char* name;
    const char* className;
    const char* layout;
    int row;
    int column;
    int columns;      ///< number of columns that the control spans
    const char* text; ///< null if the control has no text
};

// clang-format off
constexpr Control controls[] = {
    {"Message", "QTextEdit", "gridLayout", 5, 0, 1, nullptr},
    {"FourPsFiles", "QFrame", "gridLayout", 3, 0, 1, nullptr},
    {"FourPsAction", "QFrame", "gridLayout", 4, 0, 1, nullptr},
    {"label_4", "QLabel", "gridLayout_15", 1, 0, 1, "Disp Select : "},
    {"HgMut0", "QRadioButton", "gridLayout_32", 0, 0, 1, "mut0"},
    {"HgC1", "QRadioButton", "gridLayout_32", 0, 1, 1, "C1"},
    {"HgC2", "QRadioButton", "gridLayout_32", 0, 2, 1, "C2"},
    {"HgdMut2", "QCheckBox", "gridLayout_31", 0, 2, 1, "dMut 2"},
    {"HgdMut1", "QCheckBox", "gridLayout_31", 0, 1, 1, "dMut 1"},
    {"HgAmount", "QCheckBox", "gridLayout_31", 0, 0, 1, "Amouont"},
    {"HgdMut4", "QCheckBox", "gridLayout_31", 0, 4, 1, "dMut 4"},
    {"HgdMut3", "QCheckBox", "gridLayout_31", 0, 3, 1, "dMut 3"},
    {"HgRatio3", "QCheckBox", "gridLayout_29", 0, 3, 1, "Ratio 3"},
    {"HgRatio1", "QCheckBox", "gridLayout_29", 0, 1, 1, "Ratio 1"},
    {"HgRatio2", "QCheckBox", "gridLayout_29", 0, 2, 1, "Ratio 2"},
    {"HgValence", "QCheckBox", "gridLayout_29", 0, 0, 1, "Valence"},
    {"HgRatio4", "QCheckBox", "gridLayout_29", 0, 4, 1, "Ratio 4"},
    {"CalcMapB", "QPushButton", "gridLayout_8", 0, 0, 1, "Calc."},
    {"WriteB", "QPushButton", "gridLayout_8", 0, 2, 1, "Write"},
    {"RecRatio3", "QCheckBox", "gridLayout_34", 0, 2, 1, "Ratio 3"},
    {"RecRatio1", "QCheckBox", "gridLayout_34", 0, 0, 1, "Ratio 1"},
    {"RecRatio2", "QCheckBox", "gridLayout_34", 0, 1, 1, "Ratio 2"},
    {"RecRatio4", "QCheckBox", "gridLayout_34", 0, 3, 1, "Ratio 4"},
    {"RecDMut3", "QCheckBox", "gridLayout_35", 0, 2, 1, "dMut 3"},
    {"RecDMut2", "QCheckBox", "gridLayout_35", 0, 1, 1, "dMut 2"},
    {"RecDMut1", "QCheckBox", "gridLayout_35", 0, 0, 1, "dMut 1"},
    {"RecDMut4", "QCheckBox", "gridLayout_35", 0, 3, 1, "dMut 4"},
    {"RecMut0", "QCheckBox", "gridLayout_36", 0, 0, 1, "mut0"},
    {"RecC1", "QCheckBox", "gridLayout_36", 0, 1, 1, "C1"},
    {"RecC2", "QCheckBox", "gridLayout_36", 0, 2, 1, "C2"},
    {"label_2", "QLabel", "gridLayout_11", 0, 0, 1, "Record Select :"},
    {"RecValence", "QCheckBox", "gridLayout_33", 0, 0, 1, "Valence"},
    {"RecAmount", "QCheckBox", "gridLayout_33", 0, 1, 1, "Amount"},
    {"MapDMut1", "QRadioButton", "gridLayout_37", 0, 10, 1, "dMut 1"},
    {"MapAmount", "QRadioButton", "gridLayout_37", 0, 3, 1, "Amount"},
    {"MapRatio4", "QRadioButton", "gridLayout_37", 0, 8, 1, "Ratio 4"},
    {"MapDMut2", "QRadioButton", "gridLayout_37", 0, 11, 1, "dMut 2"},
    {"MapC2", "QRadioButton", "gridLayout_37", 0, 17, 1, "C2"},
    {"MapDMut3", "QRadioButton", "gridLayout_37", 0, 12, 1, "dMut 3"},
    {"MapC1", "QRadioButton", "gridLayout_37", 0, 16, 1, "C1"},
    {"MapMut0", "QRadioButton", "gridLayout_37", 0, 15, 1, "mu0"},
    {"label_20", "QLabel", "gridLayout_37", 0, 0, 1, "Map Select"},
    {"MapValence", "QRadioButton", "gridLayout_37", 0, 2, 1, "Valence"},
    {"MapRatio2", "QRadioButton", "gridLayout_37", 0, 6, 1, "Ratio2"},
    {"MapDMut4", "QRadioButton", "gridLayout_37", 0, 13, 1, "dMut 4"},
    {"MapRatio1", "QRadioButton", "gridLayout_37", 0, 5, 1, "Ratio 1"},
    {"MapRatio3", "QRadioButton", "gridLayout_37", 0, 7, 1, "Ratio 3"},
    {"label_11", "QLabel", "gridLayout_4", 3, 1, 1, "dMut"},
    {"label_6", "QLabel", "gridLayout_4", 0, 1, 1, "Hist Grams"},
    {"HgAFrom", "QLineEdit", "gridLayout_4", 2, 4, 1, "1.5"},
    {"label_7", "QLabel", "gridLayout_4", 0, 4, 1, "From"},
    {"HgTBoxes", "QLineEdit", "gridLayout_4", 3, 8, 1, "51"},
    {"HgATo", "QLineEdit", "gridLayout_4", 2, 6, 1, "3.5"},
    {"HgTFrom", "QLineEdit", "gridLayout_4", 3, 4, 1, "-0.2"},
    {"HgABoxes", "QLineEdit", "gridLayout_4", 2, 8, 1, "51"},
    {"label_9", "QLabel", "gridLayout_4", 0, 8, 1, "Boxes"},
    {"label_10", "QLabel", "gridLayout_4", 2, 1, 1, "Valence"},
    {"label_8", "QLabel", "gridLayout_4", 0, 6, 1, "To"},
    {"HgAAuto", "QRadioButton", "gridLayout_4", 2, 9, 1, "Auto"},
    {"HgTAuto", "QRadioButton", "gridLayout_4", 3, 9, 1, "Auto"},
    {"HgTTo", "QLineEdit", "gridLayout_4", 3, 6, 1, "1.2"},
    {"radioButton", "QRadioButton", "gridLayout_24", 0, 2, 1, "multi points"},
    {"CalcTargetB", "QPushButton", "gridLayout_24", 0, 0, 1, "Calc."},
    {"DispCondsB", "QCheckBox", "gridLayout_24", 0, 5, 1, "More Conds"},
    {"CalcRes", "QLineEdit", "gridLayout_24", 0, 1, 1, nullptr},
    {"TypeNonEquiv", "QRadioButton", "gridLayout_24", 0, 3, 1, "Non Equiv. Meth."},
    {"CConds", "QFrame", "gridLayout_18", 6, 0, 7, nullptr},
    {"CConds3", "QFrame", "gridLayout_22", 2, 0, 1, nullptr},
    {"TypeTMKisLS", "QRadioButton", "gridLayout_27", 0, 2, 1, "Least Square"},
    {"TypeTMKisExact", "QRadioButton", "gridLayout_27", 0, 1, 1, "Exact 4 points"},
    {"label_18", "QLabel", "gridLayout_27", 0, 0, 1, "Calc. Type for t, mu0, and k: "},
    {"label_26", "QLabel", "gridLayout_9", 0, 0, 1, "4 Points Meth."},
    {"CConds2", "QFrame", "gridLayout_22", 1, 0, 1, nullptr},
    {"label_15", "QLabel", "gridLayout_10", 0, 0, 1, "Refs/Target XAFS Spectra"},
    {"label_5", "QLabel", "gridLayout_25", 0, 0, 1, "Refs: Sub."},
    {"SubPostEforRef", "QRadioButton", "gridLayout_25", 0, 2, 1, "Post E. Line"},
    {"SubPreEforRef", "QRadioButton", "gridLayout_25", 0, 1, 1, "Pre E. Line"},
    {"SubPreEforTarget", "QRadioButton", "gridLayout_26", 0, 1, 1, "Pre E. Line"},
    {"label_17", "QLabel", "gridLayout_26", 0, 0, 1, "Target: Sub."},
    {"SubPostEforTarget", "QRadioButton", "gridLayout_26", 0, 2, 1, "Post E. Line"},
    {"NonEquivBGVic", "QRadioButton", "gridLayout_28", 0, 2, 1, "Vic."},
    {"NonEquivBGLinear", "QRadioButton", "gridLayout_28", 0, 1, 1, "Linear"},
    {"label_19", "QLabel", "gridLayout_28", 0, 0, 1, "B.G.Line Type: "},
    {"label_28", "QLabel", "gridLayout_7", 0, 0, 1, "  Non Equiv. Meth."},
    {"ShowDMap", "QPushButton", "gridLayout_18", 0, 4, 1, "Show Data Map"},
    {"ShowDAB", "QPushButton", "gridLayout_18", 0, 6, 1, "Show Graphs"},
    {"ShowMap", "QPushButton", "gridLayout_18", 0, 5, 1, "Show Res. Map"},
    {"label_23", "QLabel", "gridLayout_18", 0, 0, 1, "Data Processing"},
    {"LCFB", "QPushButton", "gridLayout_19", 0, 0, 1, "LCF"},
    {"LCFRes", "QLineEdit", "gridLayout_19", 0, 1, 1, nullptr},
    {"FourPMethod", "QWidget", "gridLayout_6", 0, 1, 1, nullptr},
    {"label_14", "QLabel", "gridLayout_13", 0, 2, 1, "Edge[eV]"},
    {"PostEStartDE", "QLineEdit", "gridLayout_13", 0, 7, 1, "100"},
    {"PreEEndDE", "QLineEdit", "gridLayout_13", 0, 5, 1, "-50"},
    {"label_25", "QLabel", "gridLayout_13", 0, 0, 1, "Params for Vic. Lines"},
    {"label_12", "QLabel", "gridLayout_13", 0, 4, 1, "Pre Edge End [eV]"},
    {"label_13", "QLabel", "gridLayout_13", 0, 6, 1, "Post Edge Start [eV]"},
    {"EdgeE", "QLineEdit", "gridLayout_13", 0, 3, 1, "8350"},
    {"label_24", "QLabel", "gridLayout_18", 2, 0, 1, "Exec. and Results"},
    {"MapWGrid", "QCheckBox", "gridLayout_18", 0, 3, 1, "with Grid"},
    {"RemoveAFile", "QPushButton", "gridLayout_14", 0, 3, 1, "Remove"},
    {"label_16", "QLabel", "gridLayout_14", 0, 0, 1, "Disp. Only"},
    {"SelectedFs", "QComboBox", "gridLayout_14", 0, 2, 1, nullptr},
    {"label_22", "QLabel", "gridLayout_12", 0, 0, 3, "XAFS spectra"},
    {"TargetDMut", "QLineEdit", "gridLayout_12", 2, 2, 1, nullptr},
    {"NNone", "QRadioButton", "gridLayout_23", 0, 1, 1, "No normalize"},
    {"NByEJ", "QRadioButton", "gridLayout_23", 0, 3, 1, "Normalized by edge jump"},
    {"NBySubPre", "QRadioButton", "gridLayout_23", 0, 2, 1, "Sub pre Vic."},
    {"label_27", "QLabel", "gridLayout_23", 0, 0, 1, "When drawing all mut"},
    {"NBy2Vics", "QRadioButton", "gridLayout_23", 0, 4, 1, "Normalized by 2 Vics "},
    {"FullRangeCB", "QCheckBox", "gridLayout_23", 0, 6, 1, "Full Range"},
    {"label_3", "QLabel", "gridLayout_16", 0, 0, 1, "Target"},
    {"label", "QLabel", "gridLayout_12", 2, 1, 1, "Amount dMut"},
    // Row widgets of the program, and containers that are placed in a grid.
    {"TargetFile", "AXafsFileSelect", "gridLayout_16", 0, 1, 1, nullptr},
    {"DispFSelect", "AFileSelect", "gridLayout_14", 0, 1, 1, nullptr},
    {"SaveFSelect", "AFileSelect", "gridLayout_8", 0, 1, 1, nullptr},
    {"frame", "QFrame", "gridLayout", 0, 0, 1, nullptr},
    {"frame_5", "QFrame", "gridLayout_5", 0, 0, 1, nullptr},
    {"frame_6", "QFrame", "gridLayout_5", 1, 0, 1, nullptr},
    {"frame_11", "QFrame", "gridLayout_12", 1, 0, 3, nullptr},
    {"widget_9", "QWidget", "gridLayout_12", 2, 0, 1, nullptr},
    {"widget_10", "QWidget", "gridLayout_12", 3, 0, 3, nullptr},
};
// clang-format on

// The Japanese translation has no entry for these texts, so they are the same in every
// language.
const QStringList untranslated = {"multi points", "with Grid"};

const QStringList checkedAtStart = {
    "HgMut0",    "HgValence",        "HgAmount",        "HgdMut1",     "HgdMut2",
    "HgdMut3",   "HgdMut4",          "HgAAuto",         "HgTAuto",     "RecValence",
    "RecAmount", "MapValence",       "TypeNonEquiv",    "TypeTMKisLS", "SubPreEforRef",
    "NBy2Vics",  "SubPreEforTarget", "NonEquivBGLinear"};

/// A translator that records the texts that the form requests and returns each of them
/// repeated `factor` times.
class RecordingTranslator : public QTranslator
{
public:
    explicit RecordingTranslator(int times)
        : factor(times)
    {
    }

    QString translate(const char* context, const char* source, const char*, int) const override
    {
        const QString text = QString::fromUtf8(source);
        if (qstrcmp(context, "FourPs") != 0) {
            return text;
        }
        requested.append(text);
        return text.repeated(factor);
    }
    bool isEmpty() const override { return false; }

    int factor = 1;
    mutable QStringList requested;
};

/// Appends all descendants of @p parent to @p found. Widgets inside a file row are left out,
/// because the names of these widgets are the same in every file row.
void collectWidgets(const QWidget* parent, QList<QWidget*>& found)
{
    for (QObject* child : parent->children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (!widget) {
            continue;
        }
        found.append(widget);
        if (!qobject_cast<AFileSelect*>(widget)) {
            collectWidgets(widget, found);
        }
    }
}

/// The form on a plain frame, without the panel.
struct Form {
    Form()
    {
        ui.setupUi(&frame);
        collectWidgets(&frame, widgets);
    }

    QWidget* widget(const QString& name) const
    {
        const auto named = [&](const QWidget* w) { return w->objectName() == name; };
        const auto count = std::count_if(widgets.begin(), widgets.end(), named);
        return count == 1 ? *std::find_if(widgets.begin(), widgets.end(), named) : nullptr;
    }

    QAbstractButton* button(const QString& name) const
    {
        return qobject_cast<QAbstractButton*>(widget(name));
    }

    template <typename Kind>
    QList<Kind*> all() const
    {
        QList<Kind*> found;
        for (QWidget* w : widgets) {
            if (auto* kind = qobject_cast<Kind*>(w)) {
                found.append(kind);
            }
        }
        return found;
    }

    QFrame frame;
    Ui_FourPs ui;
    QList<QWidget*> widgets;
};

/// The names in @p names whose buttons are checked.
QStringList checkedOf(const Form& form, const QStringList& names)
{
    QStringList checked;
    for (const QString& name : names) {
        if (form.button(name) && form.button(name)->isChecked()) {
            checked.append(name);
        }
    }
    return checked;
}

/// Whether @p w is narrower than its size hint, or lower than its minimum size hint. A widget
/// that has its maximum width is wide enough.
bool isCutOff(const QWidget* w)
{
    const int wanted = std::min(w->sizeHint().width(), w->maximumWidth());
    return w->width() < wanted || w->height() < w->minimumSizeHint().height();
}

QStringList cutOffTexts(const Form& form)
{
    QStringList names;
    for (const QWidget* w : form.widgets) {
        const bool hasText =
            qobject_cast<const QLabel*>(w) || qobject_cast<const QAbstractButton*>(w);
        if (hasText && w->isVisibleTo(&form.frame) && isCutOff(w)) {
            names.append(w->objectName());
        }
    }
    return names;
}

} // namespace

class tst_FourPsForm : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void frameHasTheDesignedStyleAndSize();
    void controlHasTheExpectedLayoutCellAndText_data();
    void controlHasTheExpectedLayoutCellAndText();
    void formContainsOnlyTheExpectedControls();
    void onlyTheExpectedButtonsStartChecked();
    void onlyTheExpectedControlsHaveAMaximumWidth();
    void onlyTheExpectedTextsAreRightAligned();
    void onlyTheFitResultAndTheMessagesAreReadOnly();
    void resultFieldsAndMessagesHaveABackgroundColour();
    void messageBoxHasAMaximumHeightAndNoUndo();
    void radiosOfAGroupAreTheOnlyRadiosOfTheirParent_data();
    void radiosOfAGroupAreTheOnlyRadiosOfTheirParent();
    void radiosOfAGroupAreExclusive_data();
    void radiosOfAGroupAreExclusive();
    void autoRadiosOfTheHistogramsAreIndependent();
    void moreConditionsSectionContainsItsThreeBlocks();
    void energyPointGridStartsEmptyWithFixedSpacing();
    void referenceRowLayoutStartsEmpty();
    void layoutsOfPlainWidgetsHaveNoMargins();
    void gridLayoutsOfTheFormHaveVerticalSpacing3();
    void formCreatesNoButtonGroup();
    void formRequestsTheExpectedTranslations();
    void noTextIsCutOffAtTheDesignedSize();
    void textsOfDoubleLengthAreNotCutOff();

private:
    static void addGroups();

    std::unique_ptr<Form> m_untouched; ///< never modified
};

void tst_FourPsForm::initTestCase()
{
    m_untouched = std::make_unique<Form>();
}

void tst_FourPsForm::frameHasTheDesignedStyleAndSize()
{
    const Form& form = *m_untouched;
    QCOMPARE(form.frame.objectName(), QString("FourPs"));
    QCOMPARE(form.frame.windowTitle(), QString("Frame"));
    QCOMPARE(form.frame.size(), QSize(1016, 673));
    QCOMPARE(form.frame.frameShape(), QFrame::StyledPanel);
    QCOMPARE(form.frame.frameShadow(), QFrame::Raised);
    QCOMPARE(form.frame.layout()->objectName(), QString("gridLayout"));
}

void tst_FourPsForm::controlHasTheExpectedLayoutCellAndText_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(controls)); ++i) {
        QTest::newRow(controls[i].name) << i;
    }
}

void tst_FourPsForm::controlHasTheExpectedLayoutCellAndText()
{
    QFETCH(int, index);
    const Control& expected = controls[index];
    const Form& form = *m_untouched;
    QWidget* widget = form.widget(expected.name);
    QVERIFY2(widget, "the control does not exist or is not unique");
    QCOMPARE(widget->metaObject()->className(), expected.className);

    auto* layout = qobject_cast<QGridLayout*>(widget->parentWidget()->layout());
    QVERIFY(layout);
    QCOMPARE(layout->objectName(), QString(expected.layout));
    QVERIFY(layout->indexOf(widget) >= 0);
    int row = -1;
    int column = -1;
    int rows = -1;
    int columns = -1;
    layout->getItemPosition(layout->indexOf(widget), &row, &column, &rows, &columns);
    QCOMPARE(row, expected.row);
    QCOMPARE(column, expected.column);
    QCOMPARE(rows, 1);
    QCOMPARE(columns, expected.columns);

    QCOMPARE(widget->property("text").toString(), QString(expected.text));
}

void tst_FourPsForm::formContainsOnlyTheExpectedControls()
{
    const Form& form = *m_untouched;
    QStringList unknown;
    for (const QWidget* w : form.widgets) {
        const bool control = qobject_cast<const QAbstractButton*>(w) ||
                             qobject_cast<const QLineEdit*>(w) || qobject_cast<const QLabel*>(w) ||
                             qobject_cast<const AFileSelect*>(w);
        const bool known = std::any_of(std::begin(controls), std::end(controls),
                                       [&](const Control& c) { return w->objectName() == c.name; });
        // Widgets with this prefix are internal to Qt's own widgets.
        if (control && !known && !w->objectName().startsWith("qt_")) {
            unknown.append(w->objectName());
        }
    }
    QCOMPARE(unknown, QStringList());
}

void tst_FourPsForm::onlyTheExpectedButtonsStartChecked()
{
    const Form& form = *m_untouched;
    QStringList checked;
    for (const QAbstractButton* button : form.all<QAbstractButton>()) {
        if (button->isChecked()) {
            checked.append(button->objectName());
        }
    }
    QStringList expected = checkedAtStart;
    checked.sort();
    expected.sort();
    QCOMPARE(checked, expected);
}

void tst_FourPsForm::onlyTheExpectedControlsHaveAMaximumWidth()
{
    const QHash<QString, int> expected = {
        {"HgAFrom", 60},      {"HgATo", 60},     {"HgTFrom", 60},     {"HgTTo", 60},
        {"HgABoxes", 40},     {"HgTBoxes", 40},  {"CalcTargetB", 60}, {"LCFB", 60},
        {"PostEStartDE", 70}, {"PreEEndDE", 70}, {"EdgeE", 80},       {"RemoveAFile", 50},
        {"TargetDMut", 40}};
    const Form& form = *m_untouched;
    for (const Control& control : controls) {
        QCOMPARE(form.widget(control.name)->maximumWidth(),
                 expected.value(control.name, QWIDGETSIZE_MAX));
    }
    QCOMPARE(form.widget("label_3")->minimumWidth(), 50);
}

void tst_FourPsForm::onlyTheExpectedTextsAreRightAligned()
{
    const QStringList expected = {"HgAFrom", "HgTBoxes",     "HgATo",     "HgTFrom", "HgABoxes",
                                  "HgTTo",   "PostEStartDE", "PreEEndDE", "EdgeE",   "label_16"};
    const Form& form = *m_untouched;
    for (const Control& control : controls) {
        const QVariant alignment = form.widget(control.name)->property("alignment");
        const bool right = (Qt::Alignment::fromInt(alignment.toInt()) & Qt::AlignHorizontal_Mask) ==
                           Qt::AlignRight;
        QVERIFY2(right == expected.contains(control.name), control.name);
    }
}

void tst_FourPsForm::onlyTheFitResultAndTheMessagesAreReadOnly()
{
    const Form& form = *m_untouched;
    QVERIFY(form.ui.Message->isReadOnly());
    for (const QLineEdit* edit : form.all<QLineEdit>()) {
        QVERIFY2(edit->isReadOnly() == (edit->objectName() == "LCFRes"),
                 qPrintable(edit->objectName()));
    }
}

void tst_FourPsForm::resultFieldsAndMessagesHaveABackgroundColour()
{
    const QString result = "background-color: rgb(255, 255, 220);";
    const QHash<QString, QString> expected = {{"CalcRes", result},
                                              {"LCFRes", result},
                                              {"TargetDMut", result},
                                              {"Message", "background-color: rgb(255, 231, 231);"}};
    const Form& form = *m_untouched;
    for (const QWidget* w : form.widgets) {
        if (!qobject_cast<const AFileSelect*>(w)) {
            QVERIFY2(w->styleSheet() == expected.value(w->objectName()),
                     qPrintable(w->objectName()));
        }
    }
}

void tst_FourPsForm::messageBoxHasAMaximumHeightAndNoUndo()
{
    const Form& form = *m_untouched;
    QCOMPARE(form.ui.Message->maximumHeight(), 60);
    QVERIFY(!form.ui.Message->isUndoRedoEnabled());
    QCOMPARE(form.ui.Message->toPlainText(), QString());
}

void tst_FourPsForm::addGroups()
{
    QTest::addColumn<QStringList>("members");
    QTest::newRow("map selection") << QStringList{
        "MapValence", "MapAmount", "MapRatio1", "MapRatio2", "MapRatio3", "MapRatio4", "MapDMut1",
        "MapDMut2",   "MapDMut3",  "MapDMut4",  "MapMut0",   "MapC1",     "MapC2"};
    QTest::newRow("graph normalisation") << QStringList{"NNone", "NBySubPre", "NByEJ", "NBy2Vics"};
    QTest::newRow("base map for display") << QStringList{"HgMut0", "HgC1", "HgC2"};
    QTest::newRow("target method") << QStringList{"radioButton", "TypeNonEquiv"};
    QTest::newRow("4 points method") << QStringList{"TypeTMKisExact", "TypeTMKisLS"};
    QTest::newRow("reference background") << QStringList{"SubPreEforRef", "SubPostEforRef"};
    QTest::newRow("target background") << QStringList{"SubPreEforTarget", "SubPostEforTarget"};
    QTest::newRow("background line type") << QStringList{"NonEquivBGLinear", "NonEquivBGVic"};
}

void tst_FourPsForm::radiosOfAGroupAreTheOnlyRadiosOfTheirParent_data()
{
    addGroups();
}

void tst_FourPsForm::radiosOfAGroupAreTheOnlyRadiosOfTheirParent()
{
    QFETCH(QStringList, members);
    const Form& form = *m_untouched;
    const QWidget* holder = form.widget(members.first())->parentWidget();
    QStringList inHolder;
    const auto radios = holder->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QRadioButton* radio : radios) {
        QVERIFY2(radio->autoExclusive(), qPrintable(radio->objectName()));
        inHolder.append(radio->objectName());
    }
    inHolder.sort();
    members.sort();
    QCOMPARE(inHolder, members);
}

void tst_FourPsForm::radiosOfAGroupAreExclusive_data()
{
    addGroups();
}

void tst_FourPsForm::radiosOfAGroupAreExclusive()
{
    QFETCH(QStringList, members);
    const Form form;
    QStringList others = checkedAtStart;
    others.removeIf([&](const QString& name) { return members.contains(name); });
    QCOMPARE(checkedOf(form, members).size(), 1);
    for (const QString& name : members) {
        form.button(name)->click();
        QCOMPARE(checkedOf(form, members), QStringList{name});
        QCOMPARE(checkedOf(form, others), others);
    }
}

void tst_FourPsForm::autoRadiosOfTheHistogramsAreIndependent()
{
    const Form form;
    QVERIFY(!form.ui.HgAAuto->autoExclusive());
    QVERIFY(!form.ui.HgTAuto->autoExclusive());
    form.ui.HgAAuto->click();
    QVERIFY(!form.ui.HgAAuto->isChecked());
    QVERIFY(form.ui.HgTAuto->isChecked());
    form.ui.HgTAuto->click();
    QVERIFY(!form.ui.HgTAuto->isChecked());
    form.ui.HgAAuto->click();
    QVERIFY(form.ui.HgAAuto->isChecked());
    QVERIFY(!form.ui.HgTAuto->isChecked());
}

void tst_FourPsForm::moreConditionsSectionContainsItsThreeBlocks()
{
    const Form& form = *m_untouched;
    QCOMPARE(form.ui.CConds2->parentWidget(), form.ui.CConds);
    QCOMPARE(form.ui.CConds3->parentWidget(), form.ui.CConds);
    QCOMPARE(form.ui.frame_4->parentWidget(), form.ui.CConds);
    QVERIFY(form.ui.CConds2->isAncestorOf(form.ui.SubPostEforRef));
    QVERIFY(form.ui.CConds2->isAncestorOf(form.ui.SubPostEforTarget));
    QVERIFY(form.ui.CConds3->isAncestorOf(form.ui.TypeTMKisExact));
    QVERIFY(form.ui.frame_4->isAncestorOf(form.ui.NonEquivBGVic));
}

void tst_FourPsForm::energyPointGridStartsEmptyWithFixedSpacing()
{
    const Form& form = *m_untouched;
    const QGridLayout* grid = form.ui.CLayout;
    QCOMPARE(grid->parentWidget(), form.ui.FourPsFiles);
    QCOMPARE(grid->count(), 0);
    QCOMPARE(grid->horizontalSpacing(), 2);
    QCOMPARE(grid->verticalSpacing(), 3);
    QCOMPARE(grid->contentsMargins().bottom(), 0);
    const QStyle* style = form.frame.style();
    QCOMPARE(grid->contentsMargins().left(), style->pixelMetric(QStyle::PM_LayoutLeftMargin));
    QCOMPARE(grid->contentsMargins().top(), style->pixelMetric(QStyle::PM_LayoutTopMargin));
    QCOMPARE(grid->contentsMargins().right(), style->pixelMetric(QStyle::PM_LayoutRightMargin));
}

void tst_FourPsForm::referenceRowLayoutStartsEmpty()
{
    const Form& form = *m_untouched;
    QCOMPARE(form.ui.RefFileLayout->parentWidget(), form.ui.frame_11);
    QCOMPARE(form.ui.RefFileLayout->count(), 0);
    QVERIFY(form.ui.widget_10->children().isEmpty());
}

void tst_FourPsForm::layoutsOfPlainWidgetsHaveNoMargins()
{
    const Form& form = *m_untouched;
    for (const QWidget* w : form.widgets) {
        if (w->metaObject() == &QWidget::staticMetaObject && w->layout()) {
            QVERIFY2(w->layout()->contentsMargins().isNull(), qPrintable(w->objectName()));
        }
    }
}

void tst_FourPsForm::gridLayoutsOfTheFormHaveVerticalSpacing3()
{
    const Form& form = *m_untouched;
    for (const QWidget* w : form.widgets) {
        const auto* grid = qobject_cast<const QGridLayout*>(w->layout());
        if (grid && !qobject_cast<const AFileSelect*>(w)) {
            QVERIFY2(grid->verticalSpacing() == 3, qPrintable(grid->objectName()));
        }
    }
}

void tst_FourPsForm::formCreatesNoButtonGroup()
{
    const Form& form = *m_untouched;
    QVERIFY(form.frame.findChildren<QButtonGroup*>().isEmpty());
}

void tst_FourPsForm::formRequestsTheExpectedTranslations()
{
    RecordingTranslator translator(1);
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const Form form;
    QStringList unknown;
    for (const QString& text : translator.requested) {
        if (!tests::panelTexts.contains(text)) {
            unknown.append(text);
        }
    }
    unknown.sort();
    QCOMPARE(unknown, untranslated);
    // Every visible text is requested from the translator.
    for (const Control& control : controls) {
        QVERIFY2(!control.text || translator.requested.contains(control.text), control.name);
    }
}

void tst_FourPsForm::noTextIsCutOffAtTheDesignedSize()
{
    Form form;
    form.frame.show();
    QCOMPARE(cutOffTexts(form), QStringList());
    QVERIFY(form.frame.height() == 673);
}

void tst_FourPsForm::textsOfDoubleLengthAreNotCutOff()
{
    RecordingTranslator doubled(2);
    QVERIFY(QCoreApplication::installTranslator(&doubled));
    Form form;
    QCOMPARE(form.ui.label_22->text(), QString("XAFS spectraXAFS spectra"));
    form.frame.show();
    QCOMPARE(cutOffTexts(form), QStringList());
}

QTEST_MAIN(tst_FourPsForm)
#include "tst_FourPsForm.moc"
