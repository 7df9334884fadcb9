// Works aelk's panel on the nickel sample, as a user's hand would.
#pragma once

#include <QDir>
#include <QList>
#include <QString>

class FourPs;
class QLineEdit;

namespace nickel
{
struct MapForm;
}

/// One number of the report: how far off, and how far off is allowed.
struct SampleCheck {
    QString what;
    double measured = 0.0;
    double bound = 0.0;

    /// False also for NaN.
    bool isGood() const { return measured <= bound; }
};

/// What came of one form of the four-points family.
struct FormOutcome {
    QString form;
    QString resultPath; ///< where the result map was to be written
    bool written = false;
    QList<SampleCheck> checks;

    bool isGood() const;
};

/// Loads the sample through the rows' own slots, calculates, writes result maps
/// and compares them with what the sample is made of.
class SampleRun
{
public:
    /// @param panel  a freshly built panel
    /// @param sample folder of the sample's files
    /// @param output existing folder for the result maps
    SampleRun(FourPs& panel, const QDir& sample, const QDir& output);

    /// Names all files to the rows, and sets valences and edge. A file that is
    /// not there leaves its row empty; the checks then fail.
    void load();

    /// Chooses the rows of @p form, calculates target and maps, writes the
    /// result map and both histograms, and compares.
    FormOutcome calculate(const nickel::MapForm& form);

private:
    void loadReferences();
    void typeInto(QLineEdit* field, const QString& text);
    void chooseRows(const nickel::MapForm& form);
    void chooseSolver(const nickel::MapForm& form);
    bool write(const QString& path);
    QList<SampleCheck> checkTarget() const;
    QList<SampleCheck> checkMap(const nickel::MapForm& form) const;

    FourPs& panel;
    QDir sample;
    QDir output;
};
