#include "actions/Recovery.h"

#include "actions/TransferRecovery.h"

#include <algorithm>
#include <exception>
#include <optional>
#include <set>
#include <span>

namespace brimwick {

namespace {

/// Each may hold two folders open.
constexpr std::size_t mostAtOnce = 100;

/// Transfers that are looked at one by one, and whose copies, notes and removals are flushed together.
class RecoveryBatch {
  public:
    RecoveryBatch(FileJournal& journal, std::span<const InterruptedTransfer> transfers)
        : journal_(journal), transfers_(transfers), outcomes_(transfers.size()), moves_(transfers.size()) {}

    /// False when no more should be finished by this run.
    bool run(const std::stop_token& stop) {
        for (std::size_t i = 0; i < transfers_.size() && !stop.stop_requested(); ++i)
            attempt(i, [&] { return look(i, stop); });
        finishMoves(stop);
        return !stop.stop_requested() && !flushFailure_;
    }

    /// Adds what the user is to be told.
    void conclude(std::vector<std::string>& lines) const {
        for (std::size_t i = 0; i < transfers_.size(); ++i) {
            const auto& outcome = outcomes_[i];
            if (!outcome) continue;
            if (outcome->atItsEnd) journal_.end(transfers_[i].number);
            if (!outcome->line.empty()) lines.push_back(outcome->line);
        }
    }

  private:
    using Step = std::optional<RecoveryOutcome>;

    void finishMoves(const std::stop_token& stop) {
        if (stop.stop_requested()) return;
        if (std::ranges::none_of(moves_, [](const auto& move) { return move.has_value(); })) return;
        forEachMove([this](TransferRecovery& move) { return makeCopyDurable(move); });
        forEachMove([](TransferRecovery& move) -> Step {
            move.announceRemoval();
            return std::nullopt;
        });
        journal_.flush();
        forEachMove([&](TransferRecovery& move) {
            return stop.stop_requested() ? Step() : Step(move.removeSource());
        });
        // Should a name come back after a power cut, there is an item twice, and none lost.
        static_cast<void>(folders_.syncChanged());
    }

    /// A transfer that cannot be looked at does not keep the others from it.
    template<class Action>
    void attempt(std::size_t number, const Action& action) {
        try {
            outcomes_[number] = action();
        } catch (const std::exception& failure) {
            const std::string name = lastPathComponent(transfers_[number].source);
            outcomes_[number] = {false,
                                 "Could not put right what was left of file " + name + ": " + failure.what()};
        }
    }

    /// A step of those that have come to none yet.
    template<class Action>
    void forEachMove(const Action& action) {
        for (std::size_t i = 0; i < moves_.size(); ++i)
            if (moves_[i] && !outcomes_[i]) attempt(i, [&] { return action(*moves_[i]); });
    }

    Step look(std::size_t number, const std::stop_token& stop) {
        auto& move = moves_[number];
        move.emplace(journal_, transfers_[number], folders_);
        Step outcome = move->look(stop);
        if (outcome) move.reset();
        return outcome;
    }

    Step makeCopyDurable(const TransferRecovery& move) {
        const OpenFolder& folder = move.targetFolder();
        // The system tells of a failure once: what is flushed after it may seem to succeed.
        if (!flushFailure_ && flushed_.insert(folder.descriptor()).second)
            flushFailure_ = folder.syncFileSystem();
        return flushFailure_ ? Step(move.notDurable(flushFailure_)) : std::nullopt;
    }

    FileJournal& journal_;
    std::span<const InterruptedTransfer> transfers_;
    OpenFolders folders_;
    std::vector<std::optional<RecoveryOutcome>> outcomes_;
    std::vector<std::optional<TransferRecovery>> moves_; ///< to be finished
    std::set<int> flushed_;                              ///< the folders that stay open with the moves
    std::error_code flushFailure_;
};

} // namespace

std::vector<std::string> recoverInterrupted(FileJournal& journal, const std::stop_token& stop) {
    std::vector<std::string> lines;
    std::span<const InterruptedTransfer> left = journal.interrupted();
    for (bool goesOn = true; goesOn && !left.empty();) {
        const auto some = left.first(std::min(mostAtOnce, left.size()));
        RecoveryBatch batch(journal, some);
        goesOn = batch.run(stop);
        batch.conclude(lines);
        left = left.subspan(some.size());
    }
    journal.write();
    return lines;
}

} // namespace brimwick
