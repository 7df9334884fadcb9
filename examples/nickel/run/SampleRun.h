// Loads the nickel sample into aelk's panel, runs the calculations and checks the results.
#pragma once

#include "SampleOutcome.h"

#include <QDir>
#include <QList>
#include <QString>

#include <vector>

class FourPs;
class QAbstractButton;
class QLineEdit;
class QWidget;

namespace nickel
{
struct CombinationForm;
struct Image;
struct MapForm;
struct ShareForm;
struct Target;
} // namespace nickel

/// Loads the sample through the slots of the file rows, calculates, writes result maps
/// and checks the results against their expected values.
class SampleRun
{
public:
    /// @param panel   a newly constructed panel
    /// @param sample  folder of the sample's files
    /// @param output  existing folder for the result maps
    SampleRun(FourPs& panel, const QDir& sample, const QDir& output);

    /// Loads the references, the first target and the first image, and sets the valences
    /// and the edge energy. A missing file leaves its row empty, and the checks then
    /// fail.
    void load();

    /// Calculates the target and the maps by the non-equivalent method, with the references
    /// and the background of @p form. Writes the result map and both histogram files, and
    /// checks the results.
    SampleOutcome calculate(const nickel::ShareForm& form);

    /// Fits the loaded target, which must be the target of @p form, by a linear combination
    /// and checks the results. Call load() first.
    SampleOutcome calculate(const nickel::CombinationForm& form);

    /// Calculates the target and the maps by a form of the four-point family, with the
    /// first image, the first target and the first two references. Writes the result map and
    /// both histogram files, and checks the results.
    SampleOutcome calculate(const nickel::MapForm& form);

    /// Loads the first target and the first image if they are not loaded. Chooses the default
    /// method and background, puts the first two references and all maps of the image in use,
    /// and unchecks the record boxes of the shares. Removes the points of the comparison plot.
    /// Finally calculates the target and the maps.
    void restart();

    /// The main window, the graph window, the result map, and the window of the measured
    /// map at the highest energy.
    QList<QWidget*> windows() const;

private:
    void loadReferences();
    void loadFiles(const nickel::Image& image, const nickel::Target& target);
    void typeInto(QLineEdit* field, const QString& text);
    void turn(QAbstractButton* button, bool on);
    void useReferences(std::size_t count);
    void useRows(const std::vector<std::size_t>& rows);
    void recordShares(std::size_t count);
    void chooseSolver(const nickel::MapForm& form);
    void clearResults();
    void calculateTarget();
    bool write(const QString& path);
    QList<TargetCheck> checkTarget(const nickel::ShareForm& form) const;
    QList<MapCheck> checkMap(const nickel::ShareForm& form) const;
    QList<MapCheck> checkMap(const nickel::MapForm& form) const;
    bool isComplete(const nickel::Image& image) const;

    FourPs& panel;
    QDir sample;
    QDir output;
    const nickel::Image* loaded = nullptr; ///< the image whose maps are loaded
};
