#include "model/NameScan.h"

#include <algorithm>
#include <array>
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
    std::memcpy(&bits, stored, (hn::Lanes(bytes) + 7) / 8);
    return bits;
}

/// Where in the block the probed bytes of the text lie at their places.
HWY_INLINE std::uint64_t placesOf(const ScanText& text, const std::uint8_t* block) {
    const Bytes bytes;
    std::uint64_t places = 0;
    for (std::size_t i = 0; i < scanBlockBytes; i += hn::Lanes(bytes)) {
        const auto probe = [&](std::size_t place) {
            return hn::Eq(hn::LoadU(bytes, block + i + place),
                          hn::Set(bytes, static_cast<std::uint8_t>(text.text[place])));
        };
        const auto all =
            hn::And(probe(text.probes[0]), hn::And(probe(text.probes[1]), probe(text.probes[2])));
        places |= bitsOf(all) << i;
    }
    return places;
}

HWY_INLINE std::uint64_t endsOfNames(const std::uint8_t* block) {
    const Bytes bytes;
    std::uint64_t ends = 0;
    for (std::size_t i = 0; i < scanBlockBytes; i += hn::Lanes(bytes))
        ends |= bitsOf(hn::Eq(hn::LoadU(bytes, block + i), hn::Zero(bytes))) << i;
    return ends;
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

/// Writes the folders whose names are hits, given where these end and where all names end; yields how many.
#if HWY_TARGET <= HWY_AVX3
HWY_INLINE std::size_t writeFolders(std::uint64_t endsOfHits, std::uint64_t ends, const FolderNumber* folders,
                                    FolderNumber* found) {
    constexpr std::size_t foldersReadAtOnce = 8;
    const hn::CappedTag<FolderNumber, foldersReadAtOnce> numbers;
    std::uint64_t hits = _pext_u64(endsOfHits, ends);
    const std::size_t count = hwy::PopCount(hits);
    do {
        const auto byte = static_cast<std::uint8_t>(hits);
        found += hn::CompressBitsStore(hn::LoadU(numbers, folders), &byte, numbers, found);
        folders += foldersReadAtOnce;
        hits >>= foldersReadAtOnce;
    } while (hits != 0);
    return count;
}
#else
/// Most blocks hold few: these are written whether they are there or not, which is quicker than to ask.
HWY_INLINE std::size_t writeFolders(std::uint64_t endsOfHits, std::uint64_t ends, const FolderNumber* folders,
                                    FolderNumber* found) {
    constexpr std::size_t few = 4;
    const std::size_t hits = hwy::PopCount(endsOfHits);
    for (std::size_t i = 0; i < std::max(few, hits); ++i) {
        const std::uint64_t before = (endsOfHits & (~endsOfHits + 1)) - 1;
        found[i] = folders[hwy::PopCount(ends & before)];
        endsOfHits &= endsOfHits - 1;
    }
    return hits;
}
#endif

/// Writes down what was found, block by block.
class Finder {
  public:
    Finder(const ScannedNames& names, ScanPosition& position, FolderNumber* found)
        : names_(names), found_(found), block_(position.block), carry_(position.isInHit ? 1 : 0) {}

    /// The name that goes on from the block before ends in one of those up to here, if not in a later one.
    HWY_INLINE void comeTo(std::size_t block) {
        while (carry_ != 0 && block_ < block) add(block_, 0);
        block_ = block;
    }
    HWY_INLINE void add(std::size_t block, std::uint64_t hits) {
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(names_.bytes);
        const std::uint64_t ends = endsOfNames(bytes + block * scanBlockBytes);
        // Added to the bits of the names, a hit carries on to the end of its name, however many there are,
        // and from a name that goes on behind the block into the next one.
        const std::uint64_t sum = hits + ~ends;
        const std::uint64_t carried = sum + carry_;
        carry_ = sum < hits || carried < sum ? 1 : 0;
        count_ += writeFolders(carried & ends, ends, names_.folders + names_.namesBeforeBlock[block],
                               found_ + count_);
        block_ = block + 1;
    }
    bool isInHit() const { return carry_ != 0; }
    std::size_t count() const { return count_; }

  private:
    const ScannedNames& names_;
    FolderNumber* found_;
    std::size_t block_;
    std::uint64_t carry_;
    std::size_t count_ = 0;
};

std::size_t scan(const ScannedNames& names, const ScanText& text, ScanPosition& position,
                 FolderNumber* found) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(names.bytes);
    const std::size_t blocks = (names.size + scanBlockBytes - 1) / scanBlockBytes;
    const bool isProbedWhole = text.text.size() <= text.probes.size();
    std::array<std::uint64_t, blocksAtOnce> places;
    std::array<std::size_t, blocksAtOnce> candidates;
    Finder finder(names, position, found);
    while (finder.count() == 0 && position.block < blocks) {
        std::size_t block = position.block;
        position.block = std::min(blocks, block + blocksAtOnce);
        std::size_t candidateCount = 0;
        for (; block < position.block; ++block) {
            const std::uint64_t here = placesOf(text, bytes + block * scanBlockBytes);
            places[candidateCount] = here;
            candidates[candidateCount] = block;
            candidateCount += here != 0 ? 1 : 0;
        }
        for (std::size_t i = 0; i < candidateCount; ++i) {
            finder.comeTo(candidates[i]);
            const std::uint64_t hits =
                isProbedWhole ? places[i] : confirmed(places[i], names, candidates[i] * scanBlockBytes, text);
            finder.add(candidates[i], hits);
        }
        finder.comeTo(position.block);
    }
    position.isInHit = finder.isInHit();
    return finder.count();
}

} // namespace brimwick::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace brimwick {

HWY_EXPORT(scan);

std::size_t scanNames(const ScannedNames& names, const ScanText& text, ScanPosition& position,
                      std::array<FolderNumber, mostScannedAtOnce>& found) {
    return HWY_DYNAMIC_DISPATCH(scan)(names, text, position, found.data());
}

} // namespace brimwick
#endif
