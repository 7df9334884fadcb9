#include "random/WidgetActions.h"

#include "display/DispMBase.h"
#include "panel/FourPs.h"
#include "random/AllocatedMemory.h"
#include "random/MouseDraws.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "rows/AXafsFileSelect.h"
#include "support/MouseInput.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QTextEdit>

namespace tests
{

namespace
{

// Lengths of texts in characters. QLineEdit truncates longText to its default maximum of
// 32767 characters. Every file path is shorter than ordinaryText.
constexpr int longText = 100000;
constexpr int ordinaryText = 5000;

void pressKey(QWidget* widget, int key, Qt::KeyboardModifiers keys = {}, const QString& text = {})
{
    QKeyEvent press(QEvent::KeyPress, key, keys, text);
    QCoreApplication::sendEvent(widget, &press);
    QKeyEvent release(QEvent::KeyRelease, key, keys, text);
    QCoreApplication::sendEvent(widget, &release);
}

/// Sets the keyboard focus to a widget, as a mouse press does, and activates its window,
/// because shortcuts work only in the active window. Does nothing if the widget is hidden
/// or already has the focus.
void focus(QWidget* widget)
{
    if (widget->isVisible() && !widget->hasFocus()) {
        widget->window()->activateWindow();
        widget->setFocus(Qt::MouseFocusReason);
        QCoreApplication::processEvents();
    }
}

void commit(QWidget* widget, const QString& text)
{
    QInputMethodEvent event;
    event.setCommitString(text);
    QCoreApplication::sendEvent(widget, &event);
}

/// A text that is unusual for a number field or a file name field.
QString unusualText(Draw& draw)
{
    static const QStringList texts{
        "NaN",
        "nan",
        "inf",
        "-inf",
        "1e308",
        "-1e308",
        "1e-320",
        "1e999",
        "x",
        "",
        "0",
        "-0",
        "-3",
        "1,5",
        " 2 ",
        "0x10",
        "8381 8390",
        "1 2 3 4 5 6 7 8 9 10",
        "2147483648",
        "9007199254740993",
        "0.1234567890123456789",
        QString::fromUtf8("\xe4\xba\x8c\xe3\x83\x8b\xe3\x83\x83\xe3\x82\xb1"),
        QString::fromUtf8("\xef\xbc\x93"),
        QString(QChar(0xd800)),
        QString(QChar(0xdc00)) + QStringLiteral("5"),
        QString::fromUtf8("\xf0\x9f\x98\x80"),
        QString(QChar(0x202e)) + QStringLiteral("12")};
    return draw.oneOf(texts);
}

} // namespace

QList<ActionKind> WidgetActions::kinds()
{
    return {
        {"button", 14, [this](Draw& draw) { return pressAny(draw); }},
        {"choice", 16, [this](Draw& draw) { return pressInPanel(draw); }},
        {"calculation", 10, [this](Draw& draw) { return calculate(draw); }},
        {"text", 14, [this](Draw& draw) { return typeAnywhere(draw); }},
        {"long text", 1, [this](Draw& draw) { return typeLongText(draw); }},
        {"number", 16, [this](Draw& draw) { return typeUseful(draw); }},
        {"limit", 6, [this](Draw& draw) { return typeLimit(draw); }},
        {"keys", 3, [this](Draw& draw) { return pressKeys(draw); }},
        {"list of spectra", 3, [this](Draw& draw) { return chooseSpectrum(draw); }},
        {"window", 6, [this](Draw& draw) { return showOrHide(draw); }},
        {"P/D", 3, [this](Draw& draw) { return popOrDock(draw); }},
        {"size", 3, [this](Draw& draw) { return resizeWindow(draw); }},
    };
}

QString WidgetActions::click(QAbstractButton* button, Qt::MouseButton mouse,
                             Qt::KeyboardModifiers keys)
{
    const QString name = PanelWindows::nameOf(button);
    // Click on the indicator: a check box or radio button reacts only there and on its
    // text.
    const QPointF at(std::min(8, button->width() / 2), button->height() / 2);
    press(button, at, mouse, keys);
    release(button, at, mouse, keys);
    return name + (button->isChecked() ? " is on" : "");
}

// Excludes the buttons that open a file dialog: dialogs are slow, and FileActions tests
// them.
QString WidgetActions::pressAny(Draw& draw)
{
    QList<QAbstractButton*> buttons = m_windows.visible<QAbstractButton>();
    buttons.removeIf([](const QAbstractButton* b) { return b->objectName() == u"SelectB"; });
    if (buttons.isEmpty()) {
        return {};
    }
    QAbstractButton* button = draw.oneOf(buttons);
    return draw.onceIn(10) ? click(button, someButton(draw), someKeys(draw)) : click(button);
}

QString WidgetActions::pressInPanel(Draw& draw)
{
    const FourPs& panel = m_windows.panel();
    const auto& ui = panel.ui;
    const AEPoint* row = draw.oneOf(panel.EPoints);
    const ARefFile* reference = draw.oneOf(panel.Refs.RefRows);
    return click(draw.oneOf<QAbstractButton*>(
        {row->UseCB, row->UseCB, row->VPointCB, row->LCFCB, row->ShowMapB, reference->UseCB,
         ui.TypeNonEquiv, ui.radioButton, ui.radioButton, ui.NonEquivBGLinear, ui.NonEquivBGVic,
         ui.MapValence, ui.MapAmount, ui.MapRatio2, ui.MapC1}));
}

QString WidgetActions::calculate(Draw& draw)
{
    const auto& ui = m_windows.panel().ui;
    return click(draw.oneOf<QAbstractButton*>(
        {ui.CalcMapB, ui.CalcMapB, ui.CalcMapB, ui.WriteB, ui.CalcTargetB, ui.LCFB}));
}

void WidgetActions::enterText(QLineEdit* edit, const QString& text)
{
    focus(edit);
    edit->selectAll();
    pressKey(edit, Qt::Key_Delete);
    commit(edit, text);
    pressKey(edit, Qt::Key_Return);
}

QString WidgetActions::type(QLineEdit* edit, Draw& draw)
{
    static const QStringList numbers{"0.5", "1", "2.25", "3", "-1", "8350", "8381", "100", "-50"};
    const QString name = PanelWindows::nameOf(edit);
    const QString text = draw.onceIn(2) ? draw.oneOf(numbers) : unusualText(draw);
    focus(edit);
    if (!draw.onceIn(3)) {
        pressKey(edit, Qt::Key_A, Qt::ControlModifier);
        pressKey(edit, Qt::Key_Delete);
    }
    if (text.size() < 20 && draw.onceIn(2)) {
        for (const QChar letter : text) {
            pressKey(edit, Qt::Key_unknown, {}, letter);
        }
    } else {
        commit(edit, text);
    }
    const bool isConfirmed = !draw.onceIn(2);
    if (isConfirmed) {
        pressKey(edit, draw.onceIn(4) ? Qt::Key_Tab : Qt::Key_Return);
    }
    return QStringLiteral("%1 = %2%3")
        .arg(name, text, isConfirmed ? QStringLiteral(", Enter") : QString());
}

QString WidgetActions::typeAnywhere(Draw& draw)
{
    const QList<QLineEdit*> edits = m_windows.visible<QLineEdit>();
    return edits.isEmpty() ? QString() : type(draw.oneOf(edits), draw);
}

QString WidgetActions::typeLongText(Draw& draw)
{
    const QList<QLineEdit*> edits = m_windows.visible<QLineEdit>();
    if (edits.isEmpty()) {
        return {};
    }
    QLineEdit* edit = draw.oneOf(edits);
    prepareForLongText(edit);
    m_longTexts.removeAll(edit);
    m_longTexts.append(edit);
    const QChar letter = draw.oneOf<QChar>({u'7', u'0', u'x', u' ', QChar(0x4e8c)});
    focus(edit);
    if (!draw.onceIn(3)) {
        pressKey(edit, Qt::Key_A, Qt::ControlModifier);
        pressKey(edit, Qt::Key_Delete);
    }
    commit(edit, QString(longText, letter));
    const bool isConfirmed = draw.onceIn(2);
    if (isConfirmed) {
        pressKey(edit, Qt::Key_Return);
    }
    return QStringLiteral("%1 = %2 times %3%4")
        .arg(PanelWindows::nameOf(edit))
        .arg(longText)
        .arg(letter)
        .arg(isConfirmed ? QStringLiteral(", Enter") : QString());
}

// Inserts a text of the maximum length of the field, restores the earlier text, and adds the
// memory of the undo history to m_fieldMemory. The history has one entry for each inserted or
// deleted character, and clearing the history does not free its memory. A history with more
// entries, such as after a long text is deleted and another is inserted, needs memory that
// m_fieldMemory does not include.
void WidgetActions::prepareForLongText(QLineEdit* edit)
{
    if (m_preparedFields.contains(edit)) {
        return;
    }
    m_preparedFields.insert(edit);
    const QSignalBlocker quiet(edit);
    const QString text = edit->text();
    const double before = allocatedBytes();
    edit->insert(QString(2 * longText, u'0'));
    edit->setText(text);
    m_fieldMemory += allocatedBytes() - before;
}

// Also finds long texts that were not typed into their fields: the program copies the items
// of the typed list of energies to the energy rows.
void WidgetActions::findLongTexts()
{
    for (const QWidget* window : m_windows.all()) {
        const auto edits = window->findChildren<QLineEdit*>();
        for (QLineEdit* edit : edits) {
            if (edit->text().size() > ordinaryText && !m_longTexts.contains(edit)) {
                prepareForLongText(edit);
                m_longTexts.append(edit);
            }
        }
    }
}

void WidgetActions::shortenTexts()
{
    constexpr int maxLongTexts = 2;
    findLongTexts();
    int kept = 0;
    for (qsizetype i = m_longTexts.size() - 1; i >= 0; --i) {
        QLineEdit* edit = m_longTexts.at(i);
        const QString text = edit->text();
        const bool isLong = text.size() > ordinaryText;
        const bool isKept = isLong && text.size() <= longText && kept < maxLongTexts;
        {
            const QSignalBlocker quiet(edit);
            const bool wasTyped = edit->isModified();
            edit->setText(isKept ? text
                                 : text.left(ordinaryText)); // setText() clears the undo history
            edit->setModified(wasTyped);
        }
        if (isKept) {
            ++kept;
            continue;
        }
        m_longTexts.removeAt(i);
        if (isLong) {
            enterText(edit, QStringLiteral("1"));
        }
    }
    if (QApplication::clipboard()->text().size() > ordinaryText) {
        QApplication::clipboard()
            ->clear(); // the text could be pasted into a field that is not prepared
    }
}

// Types numbers into a field that calculations read. Most of them are suitable, so that many
// calculations have a result.
QString WidgetActions::typeUseful(Draw& draw)
{
    const FourPs& panel = m_windows.panel();
    const auto& ui = panel.ui;
    const AEPoint* row = draw.oneOf(panel.EPoints);
    struct Field {
        QLineEdit* edit;
        QStringList texts;
    };
    const QStringList energies{"8313", "8381", "8390", "8404.5", "8460", "8350.25", "8475"};
    const QStringList small{"0.5", "1", "2.25", "3", "-1", "2", "0"};
    const Field field = draw.oneOf<Field>(
        {{row->Energy, energies},
         {draw.oneOf(row->mutEdits), small},
         {draw.oneOf(panel.Refs.RefRows)->Valence, small},
         {draw.oneOf(panel.XafsFiles)->AFileSelect::dE, {"0", "3", "-4"}},
         {ui.EdgeE, {"8350", "8345", "8360"}},
         {draw.oneOf({ui.PreEEndDE, ui.PostEStartDE}), {"-50", "100", "-20", "60"}},
         {panel.MultiEnergys, {"8313 8381 8390 8404.5", "8350", "8313 8381 8390 8404 8460 8475"}},
         {draw.oneOf({ui.HgAFrom, ui.HgATo, ui.HgTFrom, ui.HgTTo}), small},
         {draw.oneOf({ui.HgABoxes, ui.HgTBoxes}), {"5", "51", "1", "0", "1000000", "-3"}}});
    const QString text = draw.oneOf(field.texts);
    enterText(field.edit, text);
    return PanelWindows::nameOf(field.edit) + " = " + text;
}

QString WidgetActions::typeLimit(Draw& draw)
{
    const FourPs& panel = m_windows.panel();
    const DispMBase* map = draw.onceIn(2) ? panel.MapDisp : panel.DMapDisp;
    return !map->MinV->isVisible() ? QString() : type(draw.onceIn(2) ? map->MinV : map->MaxV, draw);
}

QString WidgetActions::pressKeys(Draw& draw)
{
    QWidget* widget = QApplication::focusWidget();
    if (!widget) {
        return {};
    }
    const QString name = PanelWindows::nameOf(widget);
    const int count = 1 + draw.upTo(6);
    for (int i = 0; i < count; ++i) {
        const int key =
            draw.oneOf<int>({Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Space, Qt::Key_Up, Qt::Key_Down,
                             Qt::Key_Home, Qt::Key_End, Qt::Key_Backspace, Qt::Key_Escape});
        if (key != Qt::Key_Space ||
            widget->objectName() != u"SelectB") { // Space on this button opens a dialog
            pressKey(widget, key, {}, key == Qt::Key_Space ? QStringLiteral(" ") : QString());
        }
        widget = QApplication::focusWidget() ? QApplication::focusWidget() : widget;
    }
    for (const int key : {Qt::Key_A, Qt::Key_C, Qt::Key_V, Qt::Key_Z}) {
        if (draw.onceIn(3)) {
            pressKey(widget, key, Qt::ControlModifier);
        }
    }
    return QStringLiteral("%1 from %2").arg(count).arg(name);
}

QString WidgetActions::chooseSpectrum(Draw& draw)
{
    if (draw.onceIn(2)) {
        return click(m_windows.panel().ui.RemoveAFile);
    }
    QComboBox* list = m_windows.panel().ui.SelectedFs;
    focus(list);
    pressKey(list, draw.onceIn(2) ? Qt::Key_Up : Qt::Key_Down);
    turnWheel(list, {5, 5}, {0, draw.onceIn(2) ? 120 : -120});
    return list->currentText();
}

QString WidgetActions::showOrHide(Draw& draw)
{
    const FourPs& panel = m_windows.panel();
    if (draw.onceIn(2)) {
        return click(draw.oneOf({panel.ui.ShowDAB, panel.ui.ShowMap, panel.ui.ShowDMap}));
    }
    QWidget* window = draw.oneOf(m_windows.all());
    const bool isClosed = window->isVisible() && window->close();
    return window->objectName() + (isClosed ? " closed" : "");
}

QString WidgetActions::popOrDock(Draw& draw)
{
    QList<QAbstractButton*> buttons = m_windows.visible<QAbstractButton>();
    buttons.removeIf([](const QAbstractButton* b) { return b->objectName() != u"PopDockB"; });
    return buttons.isEmpty() ? QString() : click(draw.oneOf(buttons));
}

// Large sizes are rare, because the checks repaint all pictures, and large pictures are
// slow.
QString WidgetActions::resizeWindow(Draw& draw)
{
    QWidget* window = draw.oneOf(m_windows.all());
    QSize size(1 + draw.upTo(600), 1 + draw.upTo(400));
    if (draw.onceIn(6)) {
        size = {1, 1};
    } else if (draw.onceIn(40)) {
        size = draw.oneOf<QSize>({{4000, 3000}, {4000, 20}, {20, 3000}, {1920, 1080}});
    }
    window->resize(size);
    return QStringLiteral("%1 %2 x %3")
        .arg(window->objectName())
        .arg(size.width())
        .arg(size.height());
}

} // namespace tests
