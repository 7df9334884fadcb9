// A panel that the tests of calculations share, and the inputs of the core in it.
#pragma once

#include "display/Histgram.h"
#include "support/PanelInputs.h"
#include "support/SharedPanel.h"

#include <QAbstractButton>
#include <QLineEdit>

#include <memory>
#include <utility>

namespace tests
{

/// Sets a button whatever the others of its group, without any reflex.
inline void setQuietly(QAbstractButton* button, bool checked)
{
    const QSignalBlocker quiet(button);
    const bool exclusive = button->autoExclusive();
    button->setAutoExclusive(false);
    button->setChecked(checked);
    button->setAutoExclusive(exclusive);
}

/// The histograms of valence and total, then those of the references.
inline QList<Histgram*> allHistograms(const FourPs& panel)
{
    return QList<Histgram*>{panel.HistV, panel.HistT} + panel.HistRatio + panel.HistDMut;
}

/// Must be made when there is an application, as by QTEST_MAIN.
class CalculationPanel
{
public:
    CalculationPanel()
    {
        for (QLineEdit* edit : m_panel->findChildren<QLineEdit*>()) {
            m_texts.append({edit, edit->text()});
        }
        for (QAbstractButton* button : m_panel->findChildren<QAbstractButton*>()) {
            m_choices.append({button, button->isChecked()});
        }
    }

    ~CalculationPanel() { closePanel(m_panel); }

    CalculationPanel(const CalculationPanel&) = delete;
    CalculationPanel& operator=(const CalculationPanel&) = delete;

    FourPs& operator*() const { return *m_panel; }

    /// As at the start of the program, without any reflex.
    void reset()
    {
        resetPanel(*m_panel);
        for (const auto& [edit, text] : std::as_const(m_texts)) {
            const QSignalBlocker quiet(edit);
            edit->setText(text);
        }
        for (const auto& [button, checked] : std::as_const(m_choices)) {
            setQuietly(button, checked);
        }
        m_panel->TargetV = 0.0;
        m_panel->TargetT = 0.0;
        delete std::exchange(m_panel->LCFMut, nullptr);
        for (Histgram* histogram : allHistograms(*m_panel)) {
            histogram->init();
        }
    }

private:
    std::unique_ptr<FourPs> m_panel = std::make_unique<FourPs>();
    QList<std::pair<QLineEdit*, QString>> m_texts;
    QList<std::pair<QAbstractButton*, bool>> m_choices;
};

inline QString allDigits(double value)
{
    return QString::number(value, 'g', 17);
}

/// The choices of @p inputs alone.
inline void enterChoices(FourPs& panel, const PanelInputs& inputs)
{
    const Ui_FourPs& ui = panel.ui;
    const QList<std::pair<QAbstractButton*, bool>> choices{
        {ui.TypeNonEquiv, inputs.radios.nonEquivalent},
        {ui.radioButton, !inputs.radios.nonEquivalent},
        {ui.TypeTMKisExact, inputs.radios.exact},
        {ui.TypeTMKisLS, inputs.radios.leastSquare},
        {ui.NonEquivBGLinear, inputs.radios.linearBackground},
        {ui.NonEquivBGVic, !inputs.radios.linearBackground},
        {ui.SubPostEforRef, inputs.subPostForRef},
        {ui.SubPreEforRef, !inputs.subPostForRef},
        {ui.SubPostEforTarget, inputs.subPostForTarget},
        {ui.SubPreEforTarget, !inputs.subPostForTarget}};
    for (const auto& [button, checked] : choices) {
        setQuietly(button, checked);
    }
}

/// Brings all of @p inputs into the panel, with all digits and without any reflex.
inline void enterInputs(FourPs& panel, const PanelInputs& inputs)
{
    enterChoices(panel, inputs);
    for (int i = 0; i < 4; ++i) {
        const auto row = static_cast<std::size_t>(i);
        static_cast<AMutE&>(*panel.XafsFiles.at(i)) = inputs.spectra.at(row);
        setQuietly(panel.Refs.RefRows.at(i)->UseCB, inputs.used.at(row));
        panel.Refs.RefRows.at(i)->Valence->setText(allDigits(inputs.valences.at(row)));
    }
    static_cast<AMutE&>(*panel.ui.TargetFile) = inputs.target;
    for (int i = 0; i < inputs.points.size(); ++i) {
        const analysis::PointState& point = inputs.points.at(i);
        AEPoint* row = panel.EPoints.at(i);
        static_cast<A2DData&>(*row) = inputs.maps.at(static_cast<std::size_t>(i));
        row->loaded = point.hasMap;
        setQuietly(row->UseCB, point.used);
        setQuietly(row->VPointCB, point.vPoint);
        setQuietly(row->LCFCB, point.inFit);
        row->Energy->setText(allDigits(point.energy));
        for (int k = 0; k < row->mutEdits.size(); ++k) {
            row->mutEdits.at(k)->setText(allDigits(point.mut.at(static_cast<std::size_t>(k))));
        }
        row->MutT->setText(allDigits(point.mutT));
    }
}

} // namespace tests
