#pragma once

#include "platform/ports/Capability.h"
#include "platform/ports/FolderList.h"
#include "platform/ports/FolderRules.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace brimwick {

/// The bits of a folder event.
namespace FolderEventFlag {
inline constexpr std::uint32_t created = 0x100;
inline constexpr std::uint32_t removed = 0x200;
inline constexpr std::uint32_t renamed = 0x800;
inline constexpr std::uint32_t isFolder = 0x20000;
} // namespace FolderEventFlag

/// Tells that folders below the roots came, went or were renamed. What it watches follows the walks: every
/// folder that a walk found below one of the roots given at the start. Main thread only; no call waits for
/// the disk, however many folders there are.
class FolderEventStream {
  public:
    struct Handlers {
        /// One delivery: the flags of each event, in order; never empty. On the main thread.
        std::function<void(const std::vector<std::uint32_t>&)> eventsArrived;
        /// Changes of some folders will be noticed late, or no longer: why, as one sentence for the user. On
        /// the main thread.
        std::function<void(const std::string&)> watchingIsLimited;
    };

    virtual ~FolderEventStream() = default;

    virtual Capability capability() const = 0;
    /// Starts the stream, once; a walk may be running by then. There is no end but the program's. Changes of
    /// folders that the rules leave out are not told.
    virtual void start(std::vector<std::string> rootPaths, FolderRules rules, Handlers handlers) = 0;
    /// To be called before a walk starts. What changes from here on may be missing from what it finds.
    virtual void walkBegins() = 0;
    /// To be called when the walk has ended, with what it found; null when it found nothing because it was
    /// given up. What changed during the walk and is missing from it is then delivered once more.
    virtual void walkEnded(std::shared_ptr<const FolderList> found) = 0;
};

} // namespace brimwick
