// Messages of calculations that are refused or warned about.
#pragma once

namespace analysis
{

/// All messages of the checks before a calculation, without their texts. "number" and
/// "needed" below are the members of Message.
enum class MessageId {
    NoTargetVPoint,         ///< no V row for the target calculation
    NoMapVPoint,            ///< no V row for the map calculation; the text differs
    FewReferences,          ///< number: used and valid references; a warning only
    FirstReferenceInvalid,  ///< the first used reference has no spectrum
    SecondReferenceInvalid, ///< the second used reference has no spectrum
    ReferenceInvalid,       ///< number: index of the reference row, from 0
    TargetInvalid,          ///< the target has no spectrum
    WrongCount,             ///< number: selected rows; needed: the count that the text states
    TooFewRows,             ///< number: selected rows; needed: the minimum
    NoFitRange,             ///< fewer than two rows mark the range of the fit
    FewFitReferences,       ///< number: used and valid references, too few for the fit
};

/// A message with its numbers; see MessageId.
struct Message {
    MessageId id = MessageId::WrongCount;
    int number = 0;
    int needed = 0;

    bool operator==(const Message& other) const = default;
};

} // namespace analysis
