#pragma once

#include "platform/ports/HotKeyService.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace brimwick {

/// Modifier flags of key events and hot keys.
namespace ModifierFlag {
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
} // namespace ModifierFlag

/// The registry of the system-wide hot keys. Main thread only.
class BWHotKeyCenter {
  public:
    /// Called with the release of the hot key.
    using Task = std::function<void(const HotKeyRelease&)>;

    /// The service must outlive the centre, which takes its releases.
    explicit BWHotKeyCenter(HotKeyService& service);
    BWHotKeyCenter(const BWHotKeyCenter&) = delete;
    BWHotKeyCenter& operator=(const BWHotKeyCenter&) = delete;
    ~BWHotKeyCenter();

    bool hasRegisteredHotKeyWithKeyCodeModifierFlags(std::uint16_t keyCode,
                                                     std::uint64_t modifierFlags) const;
    /// False when the combination is registered already or the desktop refuses it; nothing changes then.
    bool registerHotKeyWithKeyCodeModifierFlagsTask(std::uint16_t keyCode, std::uint64_t modifierFlags,
                                                    Task task);
    /// Ignored when the combination is not registered.
    void unregisterHotKeyWithKeyCodeModifierFlags(std::uint16_t keyCode, std::uint64_t modifierFlags);

  private:
    struct RegisteredHotKey {
        std::uint16_t keyCode;
        std::uint64_t modifierFlags;
        Task task;
        std::uint32_t identifier;
        std::unique_ptr<HotKeyGrab> grab;
    };

    void hotKeyWasReleased(const HotKeyRelease& release) const;

    HotKeyService& service_;
    std::vector<RegisteredHotKey> hotKeys_;
    std::uint32_t nextIdentifier_ = 1;
};

/// The modifiers of a registration for the flags of a hot key; every other flag is left out.
std::uint32_t hotKeyModifiers(std::uint64_t modifierFlags);

} // namespace brimwick
