#include "hotkeys/HotKeyErrorMessage.h"

namespace brimwick {

namespace {

constexpr std::int32_t fadeSteps = 100;
constexpr std::chrono::milliseconds fadeInterval{50};

} // namespace

void HotKeyErrorMessage::show(const std::string& message) {
    timer_.reset();
    label_.showMessage(message);
    count_ = fadeSteps;
    timer_ = mainLoop_.repeatEvery(fadeInterval, [this] { fade(); });
}

void HotKeyErrorMessage::fade() {
    if (count_ < 1) {
        label_.hideMessage();
        timer_.reset();
        return;
    }
    label_.setAlpha(static_cast<double>(count_) / fadeSteps);
    --count_;
}

} // namespace brimwick
