// The connections between the widgets of the panel and its slots.
#pragma once

#include "display/DispMBase.h"
#include "display/Displays.h"
#include "display/MarkLines.h"
#include "panel/EdgeMarks.h"
#include "panel/Widgets.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "rows/RefFiles.h"
#include "ui_FourPs.h"

#include <QButtonGroup>

#include <initializer_list>

namespace panel
{

/// Connects the signals of the widgets to the slots of the panel and of other widgets. Call
/// each function once: a second call would make the connections a second time.
///
/// @tparam Panel  the class with the slots: FourPs, or a mock that records slot calls
template <class Panel>
class Wiring
{
public:
    /// @param widgets  must be complete and must outlive this object
    /// @param panel    receives the signals in its slots
    Wiring(const Widgets& widgets, Panel* panel)
        : m_widgets(widgets)
        , m_form(*widgets.form)
        , m_panel(panel)
    {
    }

    /// Connects both sets of marker lines.
    void connectMarks(const EdgeMarks& marks) const
    {
        connect(marks.singleSpectrum, &MarkLines::moving, m_widgets.graphs, &Displays::update);
        for (const MarkLines* set : {marks.allSpectra, marks.singleSpectrum}) {
            connect(set, &MarkLines::moving, m_panel, &Panel::setEdge);
            connect(set, &MarkLines::newPos, m_panel, &Panel::setEdge);
            connect(set, &MarkLines::newPos, m_panel, &Panel::calcBoth);
        }
    }

    /// Makes the connections that do not involve marker lines.
    void connectAll() const
    {
        connectReferences();
        connectEnergyRows();
        connectFileRows();
        connectButtons();
        connectConditions();
        connectGraphs();
        connectMaps();
    }

private:
    template <class Sender, class Signal, class Receiver, class Slot>
    static void connect(const Sender* sender, Signal signal, const Receiver* receiver, Slot slot)
    {
        QObject::connect(sender, signal, receiver, slot);
    }

    void connectReferences() const
    {
        const RefFiles* references = m_widgets.references;
        for (const ARefFile* row : references->RefRows) {
            connect(row, &ARefFile::changedUse, references, &RefFiles::changedUse);
            connect(row, &ARefFile::selectedFile, references, &RefFiles::selectedFile);
            connect(row, &ARefFile::foundNewEdge, m_panel, &Panel::noticedNewEdge);
        }
        connect(references, &RefFiles::changedUse, m_panel, &Panel::calcBoth);
    }

    void connectEnergyRows() const
    {
        for (const AEPoint* row : m_widgets.points) {
            connect(row, &AEPoint::newDir, m_panel, &Panel::receiveNewDir);
            connect(row, &AEPoint::newEnergy, m_panel, &Panel::receiveNewEnergy);
            connect(row, &AEPoint::changedCB, m_panel, &Panel::calcBoth);
            connect(row, &AEPoint::newData, m_panel, &Panel::updateDMap);
        }
        connect(m_widgets.energyList, &QLineEdit::editingFinished, m_panel,
                &Panel::newMultiEnergys);
    }

    void connectFileRows() const
    {
        for (const AXafsFileSelect* row : m_widgets.spectra) {
            connect(row, &AFileSelect::newDir, m_panel, &Panel::receiveNewDir);
            connect(row, &AFileSelect::newFilePath, m_panel, &Panel::receiveNewFile);
            connect(row, &AXafsFileSelect::updated, m_panel, &Panel::calcBoth);
            connect(row, &AXafsFileSelect::updated, m_widgets.graphs, &Displays::update);
        }
        connect(m_form.DispFSelect, &AFileSelect::newDir, m_panel, &Panel::receiveNewDir);
        connect(m_form.DispFSelect, &AFileSelect::newFilePaths, m_panel,
                &Panel::receiveNewDispFiles);
        connect(m_widgets.mapFiles, &AFileSelect::newDir, m_panel, &Panel::receiveNewDir);
        connect(m_widgets.mapFiles, &AFileSelect::newFilePaths, m_panel, &Panel::receiveNewPaths);
        connect(m_form.RemoveAFile, &QPushButton::clicked, m_panel, &Panel::removeAFile);
    }

