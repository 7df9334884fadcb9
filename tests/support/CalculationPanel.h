// Enters PanelInputs, the inputs of the calculation core, into a real panel.
#pragma once

#include "display/Histgram.h"
#include "support/PanelInputs.h"
#include "support/SharedPanel.h"

#include <QAbstractButton>
#include <QLineEdit>

#include <utility>

namespace tests
{

/// Checks or unchecks a button. Its signals are blocked and its autoExclusive is switched off
/// meanwhile, so no slot runs and the other buttons of its group keep their state.
inline void setWithoutSignals(QAbstractButton* button, bool checked)
{
    const QSignalBlocker quiet(button);
    const bool exclusive = button->autoExclusive();
    button->setAutoExclusive(false);
    button->setChecked(checked);
    button->setAutoExclusive(exclusive);
}

/// All histograms of a panel, in this order: valence, total dMut, the ratio histograms of
/// the references, the dMut histograms of the references.
inline QList<Histgram*> allHistograms(const FourPs& panel)
{
    return QList<Histgram*>{panel.HistV, panel.HistT} + panel.HistRatio + panel.HistDMut;
}

inline QString allDigits(double value)
{
    return QString::number(value, 'g', 17);
}

/// Sets only the radio buttons that choose the method, the background and the pre-edge or
/// post-edge subtraction. Emits no signals.
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
        setWithoutSignals(button, checked);
    }
}

/// Sets all inputs in @p inputs: choices, spectra, maps and numbers. Numbers are written
/// with 17 significant digits, so parsing the text returns the same double. Buttons are
/// set without signals.
inline void enterInputs(FourPs& panel, const PanelInputs& inputs)
{
    enterChoices(panel, inputs);
    for (int i = 0; i < 4; ++i) {
        const auto row = static_cast<std::size_t>(i);
        static_cast<AMutE&>(*panel.XafsFiles.at(i)) = inputs.spectra.at(row);
        setWithoutSignals(panel.Refs.RefRows.at(i)->UseCB, inputs.used.at(row));
        panel.Refs.RefRows.at(i)->Valence->setText(allDigits(inputs.valences.at(row)));
    }
    static_cast<AMutE&>(*panel.ui.TargetFile) = inputs.target;
    for (int i = 0; i < inputs.points.size(); ++i) {
        const analysis::PointState& point = inputs.points.at(i);
        AEPoint* row = panel.EPoints.at(i);
        static_cast<A2DData&>(*row) = inputs.maps.at(static_cast<std::size_t>(i));
        row->loaded = point.hasMap;
        setWithoutSignals(row->UseCB, point.used);
        setWithoutSignals(row->VPointCB, point.vPoint);
        setWithoutSignals(row->LCFCB, point.inFit);
        row->Energy->setText(allDigits(point.energy));
        for (int k = 0; k < row->mutEdits.size(); ++k) {
            row->mutEdits.at(k)->setText(allDigits(point.mut.at(static_cast<std::size_t>(k))));
        }
        row->MutT->setText(allDigits(point.mutT));
    }
}

} // namespace tests
