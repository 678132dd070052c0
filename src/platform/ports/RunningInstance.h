#pragma once

#include "platform/ports/InstanceRequest.h"

#include <optional>

namespace brimwick {

/// The program that runs already for this user, as seen from another start. One thread.
class RunningInstance {
  public:
    virtual ~RunningInstance() = default;

    /// Hands it a request and waits for the end; what it prints goes to the sink as it comes. Nothing when
    /// no program runs, and then nothing was printed.
    virtual std::optional<RequestResult> request(const InstanceRequest& request, const ByteSink& output) = 0;
};

} // namespace brimwick
