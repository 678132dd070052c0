#pragma once

#include "platform/ports/FileManager.h"

#include <string>
#include <vector>

namespace brimwick {

/// A file manager with a selection that the test chose; keeps what was asked of it, in order.
class FakeFileManager : public FileManager {
  public:
    Capability capability() const override { return {true, {}}; }
    std::optional<std::string> frontmostProcessName() override {
        calls.emplace_back("frontmost");
        return frontmost;
    }
    std::vector<WindowTarget> windowTargets() override { return targets; }
    void raise(const WindowTarget& target) override {
        calls.push_back("raise " + std::to_string(target.window));
    }
    void activate() override { calls.emplace_back("activate"); }
    std::vector<std::string> selection() override {
        calls.emplace_back("selection");
        return desktopIsSelected ? desktopSelection : windowSelection;
    }
    void selectDesktop() override {
        calls.emplace_back("selectDesktop");
        desktopIsSelected = true;
    }
    void openFolder(const std::string& fileUrl) override { opened.push_back(fileUrl); }

    void setFolderShownHandler(std::function<void()> handler) override { folderShown = std::move(handler); }

    std::function<void()> folderShown;
    std::optional<std::string> frontmost = finderProcessName;
    std::vector<WindowTarget> targets;
    std::vector<std::string> windowSelection;
    std::vector<std::string> desktopSelection;
    bool desktopIsSelected = false;
    std::vector<std::string> calls;
    std::vector<std::string> opened;
};

} // namespace brimwick
