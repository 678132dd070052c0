#pragma once

#include <QObject>

#include <functional>
#include <utility>

class QWindow;

namespace brimwick {

/// Keeps keys, mouse, touch and drags that come to windows from what is in them, as long as it is closed.
class InputBarrier : public QObject {
  public:
    /// Asked at every event.
    explicit InputBarrier(std::function<bool()> isClosed) : isClosed_(std::move(isClosed)) {}

    /// Whether an event is one of those.
    static bool isInput(const QEvent& event);

    /// From now on; again and again does no harm.
    void guard(QWindow& window);

  protected:
    bool eventFilter(QObject* window, QEvent* event) override;

  private:
    std::function<bool()> isClosed_;
};

} // namespace brimwick
