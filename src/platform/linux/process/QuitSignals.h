#pragma once

#include <QSocketNotifier>

#include <functional>
#include <optional>

namespace brimwick {

/// Turns SIGTERM, SIGINT and SIGHUP into a call on the main thread, for as long as it lives. One at a time.
class QuitSignals {
  public:
    explicit QuitSignals(std::function<void()> quit);
    QuitSignals(const QuitSignals&) = delete;
    QuitSignals& operator=(const QuitSignals&) = delete;
    ~QuitSignals();

  private:
    std::optional<QSocketNotifier> readable_;
};

} // namespace brimwick
