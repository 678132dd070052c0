#include "platform/linux/inotify/WatchTable.h"

#include <algorithm>

namespace brimwick {

void WatchTable::assign(std::vector<Entry> entries) {
    entries_ = std::move(entries);
    if (!std::ranges::is_sorted(entries_)) std::ranges::sort(entries_);
    entries_.shrink_to_fit();
    count();
}

void WatchTable::erase(std::vector<WatchNumber> watches) {
    if (watches.empty()) return;
    std::ranges::sort(watches);
    std::erase_if(entries_, [&watches](const Entry& entry) {
        return std::ranges::binary_search(watches, entry.watch);
    });
    count();
}

void WatchTable::count() {
    watchCount_ = 0;
    expected_ = 0;
    WatchNumber last = -1;
    for (const Entry& entry : entries_) {
        if (entry.watch != last) ++watchCount_;
        last = entry.watch;
    }
}

std::optional<std::size_t> WatchTable::find(WatchNumber watch) {
    const auto isFirst = [this, watch](std::size_t at) {
        return at < entries_.size() && entries_[at].watch == watch &&
               (at == 0 || entries_[at - 1].watch != watch);
    };
    std::size_t position = expected_;
    if (!isFirst(position)) {
        const auto found = std::ranges::lower_bound(entries_, watch, {}, &Entry::watch);
        position = static_cast<std::size_t>(found - entries_.begin());
        if (!isFirst(position)) return std::nullopt;
    }
    expected_ = position + 1;
    return position;
}

std::span<const WatchTable::Entry> WatchTable::entriesOf(WatchNumber watch) const {
    return std::ranges::equal_range(entries_, watch, {}, &Entry::watch);
}

} // namespace brimwick
