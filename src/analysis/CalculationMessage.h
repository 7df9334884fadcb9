// What a calculation has to say when it does not run.
#pragma once

namespace analysis
{

/// Every refusal of a calculation, without its words.
enum class MessageId {
    NoTargetVPoint,         ///< no V row for the target
    NoMapVPoint,            ///< no V row for the maps, in words of its own
    FewReferences,          ///< number: used and valid references; does not stop a run by itself
    FirstReferenceInvalid,  ///< the first used reference has no spectrum
    SecondReferenceInvalid, ///< nor has the second one
    ReferenceInvalid,       ///< number: the reference row, from 0
    TargetInvalid,          ///< the target has no spectrum
    WrongCount,             ///< number: selected rows; needed: as many, whatever it would take
    TooFewRows,             ///< number: selected rows; needed: the least
    NoFitRange,             ///< fewer than two rows bound the range of the fit
    FewFitReferences,       ///< number: used and valid references, too few for the fit
};

/// A refusal with its numbers.
struct Message {
    MessageId id = MessageId::WrongCount;
    int number = 0;
    int needed = 0;

    bool operator==(const Message& other) const = default;
};

} // namespace analysis
