#pragma once

#include "platform/ports/InstanceRequest.h"

#include <functional>

namespace brimwick {

/// Receives what other starts of the program ask of this one, the one that runs. Main thread only.
class InstanceService {
  public:
    /// What is left to do for a request once the main thread has had its part: runs on a thread of its own,
    /// with the way to the reader. It owns or shares all that it uses. Once the sink answers false it is to
    /// return soon.
    using Work = std::function<RequestResult(const ByteSink&)>;
    /// To be called once, now or later, on the main thread; never called, the request fails when the program
    /// ends.
    using Answer = std::function<void(Work)>;
    using Handler = std::function<void(const InstanceRequest&, Answer)>;

    virtual ~InstanceService() = default;

    /// Called on the main thread for each request, in the order of their arrival. Requests that come while
    /// there is no handler wait for one.
    virtual void setHandler(Handler handler) = 0;
};

} // namespace brimwick
