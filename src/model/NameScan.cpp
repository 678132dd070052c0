#include "model/NameScan.h"

#include <cstring>

// This file is compiled once for each kind of vector instructions, by the library's rules.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "model/NameScan.cpp"
#include <hwy/foreach_target.h>
// Behind it.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace brimwick::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using Bytes = hn::CappedTag<std::uint8_t, scanBlockBytes>;

/// The lanes of a comparison as bits, the first lane lowest.
template<typename Mask>
HWY_INLINE std::uint64_t bitsOf(Mask mask) {
    const Bytes bytes;
    std::uint8_t stored[scanBlockBytes / 8] = {};
    hn::StoreMaskBits(bytes, mask, stored);
    std::uint64_t bits = 0;
    std::memcpy(&bits, stored, hn::Lanes(bytes) / 8);
    return bits;
}

/// Where in the block the two bytes lie at their places.
HWY_INLINE std::uint64_t placesOf(const std::uint8_t* block, std::uint8_t first, std::size_t firstProbe,
                                  std::uint8_t second, std::size_t secondProbe) {
    const Bytes bytes;
    std::uint64_t places = 0;
    for (std::size_t i = 0; i < scanBlockBytes; i += hn::Lanes(bytes)) {
        const auto isFirst = hn::Eq(hn::LoadU(bytes, block + i + firstProbe), hn::Set(bytes, first));
        const auto isSecond = hn::Eq(hn::LoadU(bytes, block + i + secondProbe), hn::Set(bytes, second));
        places |= bitsOf(hn::And(isFirst, isSecond)) << i;
    }
    return places;
}

/// Those of the places in the block at which the whole text lies.
HWY_INLINE std::uint64_t confirmed(std::uint64_t places, const ScannedNames& names, std::size_t start,
                                   const ScanText& text) {
    std::uint64_t hits = 0;
    for (; places != 0; places &= places - 1) {
        const std::size_t place = start + hwy::Num0BitsBelowLS1Bit_Nonzero64(places);
        if (place + text.text.size() <= names.size &&
            std::memcmp(names.bytes + place, text.text.data(), text.text.size()) == 0)
            hits |= places & (~places + 1);
    }
    return hits;
}

std::size_t scan(const ScannedNames& names, const ScanText& text, ScanPosition& position, FolderNumber* found,
                 std::size_t room) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(names.bytes);
    const auto first = static_cast<std::uint8_t>(text.text[text.firstProbe]);
    const auto second = static_cast<std::uint8_t>(text.text[text.secondProbe]);
    const bool isProbedWhole = text.text.size() <= 2;

    std::size_t count = 0;
    std::size_t block = position.block;
    std::uint64_t carry = position.isInHit ? 1 : 0;
    for (; block * scanBlockBytes < names.size && count + scanBlockBytes <= room; ++block) {
        const std::size_t start = block * scanBlockBytes;
        std::uint64_t hits = placesOf(bytes + start, first, text.firstProbe, second, text.secondProbe);
        if (!isProbedWhole) hits = confirmed(hits, names, start, text);
        if ((hits | carry) == 0) continue;
        // Added to the bits of the names, a hit carries on to the end of its name, however many there are,
        // and from a name that goes on behind the block into the next one.
        const std::uint64_t ends = placesOf(bytes + start, 0, 0, 0, 0);
        const std::uint64_t sum = hits + ~ends;
        const std::uint64_t carried = sum + carry;
        carry = sum < hits || carried < sum ? 1 : 0;
        for (std::uint64_t endsOfHits = carried & ends; endsOfHits != 0; endsOfHits &= endsOfHits - 1) {
            const std::uint64_t before = (endsOfHits & (~endsOfHits + 1)) - 1;
            found[count++] = names.folders[names.namesBeforeBlock[block] + hwy::PopCount(ends & before)];
        }
    }
    position = {block, carry != 0};
    return count;
}

} // namespace brimwick::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace brimwick {

HWY_EXPORT(scan);

std::size_t scanNames(const ScannedNames& names, const ScanText& text, ScanPosition& position,
                      FolderNumber* found, std::size_t room) {
    return HWY_DYNAMIC_DISPATCH(scan)(names, text, position, found, room);
}

} // namespace brimwick
#endif
