#pragma once

#include "actions/InterruptedTransfer.h"

#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

/// The steps of a transfer as lines of the journal, without number and line end: what of `transfer` belongs
/// to the step.
std::string journalLineForStaging(const InterruptedTransfer& transfer);
std::string journalLineForNaming(const InterruptedTransfer& transfer);
std::string journalLineForClaiming(const InterruptedTransfer& transfer);
inline constexpr std::string_view journalLineForRemoving = "removing";
inline constexpr std::string_view journalLineForEnd = "end";

/// All that is known of a transfer, as whole lines with its number.
std::string journalLinesOf(const InterruptedTransfer& transfer);

/// The transfers that a journal does not see the end of, in its order. What is no whole line of a journal is
/// passed over, as is a hidden name that is none of ours.
std::vector<InterruptedTransfer> readJournal(std::string_view content);

} // namespace brimwick
