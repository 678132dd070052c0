#include "feedback/SoundBox.h"

#include <array>

namespace brimwick {

namespace {

constexpr std::array moveSet = {"Catapult.mp3", "Fireball.mp3", "Flyby.mp3", "Swoosh3.mp3", "Swooshing.mp3"};
constexpr std::array openSet = {"GloveBoxClose.mp3", "GloveBoxOpen.mp3", "HolePunch.mp3", "Staple.mp3"};

} // namespace

SoundBox::SoundBox(SoundPlayer& player, std::function<std::uint32_t()> random)
    : player_(player), random_(std::move(random)) {}

void SoundBox::playRandomSound(bool fromOpenSet) {
    const std::uint32_t draw = random_();
    player_.play(fromOpenSet ? openSet[draw % openSet.size()] : moveSet[draw % moveSet.size()]);
}

} // namespace brimwick
