#pragma once

#include "platform/ports/InstanceService.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace brimwick {

/// Another start of the program, which asks when the test says so.
class FakeInstanceService : public InstanceService {
  public:
    /// What a request has come to so far.
    struct Exchange {
        std::string printed;
        /// Nothing while it is not answered.
        std::optional<RequestResult> result;
    };

    void setHandler(Handler handler) override { handler_ = std::move(handler); }
    bool hasHandler() const { return static_cast<bool>(handler_); }

    /// The exchange fills itself when the request is answered, on the thread that answers it.
    std::shared_ptr<const Exchange> ask(const InstanceRequest& request) {
        auto exchange = std::make_shared<Exchange>();
        handler_(request, [exchange](const Work& work) {
            exchange->result = work([&exchange](std::string_view bytes) {
                exchange->printed += bytes;
                return true;
            });
        });
        return exchange;
    }

  private:
    Handler handler_;
};

} // namespace brimwick
