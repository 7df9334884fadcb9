// Refusals and warnings of the checks before a calculation.
#pragma once

namespace analysis
{

/// All messages of the checks before a calculation, without their texts. "number" and
/// "needed" below are the members of Message.
enum class MessageId {
    /// No V row for the target calculation.
    NoTargetVPoint,
    /// No V row for the map calculation; same text as NoTargetVPoint, but without the full
    /// stop.
    NoMapVPoint,
    /// Fewer than two references are used and valid. A warning only: the checks continue.
    /// number: references that are used and valid.
    FewReferences,
    /// The first used reference has no spectrum.
    FirstReferenceInvalid,
    /// The second used reference has no spectrum.
    SecondReferenceInvalid,
    /// A reference has no spectrum. number: index of the reference row, from 0. The check of
    /// a map calculation can report a row that has a spectrum, see
    /// ReferenceSet::rowWithoutValidCounterpart().
    ReferenceInvalid,
    /// The target has no spectrum.
    TargetInvalid,
    /// The method does not accept the number of rows. number: the selected rows, or the rows
    /// that remain after surplus V rows are dropped; needed: the number that the text states.
    WrongCount,
    /// The fit has more unknowns than rows. number: selected rows; needed: the minimum.
    TooFewRows,
    /// No range for the linear combination fit, see FitRange::isSelected().
    NoFitRange,
    /// Too few references for the linear combination fit. number: references that are used
    /// and valid.
    FewFitReferences,
};

/// A message with its numbers; see MessageId.
struct Message {
    MessageId id = MessageId::WrongCount;
    int number = 0;
    int needed = 0;

    bool operator==(const Message& other) const = default;
};

} // namespace analysis
