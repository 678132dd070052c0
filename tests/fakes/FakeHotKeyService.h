#pragma once

#include "platform/ports/HotKeyService.h"

#include <functional>
#include <list>
#include <memory>
#include <set>

namespace brimwick {

/// Grants every combination once, save those that the test gave to another program. The service and its grabs
/// may end in any order.
class FakeHotKeyService : public HotKeyService {
  public:
    struct Combination {
        std::uint16_t keyCode = 0;
        std::uint32_t modifiers = 0;
        auto operator<=>(const Combination&) const = default;
    };
    struct Held : Combination {
        std::uint32_t identifier = 0;
    };

    Capability capability() const override { return {true, {}}; }
    HotKeyGrant grab(std::uint16_t keyCode, std::uint32_t modifiers, std::uint32_t identifier) override {
        for (const Held& one : *held)
            if (one.keyCode == keyCode && one.modifiers == modifiers) return {nullptr, "one of ours"};
        if (takenByOthers.contains({keyCode, modifiers})) return {nullptr, "taken by another program"};
        return {
            std::make_unique<Grab>(held, held->insert(held->end(), Held{{keyCode, modifiers}, identifier})),
            {}};
    }
    void setReleaseHandler(std::function<void(const HotKeyRelease&)> handler) override {
        handler_ = std::move(handler);
    }

    /// As though the user pressed and released the combination. False when nobody holds it.
    bool pressAndRelease(std::uint16_t keyCode, std::uint32_t modifiers, HotKeyRelease release = {}) {
        for (const Held& one : *held) {
            if (one.keyCode != keyCode || one.modifiers != modifiers) continue;
            release.identifier = one.identifier;
            if (handler_) handler_(release);
            return true;
        }
        return false;
    }
    /// A notice that belongs to no grab.
    void releaseUnknown(std::uint32_t identifier) {
        if (handler_) handler_({.identifier = identifier});
    }

    std::shared_ptr<std::list<Held>> held = std::make_shared<std::list<Held>>();
    std::set<Combination> takenByOthers;

  private:
    class Grab : public HotKeyGrab {
      public:
        Grab(std::shared_ptr<std::list<Held>> held, std::list<Held>::iterator place)
            : held_(std::move(held)), place_(place) {}
        ~Grab() override { held_->erase(place_); }

      private:
        std::shared_ptr<std::list<Held>> held_;
        std::list<Held>::iterator place_;
    };

    std::function<void(const HotKeyRelease&)> handler_;
};

} // namespace brimwick
