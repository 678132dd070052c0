#pragma once

#include <array>
#include <atomic>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace brimwick {

/// The name of the folder that a walk is in at the moment. The walking threads set it, whoever shows it asks
/// now and then: any thread.
class ScannedFolderName {
  public:
    /// Cheap for threads that do so for every folder: each has a place where it meets no other, as long as
    /// there are not very many.
    void set(std::string_view name) {
        Place& place = places_[ownPlace()];
        const std::lock_guard lock(place.mutex);
        place.name = name;
        place.isNew = true;
    }
    /// Bytes; empty before the first walk came to a subfolder. The name that was set last, or, where several
    /// threads set names, that of one of those that have come on since it was asked before.
    std::string get() const {
        const std::lock_guard lock(mutex_);
        for (Place& place : places_) {
            const std::lock_guard placeLock(place.mutex);
            if (std::exchange(place.isNew, false)) latest_ = place.name;
        }
        return latest_;
    }

  private:
    static constexpr std::size_t places = 8;
    /// What one processor writes is not to be in the way of another.
    static constexpr std::size_t cacheLineBytes = 64;
    struct alignas(cacheLineBytes) Place {
        std::mutex mutex;
        std::string name;
        bool isNew = false;
    };

    static std::size_t ownPlace() {
        static std::atomic<std::size_t> threads = 0;
        thread_local const std::size_t number = threads++ % places;
        return number;
    }

    mutable std::array<Place, places> places_;
    mutable std::mutex mutex_;
    mutable std::string latest_;
};

} // namespace brimwick
