#pragma once

#include "platform/ports/FolderEventStream.h"

namespace brimwick {

/// Keeps what it was told; events come when the test delivers them.
class FakeFolderEventStream : public FolderEventStream {
  public:
    Capability capability() const override { return {true, {}}; }
    void start(std::vector<std::string> rootPaths, FolderRules rules, Handlers handlers) override {
        calls.emplace_back("started");
        roots = std::move(rootPaths);
        this->rules = rules;
        this->handlers = std::move(handlers);
    }
    void walkBegins() override { calls.emplace_back("walk begins"); }
    void walkEnded(std::shared_ptr<const FolderList> list) override {
        calls.emplace_back(list ? "walk ended" : "walk given up");
        found = std::move(list);
    }

    std::vector<std::string> calls;
    std::vector<std::string> roots;
    FolderRules rules;
    Handlers handlers;
    std::shared_ptr<const FolderList> found;
};

} // namespace brimwick
