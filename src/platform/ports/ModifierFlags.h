#pragma once

#include <cstdint>

namespace brimwick {

/// The modifier flags of key events and hot keys. A word of flags may hold other bits, too: which of two
/// equal keys is held, caps lock and the like.
namespace ModifierFlag {
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
inline constexpr std::uint64_t any = shift | control | option | command;
} // namespace ModifierFlag

} // namespace brimwick
