#pragma once

#include "model/FolderTree.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brimwick {

struct ScanText;

/// The folded names of folders, one after the other in a given order, made for finding those that contain a
/// text in one pass. Never changes.
class FoldedNames {
  public:
    /// The names of these folders, in this order. Throws std::bad_alloc.
    FoldedNames(const FolderTree& folders, std::vector<FolderNumber> order);

    /// Appends the folders whose folded names contain the folded text, in that order. Nothing for an empty
    /// text.
    void find(std::string_view folded, std::vector<FolderNumber>& found) const;
    /// Each name closed by a NUL.
    std::string_view bytes() const { return std::string_view(names_).substr(0, size_); }

  private:
    void countNamesByBlock();
    std::size_t blockInTheMiddle() const;
    /// From the first byte of a block, with which a name begins, up to the end of another name.
    void scan(const ScanText& text, std::size_t firstBlock, std::size_t end,
              std::vector<FolderNumber>& found) const;

    /// And some more, which the scan needs.
    std::vector<FolderNumber> order_;
    std::string names_;
    /// Without the padding that the scan needs.
    std::size_t size_ = 0;
    std::vector<std::uint32_t> namesBeforeBlock_;
    /// How often each byte occurs, as far as that was counted.
    std::array<std::uint32_t, 256> frequencies_{};
};

} // namespace brimwick
