#pragma once

#include "platform/ports/Capability.h"
#include "platform/ports/ModifierFlags.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace brimwick {

/// The modifier bits of a hot-key registration.
namespace HotKeyModifier {
inline constexpr std::uint32_t command = 0x0100;
inline constexpr std::uint32_t shift = 0x0200;
inline constexpr std::uint32_t option = 0x0800;
inline constexpr std::uint32_t control = 0x1000;
} // namespace HotKeyModifier

/// The notice that a grabbed hot key went up.
struct HotKeyRelease {
    /// The identifier given at the grab.
    std::uint32_t identifier = 0;
    /// The modifiers still held, as `ModifierFlag`.
    std::uint64_t modifierFlags = 0;
    /// Milliseconds on the desktop's clock.
    std::uint32_t timestamp = 0;
    /// Where the pointer was, in pixels from the screen's upper left corner.
    double x = 0;
    double y = 0;
};

/// A key combination held by this program; destroying it gives the combination back.
class HotKeyGrab {
  public:
    virtual ~HotKeyGrab() = default;
};

/// What a grab yields: the grab, or, where that is empty, the reason as one sentence for the user.
struct HotKeyGrant {
    std::unique_ptr<HotKeyGrab> grab;
    std::string refusal;
};

/// The refusal of a second grab of one combination.
inline constexpr const char* refusalOfSecondGrab = "Brimwick already uses this hot key.";

/// System-wide hot keys. Main thread only.
class HotKeyService {
  public:
    virtual ~HotKeyService() = default;

    virtual Capability capability() const = 0;
    /// Takes the virtual key code with exactly these `HotKeyModifier` bits, whatever locks are on. One grab
    /// per combination: a second is refused. The grab must not outlive the service.
    virtual HotKeyGrant grab(std::uint16_t keyCode, std::uint32_t modifiers, std::uint32_t identifier) = 0;
    /// Called on the main thread once per press, when the key goes up, auto-repeat or not.
    virtual void setReleaseHandler(std::function<void(const HotKeyRelease&)> handler) = 0;
};

} // namespace brimwick
