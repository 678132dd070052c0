#include "app/RequestDispatcher.h"

#include "app/commands/ExitCode.h"
#include "app/commands/SearchRequest.h"

#include <utility>

namespace brimwick {

namespace {

InstanceService::Work failure(const std::string& reason) {
    return [reason](const ByteSink&) { return RequestResult{ExitCode::failed, reason}; };
}

} // namespace

RequestDispatcher::RequestDispatcher(InstanceService& service, const FolderIndexer& folders,
                                     const IndexRebuilder& rebuilder, MainLoop& mainLoop,
                                     std::function<void()> showPreferences)
    : service_(service), folders_(folders), rebuilder_(rebuilder), mainLoop_(mainLoop),
      showPreferences_(std::move(showPreferences)) {
    service_.setHandler([this](const InstanceRequest& request, InstanceService::Answer answer) {
        handle(request, std::move(answer));
    });
}

RequestDispatcher::~RequestDispatcher() {
    service_.setHandler(nullptr);
}

void RequestDispatcher::handle(const InstanceRequest& request, InstanceService::Answer answer) {
    if (request.verb == "search")
        afterFirstIndex([this, request, answer = std::move(answer)] { search(request, answer); });
    else if (request.verb == verbToShowPreferences)
        mainLoop_.runWhenFree([this, answer = std::move(answer)] { showPreferences(answer); });
    else
        answer(failure("the running Brimwick does not know \"" + request.verb + "\""));
}

void RequestDispatcher::showPreferences(const InstanceService::Answer& answer) {
    showPreferences_();
    answer([](const ByteSink&) { return RequestResult(); });
}

void RequestDispatcher::search(const InstanceRequest& request, const InstanceService::Answer& answer) const {
    if (rebuilder_.indexHasBeenInitialized())
        answer(answerSearchRequest(request, folders_.index()));
    else
        answer(failure("the running Brimwick could not index the folders"));
}

void RequestDispatcher::afterFirstIndex(std::function<void()> task) {
    if (firstIndexIsDone_)
        task();
    else
        waiting_.push_back(std::move(task));
}

void RequestDispatcher::noteFirstIndex() {
    firstIndexIsDone_ = true;
    for (const auto& task : std::exchange(waiting_, {})) task();
}

} // namespace brimwick
