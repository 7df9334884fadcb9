#include "random/PanelChecks.h"

#include "display/MarkLines.h"
#include "panel/FourPs.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "rows/AXafsFileSelect.h"
#include "support/PanelTools.h"
#include "support/ShownPictures.h"

namespace tests
{

PanelChecks::PanelChecks(FourPs& panel)
    : m_panel(panel)
    , m_result(resultOf(panel))
    , m_written(panel)
{
    followCalculations();
    followLimits();
}

// Qt calls the slots of a signal in the order of their connection. The panel connected its
// slots earlier, so its calculation is complete when the slots of PanelChecks run.
void PanelChecks::followCalculations()
{
    const auto ended = [this] { calculationEnded(); };
    const auto& ui = m_panel.ui;
    connect(&m_panel.Refs, &RefFiles::changedUse, this, ended);
    for (const AEPoint* row : std::as_const(m_panel.EPoints)) {
        connect(row, &AEPoint::changedCB, this, ended);
    }
    for (const AXafsFileSelect* row : std::as_const(m_panel.XafsFiles)) {
        connect(row, &AFileSelect::newFilePath, this, ended);
        connect(row, &AXafsFileSelect::updated, this, ended);
    }
    connect(ui.DispFSelect, &AFileSelect::newFilePaths, this, [this] {
        if (m_panel.DispMuts != m_spectra) { // unchanged if none of the files was a spectrum
            calculationEnded();
        }
    });
    connect(ui.CalcMapB, &QPushButton::clicked, this, ended);
    connect(ui.WriteB, &QPushButton::clicked, this, [this] { writeEnded(); });
    for (const QRadioButton* radio :
         {ui.TypeNonEquiv, ui.NonEquivBGLinear, ui.SubPostEforRef, ui.SubPostEforTarget}) {
        connect(radio, &QRadioButton::toggled, this, ended);
    }
    for (const QLineEdit* edit : {ui.EdgeE, ui.PreEEndDE, ui.PostEStartDE}) {
        connect(edit, &QLineEdit::editingFinished, this, ended);
    }
    for (const auto id : {Displays::DMuts, Displays::DTarget}) {
        const MarkLines* set = m_panel.Disps->frame(id)->DispA->markLines;
        connect(set, &MarkLines::moving, this, ended);
        connect(set, &MarkLines::newPos, this, ended);
    }
}

void PanelChecks::followLimits()
{
    for (const DispMBase* map : {m_panel.MapDisp, m_panel.DMapDisp}) {
        for (const QLineEdit* edit : {map->MinV, map->MaxV}) {
            // setText() clears the modified flag; typing sets it.
            connect(edit, &QLineEdit::textChanged, this, [this, edit] {
                edit->isModified() ? void(m_inTyping.insert(edit)) : void(m_inTyping.remove(edit));
            });
            connect(edit, &QLineEdit::editingFinished, this,
                    [this, edit] { m_inTyping.remove(edit); });
        }
    }
}

void PanelChecks::calculationEnded()
{
    const ExpectedResult expected(m_panel);
    ++m_calculations;
    if (!expected.isRefused()) {
        ++m_results;
        m_result = expected.calculated(m_result);
    }
    checkResult();
}

void PanelChecks::writeEnded()
{
    calculationEnded();
    if (const QString wrong = m_written.check(); !wrong.isEmpty()) {
        addError(wrong);
    }
}

void PanelChecks::checkResult()
{
    const MapResult found = resultOf(m_panel);
    if (const QString difference = differenceOf(found, m_result); !difference.isEmpty()) {
        addError(QStringLiteral("the result differs from the reference implementation: ") +
                 difference);
        m_result = found; // so each difference is reported only once
    }
}

void PanelChecks::beforeAction(int action)
{
    m_written.ignoreOldMessages();
    m_copies.keep(m_panel.BaseData, action);
    m_spectra = m_panel.DispMuts;
}

QStringList PanelChecks::afterAction(const QStringList& stalePictures)
{
    if (!m_copies.areUnchanged()) {
        addError(QStringLiteral("a calculation changed the copy of an earlier result"));
    }
    checkResult(); // nothing except a calculation may change the result
    checkLimits(m_panel.MapDisp);
    checkLimits(m_panel.DMapDisp);
    checkPictures(stalePictures);
    return std::exchange(m_errors, {});
}

// Compares the limits in the fields with the limits of the colour bar. The fields of the
// result map can also show these limits swapped, because its lower limit can be above its
// upper limit.
// Compares numbers instead of texts, because the program keeps a typed text that does not
// change the limit.
void PanelChecks::checkLimits(const DispMBase* map)
{
    const auto shown = [](const QLineEdit* edit) { return sixDigits(edit->text().toDouble()); };
    const QString low = sixDigits(map->CBar->zmin);
    const QString high = sixDigits(map->CBar->zmax);
    const bool isLowTyped = m_inTyping.contains(map->MinV);
    const bool isHighTyped = m_inTyping.contains(map->MaxV);
    const bool isShown =
        (isLowTyped || shown(map->MinV) == low) && (isHighTyped || shown(map->MaxV) == high);
    const bool isReversed = map == m_panel.MapDisp && (isLowTyped || shown(map->MinV) == high) &&
                            (isHighTyped || shown(map->MaxV) == low);
    if (!isShown && !isReversed) {
        addError(QStringLiteral("%1: limits [%2, %3], shown [%4, %5]")
                     .arg(map->Title->text(), low, high, map->MinV->text().left(40),
                          map->MaxV->text().left(40)));
    }
}

// Compares each visible surface with a full repaint. Hidden surfaces have no picture.
void PanelChecks::checkPictures(const QStringList& stalePictures)
{
    const QList<ShownPicture> shown = shownPictures(m_panel);
    QStringList outdated = differences(shown, repaintedPictures(m_panel));
    for (const QString& name : stalePictures) {
        outdated.removeAll(name);
    }
    if (!outdated.isEmpty()) {
        addError(QStringLiteral("stale picture: ") + outdated.join(u", "));
    }
}

void PanelChecks::addError(const QString& text)
{
    m_errors.append(text);
}

} // namespace tests
