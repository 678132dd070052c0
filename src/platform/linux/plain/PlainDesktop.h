#pragma once

#include "platform/ports/FileManager.h"
#include "platform/ports/HotKeyService.h"
#include "platform/ports/KeyboardLayout.h"
#include "platform/ports/WindowSystem.h"

#include <functional>
#include <string>

namespace brimwick {

// What is left of a desktop that lets no program grab keys, watch windows or synthesize keys.

/// Refuses every hot key.
class PlainHotKeyService : public HotKeyService {
  public:
    Capability capability() const override;
    HotKeyGrant grab(std::uint16_t keyCode, std::uint32_t modifiers, std::uint32_t identifier) override;
    void setReleaseHandler(std::function<void(const HotKeyRelease&)> /*handler*/) override {}
};

/// Knows of no layout.
class PlainKeyboardLayout : public KeyboardLayout {
  public:
    bool isAvailable() const override { return false; }
    KeyTranslation translate(std::uint16_t /*keyCode*/, std::uint64_t /*modifierFlags*/,
                             std::uint32_t /*deadKeyState*/) override {
        return {};
    }
    void setChangedHandler(std::function<void()> /*handler*/) override {}
};

/// Knows of no window and no selection; opens folders.
class PlainFileManager : public FileManager {
  public:
    explicit PlainFileManager(std::function<void(const std::string&)> openFolder)
        : openFolder_(std::move(openFolder)) {}

    Capability capability() const override;
    std::optional<std::string> frontmostProcessName() override { return std::nullopt; }
    std::vector<WindowTarget> windowTargets() override { return {}; }
    void raise(const WindowTarget& /*target*/) override {}
    void activate() override {}
    std::vector<std::string> selection() override { return {}; }
    void selectDesktop() override {}
    void openFolder(const std::string& fileUrl) override { openFolder_(fileUrl); }
    void setFolderShownHandler(std::function<void()> /*handler*/) override {}

  private:
    std::function<void(const std::string&)> openFolder_;
};

/// Asks for the focus and leaves it to the desktop whether to give it.
class PlainWindowSystem : public WindowSystem {
  public:
    std::optional<FrameMargins> frameMargins(WindowNumber /*window*/) override { return std::nullopt; }
    void prepareToShow(WindowNumber /*window*/) override {}
    void makeKeyAndOrderFront(WindowNumber window) override;
    bool hasKeyboardFocus(WindowNumber /*window*/) override { return false; }
    void withholdHeldKeys() override {}
};

} // namespace brimwick
