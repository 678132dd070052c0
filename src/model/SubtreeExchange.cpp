#include "model/SubtreeExchange.h"

namespace brimwick {

void SubtreeExchange::countWanting() {
    wanting_.store(static_cast<int>(waiting_) - static_cast<int>(subtrees_.size() - taken_),
                   std::memory_order_relaxed);
}

const Subtrees& SubtreeExchange::give(Subtrees subtrees) {
    const std::lock_guard lock(mutex_);
    const Subtrees& given = subtrees_.emplace_back(std::move(subtrees));
    countWanting();
    changed_.notify_one();
    return given;
}

Subtrees* SubtreeExchange::take() {
    std::unique_lock lock(mutex_);
    ++waiting_;
    countWanting();
    changed_.wait(lock, [this] { return closed_ || taken_ < subtrees_.size(); });
    --waiting_;
    if (closed_) return nullptr;
    ++walking_;
    Subtrees& next = subtrees_[taken_++];
    countWanting();
    return &next;
}

void SubtreeExchange::finish() {
    const std::lock_guard lock(mutex_);
    --walking_;
    if (walking_ > 0 || taken_ < subtrees_.size()) return;
    closed_ = true;
    changed_.notify_all();
}

void SubtreeExchange::close() {
    const std::lock_guard lock(mutex_);
    closed_ = true;
    changed_.notify_all();
}

} // namespace brimwick