    void connectButtons() const
    {
        connect(m_form.WriteB, &QPushButton::clicked, m_panel, &Panel::calcAndWrite);
        connect(m_form.CalcTargetB, &QPushButton::clicked, m_panel, &Panel::calcTarget);
        connect(m_form.LCFB, &QPushButton::clicked, m_panel, &Panel::lcf);
        connect(m_form.CalcMapB, &QPushButton::clicked, m_panel, &Panel::calcMap);
    }

    void connectConditions() const
    {
        connect(m_form.TypeNonEquiv, &QRadioButton::toggled, m_panel, &Panel::calcBoth);
        connect(m_form.NonEquivBGLinear, &QRadioButton::toggled, m_panel, &Panel::calcBoth);
        for (const QLineEdit* edit : std::initializer_list<const QLineEdit*>{
                 m_form.EdgeE, m_form.PreEEndDE, m_form.PostEStartDE}) {
            connect(edit, &QLineEdit::editingFinished, m_panel, &Panel::setEdge);
        }
        connect(m_form.SubPostEforRef, &QRadioButton::toggled, m_panel,
                &Panel::changedSubBGTypeForRef);
        connect(m_form.SubPostEforTarget, &QRadioButton::toggled, m_panel,
                &Panel::changedSubBGTypeForTarget);
        connect(m_form.DispCondsB, &QCheckBox::toggled, m_panel, &Panel::dispCalcConditions);
    }

    void connectGraphs() const
    {
        const Displays* graphs = m_widgets.graphs;
        connect(m_form.ShowDAB, &QPushButton::clicked, graphs, &Displays::show);
        connect(graphs, &Displays::draw, m_panel, &Panel::draw);
        const DispABase* comparison = graphs->frame(Displays::DLCFvs4PS);
        connect(comparison, &DispABase::mDClicked, m_panel, &Panel::clearLCFvs4PS);
        connect(comparison, &DispABase::mReleased, m_panel, &Panel::newColorLCFvs4PS);
        const DispABase* spectra = graphs->frame(Displays::DMuts);
        connect(spectra, &DispABase::mPressed, m_panel, &Panel::mPressedInAllMut);
        connect(m_widgets.normRadios, &QButtonGroup::buttonToggled, graphs, &Displays::update);
        connect(m_widgets.normRadios, &QButtonGroup::buttonToggled, spectra,
                &DispABase::clearScale);
        connect(m_form.SelectedFs, &QComboBox::currentIndexChanged, graphs, &Displays::update);
        // The last three buttons only cause a repaint; no graph reads them.
        for (const QAbstractButton* choice : std::initializer_list<const QAbstractButton*>{
                 m_form.HgValence, m_form.HgRatio1, m_form.HgRatio2, m_form.HgRatio3,
                 m_form.HgRatio4, m_form.HgAmount, m_form.HgdMut1, m_form.HgdMut2, m_form.HgdMut3,
                 m_form.HgdMut4, m_form.HgMut0, m_form.HgC1, m_form.HgC2}) {
            connect(choice, &QAbstractButton::toggled, graphs, &Displays::update);
        }
    }

    void connectMaps() const
    {
        const DispMBase* result = m_widgets.resultMap;
        connect(m_form.ShowMap, &QPushButton::clicked, result, &DispMBase::show);
        connect(result, &DispMBase::draw, m_panel, &Panel::drawMap);
        connect(result, &DispMBase::nowPos, m_panel, &Panel::receiveNowPosInMap);
        connect(result, &DispMBase::mDClicked, m_panel, &Panel::dClickedInMap);
        const DispMBase* measured = m_widgets.dataMap;
        connect(m_form.ShowDMap, &QPushButton::clicked, measured, &DispMBase::show);
        connect(measured, &DispMBase::draw, m_panel, &Panel::drawDMap);
        connect(measured, &DispMBase::nowPos, m_panel, &Panel::receiveNowPosInDMap);
        connect(m_form.MapWGrid, &QCheckBox::toggled, m_panel, &Panel::updateMaps);
        connect(m_widgets.mapRadios, &QButtonGroup::buttonToggled, m_panel, &Panel::selectedNewMap);
        connect(m_widgets.mapRows, &QButtonGroup::buttonToggled, m_panel, &Panel::updateDMap);
    }

    const Widgets& m_widgets;
    const Ui_FourPs& m_form;
    Panel* m_panel;
};

} // namespace panel
