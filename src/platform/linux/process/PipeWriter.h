#pragma once

#include <string_view>

namespace brimwick {

/// Writes to a pipe from a thread that may have to wait for the reader. The thread gets no SIGPIPE any more.
class PipeWriter {
  public:
    /// The pipe stays the caller's; it no longer blocks from now on. Once the other descriptor becomes
    /// readable, nothing more is written.
    PipeWriter(int pipe, int stopDescriptor);

    /// Waits for room. False when the reader is gone or the writing is to stop.
    bool write(std::string_view bytes) const;

  private:
    bool waitForRoom() const;

    int pipe_;
    int stopDescriptor_;
};

} // namespace brimwick
