// Functions that set up a panel and read its state.
#pragma once

#include "panel/FourPs.h"
#include "rows/AEPoint.h"
#include "rows/ARefFile.h"
#include "support/SpectrumSetup.h"

#include <QSignalBlocker>
#include <QStringList>

#include <vector>

namespace tests
{

// Error messages that the target calculation and the map calculation have in common.
inline const QString fewReferences =
    QStringLiteral("Number of valied Ref Files is %1, which is less than 2.");
inline const QString wrongCount = QStringLiteral("Number of selected data sets %1 is not %2.");

// Error message of the fit if fewer than two rows are marked.
inline const QString noFitRange =
    QStringLiteral("Energy Range is not selected, which should by selected by CB of TR.");

/// The non-empty lines of the message box.
inline QStringList messages(const FourPs& panel)
{
    return panel.ui.Message->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

inline void clearMessages(FourPs& panel)
{
    panel.ui.Message->clear();
}

/// A number formatted as the fields show it.
inline QString sixDigits(double value)
{
    return QString::number(value, 'g', 6);
}

/// Sets a field's text and emits editingFinished(), as if the user had typed it and left
/// the field.
inline void enter(QLineEdit* edit, const QString& text)
{
    edit->setText(text);
    Q_EMIT edit->editingFinished();
}

/// Marks the spectrum of a reference row as valid and sets constant pre-edge and post-edge
/// lines, so the edge jump is @p jump at every edge energy. Does not change the points.
inline void makeReferenceValid(FourPs& panel, int row, double jump = 1.0)
{
    AMutE& spectrum = *panel.XafsFiles.at(row);
    spectrum.valid = true;
    spectrum.preLine = {};
    spectrum.postLine = {jump, 0.0, 0.0};
}

inline void makeTargetValid(FourPs& panel)
{
    panel.ui.TargetFile->valid = true;
}

/// Sets the numbers of an energy row. Does not emit editingFinished().
inline void setPoint(FourPs& panel, int row, const QString& energy, const QString& r1,
                     const QString& r2, const QString& target = {})
{
    AEPoint* point = panel.EPoints.at(row);
    point->Energy->setText(energy);
    point->Mut1->setText(r1);
    point->Mut2->setText(r2);
    point->MutT->setText(target);
}

/// Sets the map of an energy row. The map has the height 1 and the absorbances @p muts.
inline void setMap(FourPs& panel, int row, const QList<double>& muts)
{
    AEPoint* point = panel.EPoints.at(row);
    point->clear();
    for (const double mut : muts) {
        point->rows.append({static_cast<double>(point->rows.size()), 0.5, mut, 0.0, {}});
    }
    point->xNum = static_cast<int>(muts.size());
    point->yNum = 1;
    point->loaded = true;
}

/// Puts the given energy rows in use and all others out of use.
inline void useRows(FourPs& panel, const QList<int>& rows)
{
    for (int i = 0; i < panel.EPoints.size(); ++i) {
        panel.EPoints.at(i)->UseCB->setChecked(rows.contains(i));
    }
}

/// Puts the given references in use and all others out of use, without signals.
inline void useReferences(FourPs& panel, const QList<int>& rows)
{
    for (int i = 0; i < panel.Refs.RefRows.size(); ++i) {
        const QSignalBlocker quiet(panel.Refs.RefRows.at(i)->UseCB);
        panel.Refs.RefRows.at(i)->UseCB->setChecked(rows.contains(i));
    }
}

/// Checks one button of an exclusive group. Meanwhile, blocks the signals of all buttons
/// below its parent widget.
inline void chooseWithoutSignals(QAbstractButton* button)
{
    std::vector<QSignalBlocker> quiet;
    const auto neighbours = button->parentWidget()->findChildren<QAbstractButton*>();
    for (QAbstractButton* neighbour : neighbours) {
        quiet.emplace_back(neighbour);
    }
    button->setChecked(true);
}

/// Chooses the four-point family, without signals.
inline void chooseFourPoints(FourPs& panel)
{
    chooseWithoutSignals(panel.ui.radioButton);
}

/// Sets up the three-point method with the fraction a = 1/2 and, for maps, the thickness
/// 1. The references have the valences 2 and 3. The first three energy rows are in use. The
/// V row and the references in use are not changed; they must be the third row and the
/// first two references, as in a new panel.
inline void prepareThreePoints(FourPs& panel)
{
    chooseFourPoints(panel);
    makeReferenceValid(panel, 0);
    makeReferenceValid(panel, 1);
    makeTargetValid(panel);
    panel.Refs.RefRows.at(0)->Valence->setText(QStringLiteral("2"));
    panel.Refs.RefRows.at(1)->Valence->setText(QStringLiteral("3"));
    useRows(panel, {0, 1, 2});
    setPoint(panel, 0, "8313", "0", "0", "1");
    setPoint(panel, 1, "8381", "4", "4", "5");
    setPoint(panel, 2, "8390", "3", "1", "3");
    clearMessages(panel);
}

/// Calls prepareThreePoints() and sets one-pixel maps in the three rows.
inline void prepareThreePointMaps(FourPs& panel)
{
    prepareThreePoints(panel);
    setMap(panel, 0, {1});
    setMap(panel, 1, {5});
    setMap(panel, 2, {3});
}

/// Sets up the four-point methods with four energy rows. The V row is not changed; it must
/// be the third row, as in a new panel. The target is half the sum of the two references, so
/// the exact method and the least-squares method both calculate a = 1/2 and t/ts = 1.
inline void prepareFourPoints(FourPs& panel)
{
    prepareThreePoints(panel);
    useRows(panel, {0, 1, 2, 3});
    setPoint(panel, 0, "0", "1", "3", "2");
    setPoint(panel, 1, "1", "2", "3", "2.5");
    setPoint(panel, 2, "2", "8", "2", "5");
    setPoint(panel, 3, "5", "4", "9", "6.5");
}

} // namespace tests
