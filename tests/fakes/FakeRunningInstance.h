#pragma once

#include "platform/ports/RunningInstance.h"

#include <optional>
#include <string>
#include <vector>

namespace brimwick {

/// The program that runs already, or that does not.
class FakeRunningInstance : public RunningInstance {
  public:
    std::optional<RequestResult> request(const InstanceRequest& request, const ByteSink& output) override {
        requests.push_back(request);
        if (answer) output(prints);
        return answer;
    }

    std::vector<InstanceRequest> requests;
    /// Nothing when no program runs.
    std::optional<RequestResult> answer;
    std::string prints;
};

} // namespace brimwick
