#pragma once

#include "actions/FileJournal.h"

#include <stop_token>
#include <string>
#include <vector>

namespace brimwick {

/// Puts right what the transfers left that earlier runs did not bring to their end: removes a hidden copy
/// that proves to be one, and finishes a move whose copy was complete. Nothing is removed of which every byte
/// does not lie elsewhere too; nothing is replaced. What lies in folders that are not there, on a disk that
/// is not plugged in say, is left to a later start.
///
/// A line for the user about each transfer that left something. Any thread; blocks until done, or until the
/// token asks to stop, and then the rest is left to the next start as well.
std::vector<std::string> recoverInterrupted(FileJournal& journal, const std::stop_token& stop);

} // namespace brimwick
