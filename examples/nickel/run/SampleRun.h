// Works aelk's panel on the nickel sample, as a user's hand would.
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

/// Loads the sample through the rows' own slots, calculates, writes result maps
/// and compares them with what the sample is made of.
class SampleRun
{
public:
    /// @param panel  a freshly built panel
    /// @param sample folder of the sample's files
    /// @param output existing folder for the result maps
    SampleRun(FourPs& panel, const QDir& sample, const QDir& output);

    /// Names the references, the first target and the first maps to the rows,
    /// and sets valences and edge. A file that is not there leaves its row
    /// empty; the checks then fail.
    void load();

    /// Calculates target and maps by the non-equivalent method, with the
    /// references, files and background of @p form, writes the result map and
    /// both histograms, and compares.
    SampleOutcome calculate(const nickel::ShareForm& form);

    /// Fits the target of @p form and compares.
    SampleOutcome calculate(const nickel::CombinationForm& form);

    /// The same by a form of the four-points family; the first two references
    /// and the first files have to be in use.
    SampleOutcome calculate(const nickel::MapForm& form);

    /// Back to the first files, two references and the method that the program
    /// starts with.
    void restart();

    /// The program's windows: the main one, the graphs, the result map and the
    /// map measured at the highest energy.
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
    const nickel::Image* loaded = nullptr; ///< the image in the rows
};
