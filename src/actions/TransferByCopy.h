#pragma once

#include "actions/Destination.h"
#include "actions/TransferContext.h"

#include <tl/expected.hpp>

#include <cstdint>
#include <string>
#include <vector>

namespace brimwick {

/// An item and where it shall lie.
struct PlannedTransfer {
    std::string source;
    Destination destination;
    /// What its files hold, in bytes, if that is known; 0 otherwise.
    std::int64_t size = 0;
};

/// Copies files, symbolic links (themselves) and whole folders into one folder, in which all destinations
/// lie, and removes the sources if they are to be moved. Replaces nothing: a taken name makes it try the next
/// one. Every item is copied under a hidden name first; all copies are made durable at once and get their
/// names in order; then the sources go, each if it still is what was copied. What is removed is durable once
/// the changed folders of the context are.
///
/// The paths at which the items lie in the end, in their order, and in place of the first that failed the
/// reason. That one and those after it are as they were, and nothing of them is left behind, unless the error
/// says so.
std::vector<tl::expected<std::string, FileError>> transferByCopy(const std::vector<PlannedTransfer>& planned,
                                                                 bool isMove, const TransferContext& context);

} // namespace brimwick
