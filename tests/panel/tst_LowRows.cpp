// Tests of the heights of fields and buttons in a form.
#include "panel/LowRows.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QVBoxLayout>

namespace
{

/// A frame with one control of each tested kind in a nested widget, and with a dialog as a child.
struct Form {
    Form()
    {
        auto* holder = new QWidget;
        auto* inner = new QVBoxLayout(holder);
        inner->addWidget(edit);
        inner->addWidget(button);
        inner->addWidget(list);
        inner->addWidget(check);
        inner->addWidget(radio);
        inner->addWidget(label);
        auto* outer = new QVBoxLayout(&frame);
        outer->addWidget(holder);
        new panel::LowRows(&frame);
    }

    QFrame frame;
    QLineEdit* edit = new QLineEdit;
    QPushButton* button = new QPushButton(QStringLiteral("Calc."));
    QComboBox* list = new QComboBox;
    QCheckBox* check = new QCheckBox(QStringLiteral("Valence"));
    QRadioButton* radio = new QRadioButton(QStringLiteral("Valence"));
    QLabel* label = new QLabel(QStringLiteral("Valence"));
    QDialog* dialog = new QDialog(&frame);
    QPushButton* dialogButton = new QPushButton(dialog);
};

} // namespace

class tst_LowRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fieldHeightIsLimitedToATextLineAndItsFrame();
    void fieldsButtonsAndListsHaveTheSameHeight();
    void checkBoxesHaveASmallerHeightThanFields();
    void otherWidgetsAndDialogsKeepTheirHeights();
    void fieldHeightFollowsTheFontSize();
    void fieldWidthIsNotLimited();
};

void tst_LowRows::fieldHeightIsLimitedToATextLineAndItsFrame()
{
    const Form form;
    const int line = form.frame.fontMetrics().height();
    QVERIFY(form.edit->maximumHeight() > line);
    QVERIFY(form.edit->maximumHeight() <= line + 8);
    QVERIFY(form.edit->maximumHeight() < form.edit->sizeHint().height());
}

void tst_LowRows::fieldsButtonsAndListsHaveTheSameHeight()
{
    const Form form;
    QCOMPARE(form.button->maximumHeight(), form.edit->maximumHeight());
    QCOMPARE(form.list->maximumHeight(), form.edit->maximumHeight());
}

void tst_LowRows::checkBoxesHaveASmallerHeightThanFields()
{
    const Form form;
    QVERIFY(form.check->maximumHeight() < form.edit->maximumHeight());
    QVERIFY(form.check->maximumHeight() > form.frame.fontMetrics().height());
    QCOMPARE(form.radio->maximumHeight(), form.check->maximumHeight());
}

void tst_LowRows::otherWidgetsAndDialogsKeepTheirHeights()
{
    const Form form;
    QCOMPARE(form.label->maximumHeight(), QWIDGETSIZE_MAX);
    QCOMPARE(form.dialogButton->maximumHeight(), QWIDGETSIZE_MAX);
}

void tst_LowRows::fieldHeightFollowsTheFontSize()
{
    Form form;
    const int before = form.edit->maximumHeight();
    const int line = form.frame.fontMetrics().height();
    QFont font = form.frame.font();
    font.setPointSizeF(2.0 * font.pointSizeF());
    form.frame.setFont(font);
    QCOMPARE(form.edit->maximumHeight() - before, form.frame.fontMetrics().height() - line);
    QVERIFY(form.edit->maximumHeight() > before);
}

void tst_LowRows::fieldWidthIsNotLimited()
{
    const Form form;
    QCOMPARE(form.edit->maximumWidth(), QWIDGETSIZE_MAX);
}

QTEST_MAIN(tst_LowRows)
#include "tst_LowRows.moc"
