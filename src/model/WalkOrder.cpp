#include "model/WalkOrder.h"

#include <vector>

namespace brimwick {
namespace {

/// Subfolders of one folder that are yet to be added.
struct Rest {
    const FolderFindings* findings;
    FolderRange folders;
    const Subtrees* following;
    FolderNumber parent;
};

} // namespace

void appendInOrder(const Subtrees& walked, const WalkedSizes& sizes, FolderNumber parent,
                   FolderTree& folders) {
    folders.reserve(folders.size() + sizes.folders, folders.nameBytes() + sizes.nameBytes);
    std::vector<Rest> rests = {{walked.findings, walked.folders, walked.following, parent}};
    while (!rests.empty()) {
        Rest& rest = rests.back();
        if (rest.folders.size() == 0) {
            if (const Subtrees* const next = rest.following)
                rest = {next->findings, next->folders, next->following, rest.parent};
            else
                rests.pop_back();
            continue;
        }
        const FolderFindings& findings = *rest.findings;
        const std::uint32_t found = rest.folders.first++;
        if (findings.isGone(found)) continue;
        const FolderNumber folder = folders.addSubfolder(rest.parent, findings.name(found));
        const FolderRange subfolders = findings.subfolders(found);
        const Subtrees* const following = findings.followingSubtrees(found);
        if (subfolders.size() > 0 || following != nullptr)
            rests.push_back({&findings, subfolders, following, folder});
    }
}

} // namespace brimwick
