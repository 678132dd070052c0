#pragma once

#include "platform/linux/x11/KeyboardModifiers.h"
#include "platform/linux/x11/UserTime.h"
#include "platform/linux/x11/XcbEventSource.h"
#include "platform/ports/HotKeyService.h"

#include <QTimer>

#include <list>
#include <optional>

namespace brimwick {

/// Hot keys by passive grabs on the root window, over a connection of its own. A hot key does not fire while
/// some program has the whole keyboard grabbed, as an open menu does: the X server delivers nothing then.
class X11HotKeyService : public HotKeyService {
  public:
    /// `userTime` learns when each hot key went up, and must outlive the service. Where there is no X server,
    /// the service says so by its capability.
    explicit X11HotKeyService(UserTime& userTime);
    ~X11HotKeyService() override;

    Capability capability() const override;
    HotKeyGrant grab(std::uint16_t keyCode, std::uint32_t modifiers, std::uint32_t identifier) override;
    /// When the handler runs, the keyboard is free for synthesized keys.
    void setReleaseHandler(std::function<void(const HotKeyRelease&)> handler) override;
    /// Called when a hot key goes down, while the window that the user pressed it in is still in front.
    void setPressHandler(std::function<void()> handler);
    /// Acts on a key that was pressed and is up again, of which the X server told somebody else.
    void chordWasMissed(const xcb_key_press_event_t& press);
    /// Called when the release handler has returned.
    void setDoneHandler(std::function<void()> handler) { doneHandler_ = std::move(handler); }

  private:
    class Grab;
    struct HotKey {
        xcb_keycode_t key = 0;
        std::uint32_t modifiers = 0;
        std::uint32_t identifier = 0;
        bool pressed = false;
        /// The key was down when it was grabbed, as in recording it, and has not been seen up since.
        bool downWhenGrabbed = false;
        /// The same, and still so after a moment: it may repeat now.
        bool heldSinceBefore = false;
    };
    using HotKeys = std::list<HotKey>;

    bool hasKey(xcb_keycode_t key) const;
    bool isDown(xcb_keycode_t key) const;
    void noticeReleases();
    /// Nothing when every lock combination is ours; else none is, and this is why.
    std::optional<std::string> takeCombinations(const HotKey& hotKey);
    void giveBackCombinations(const HotKey& hotKey);
    void release(HotKeys::iterator hotKey);
    void handle(const xcb_generic_event_t& event);
    void keyWentDown(const xcb_key_press_event_t& event);
    void keyWentUp(const xcb_key_release_event_t& event);
    void followModifierMapping();

    UserTime& userTime_;
    std::string unavailable_;
    std::unique_ptr<XcbConnection> connection_;
    std::uint8_t firstKeyboardEvent_ = 0;
    KeyboardModifiers modifiers_;
    HotKeys hotKeys_;
    std::function<void(const HotKeyRelease&)> releaseHandler_;
    std::function<void()> pressHandler_;
    std::function<void()> doneHandler_;
    QTimer mappingSettled_;
    /// A key that is held since before it was grabbed goes up unseen, unless it repeats.
    QTimer heldKeysPoll_;
    std::unique_ptr<XcbEventSource> events_;
};

} // namespace brimwick
