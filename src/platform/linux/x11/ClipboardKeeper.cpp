#include "platform/linux/x11/ClipboardKeeper.h"

#include <cstdio>
#include <exception>
#include <system_error>

namespace brimwick {

std::unique_ptr<ClipboardKeeper> ClipboardKeeper::start(Snapshot snapshot) {
    auto connection = XcbConnection::connect();
    if (!connection) return nullptr;
    try {
        return std::make_unique<ClipboardKeeper>(std::move(connection), std::move(snapshot));
    } catch (const std::system_error&) {
        return nullptr;
    }
}

ClipboardKeeper::ClipboardKeeper(std::unique_ptr<XcbConnection> connection, Snapshot snapshot)
    : snapshot_(std::move(snapshot)),
      thread_([this, own = std::move(connection)]() mutable { run(std::move(own)); }) {}

ClipboardKeeper::~ClipboardKeeper() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    wakeUp_.wake();
    thread_.join();
}

tl::expected<std::string, CopyFailure> ClipboardKeeper::readCopied(ClipboardLoop::Copy copy,
                                                                   const std::string& target) {
    // Above the sum of the bounds that each step has, so that nothing happens after the wait is given up.
    constexpr std::chrono::seconds patience{5};
    Request request{std::move(copy), target, nullptr, {}};
    if (auto own = snapshot_ ? snapshot_() : std::nullopt)
        request.known = std::make_shared<const ClipboardContents>(std::move(*own));
    auto answer = request.answer.get_future();
    {
        const std::lock_guard lock(mutex_);
        if (ended_) return tl::unexpected(CopyFailure::notAsked);
        requests_.push_back(std::move(request));
    }
    wakeUp_.wake();
    if (answer.wait_for(patience) != std::future_status::ready)
        return tl::unexpected(CopyFailure::nothingCopied);
    return answer.get();
}

void ClipboardKeeper::run(std::unique_ptr<XcbConnection> connection) {
    try {
        ClipboardLoop loop(std::move(connection), wakeUp_);
        serve(loop);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "brimwick: the clipboard cannot be served: %s\n", error.what());
    }
    endWithoutServer();
}

void ClipboardKeeper::serve(ClipboardLoop& loop) {
    while (loop.serveUntil([this] { return hasWork(); })) {
        auto request = nextRequest();
        if (!request) {
            loop.handOver();
            return;
        }
        request->answer.set_value(loop.readCopied(request->copy, request->target, request->known));
    }
    std::fputs("brimwick: the connection to the X server broke; selections cannot be read\n", stderr);
}

bool ClipboardKeeper::hasWork() {
    const std::lock_guard lock(mutex_);
    return stopping_ || !requests_.empty();
}

std::optional<ClipboardKeeper::Request> ClipboardKeeper::nextRequest() {
    const std::lock_guard lock(mutex_);
    if (requests_.empty()) return std::nullopt;
    Request request = std::move(requests_.front());
    requests_.pop_front();
    return request;
}

void ClipboardKeeper::endWithoutServer() {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    for (Request& request : requests_) request.answer.set_value(tl::unexpected(CopyFailure::notAsked));
    requests_.clear();
}

} // namespace brimwick
