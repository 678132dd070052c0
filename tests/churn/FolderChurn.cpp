#include "churn/FolderChurn.h"

#include <chrono>
#include <filesystem>
#include <fstream>

namespace brimwick {
namespace {

constexpr std::size_t namesPerFolder = 30;
constexpr std::size_t deepest = 4;

} // namespace

FolderChurn::FolderChurn(std::string root, std::string outside, std::size_t foldersAtRest)
    : root_(std::move(root)), outside_(std::move(outside)), foldersAtRest_(foldersAtRest) {
    reset();
}

void FolderChurn::reset() {
    for (const std::string& parent : {root_, outside_})
        for (const auto& entry : std::filesystem::directory_iterator(parent))
            std::filesystem::remove_all(entry.path());
    for (std::size_t i = 0; i < foldersAtRest_; ++i)
        std::filesystem::create_directory(root_ + "/folder" + std::to_string(i));
}

void FolderChurn::start(std::size_t operations, std::size_t perSecond) {
    done_ = false;
    thread_ = std::jthread([this, operations, perSecond] { churn(operations, perSecond); });
}

void FolderChurn::stop() {
    thread_.join();
}

void FolderChurn::churn(std::size_t operations, std::size_t perSecond) {
    const auto begin = std::chrono::steady_clock::now();
    for (std::size_t done = 0; done < operations;) {
        std::this_thread::sleep_until(begin + std::chrono::microseconds(1'000'000 * done / perSecond));
        if (operate()) ++done;
    }
    const std::chrono::duration<double> duration = std::chrono::steady_clock::now() - begin;
    rate_ = static_cast<double>(operations) / duration.count();
    done_ = true;
}

/// False when the choice was not possible, the folder being there already, or not, or too deep to be there.
bool FolderChurn::operate() {
    std::error_code failure;
    const std::string here = place();
    switch (random(9)) {
    case 0:
    case 1:
    case 2:
        return std::filesystem::create_directory(here, failure) && !failure;
    case 3: {
        const std::string there = here + "/folder1/folder2/.hidden/folder3";
        const bool made = std::filesystem::create_directories(there, failure) && !failure;
        std::ofstream(here + "/file") << "content";
        return made;
    }
    case 4:
    case 5:
    case 6:
        std::filesystem::rename(here, place(), failure);
        return !failure;
    case 7:
        return std::filesystem::remove(here, failure) && !failure;
    default:
        // Seldom what holds many.
        if (here.starts_with(root_) && random(4) != 0) return false;
        return std::filesystem::remove_all(here, failure) > 0 && !failure;
    }
}

std::string FolderChurn::place() {
    std::string path = random(8) == 0 ? outside_ : root_;
    const std::size_t depth = 1 + random(deepest);
    for (std::size_t i = 0; i < depth; ++i) path += "/folder" + std::to_string(random(namesPerFolder));
    const std::size_t kind = random(40);
    if (kind == 0) path += ".app";
    if (kind == 1) path.insert(path.rfind('/') + 1, ".");
    return path;
}

std::size_t FolderChurn::random(std::size_t below) {
    return std::uniform_int_distribution<std::size_t>(0, below - 1)(random_);
}

} // namespace brimwick
