// The widgets of the panel, without a panel and without connections.
#pragma once

#include "display/DispMBase.h"
#include "display/Displays.h"
#include "panel/Widgets.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "rows/RefFiles.h"
#include "ui_FourPs.h"

#include <QButtonGroup>
#include <QSignalBlocker>

#include <memory>
#include <vector>

namespace tests
{

/// Creates the widgets that panel::Widgets lists. They are not connected to each other, so
/// changing a widget starts no calculation.
class UnconnectedWidgets
{
public:
    UnconnectedWidgets()
    {
        form.setupUi(&frame);
        for (int i = 0; i < 4; ++i) {
            auto* row = new ARefFile;
            form.RefFileLayout->addWidget(row);
            references.RefRows.append(row);
            list.spectra.append(row->XafsFS);
        }
        list.spectra.append(form.TargetFile);
        for (int i = 0; i < 8; ++i) {
            m_points.push_back(std::make_unique<AEPoint>());
            list.points.append(m_points.back().get());
            mapRows.addButton(list.points.last()->ShowMapB);
        }
        for (QAbstractButton* radio : {form.MapRatio1, form.MapC1, form.MapValence}) {
            mapRadios.addButton(radio);
        }
        for (QAbstractButton* radio : {form.NNone, form.NBySubPre, form.NByEJ, form.NBy2Vics}) {
            normRadios.addButton(radio);
        }
        for (QButtonGroup* group : {&mapRadios, &mapRows, &normRadios}) {
            group->setExclusive(false);
        }
        list.form = &form;
        list.references = &references;
        list.energyList = &energyList;
        list.mapFiles = &mapFiles;
        list.graphs = &graphs;
        list.resultMap = &resultMap;
        list.dataMap = &dataMap;
        list.mapRadios = &mapRadios;
        list.mapRows = &mapRows;
        list.normRadios = &normRadios;
    }

    /// Resets the widgets for the next test case: clears the fields and unchecks the buttons
    /// of the form and of the energy rows, removes the spectra and the measured maps, and
    /// resets the view ranges, limits and value fields of the map windows. The unchecked
    /// buttons become non-exclusive, so every button of a group can be unchecked.
    void reset()
    {
        for (QObject* parent : parents()) {
            const QSignalBlocker quiet(parent);
            for (auto* edit : parent->findChildren<QLineEdit*>()) {
                edit->clear();
            }
            for (auto* button : parent->findChildren<QAbstractButton*>()) {
                const QSignalBlocker quietButton(button);
                button->setAutoExclusive(false);
                button->setChecked(false);
            }
        }
        for (AXafsFileSelect* spectrum : std::as_const(list.spectra)) {
            static_cast<AMutE&>(*spectrum) = AMutE();
        }
        for (AEPoint* row : std::as_const(list.points)) {
            row->clear();
            row->loaded = false;
        }
        for (DispMBase* window : {&resultMap, &dataMap}) {
            window->clearScale();
            window->setZRange(0.0, 1.0);
            window->Val->clear();
        }
    }

    AEPoint* point(int i) const { return list.points.at(i); }
    ARefFile* reference(int i) const { return references.RefRows.at(i); }

    QFrame frame;
    Ui_FourPs form;
    RefFiles references;
    QLineEdit energyList;
    AFileSelect mapFiles;
    Displays graphs;
    DispMBase resultMap;
    DispMBase dataMap;
    QButtonGroup mapRadios;
    QButtonGroup mapRows;
    QButtonGroup normRadios;
    panel::Widgets list; ///< pointers to the widgets above

private:
    /// The parent objects of the fields and buttons that reset() changes.
    QList<QObject*> parents()
    {
        QList<QObject*> all{&frame};
        for (AEPoint* row : std::as_const(list.points)) {
            all.append(row);
        }
        return all;
    }

    std::vector<std::unique_ptr<AEPoint>> m_points;
};

} // namespace tests
