#pragma once

#include "app/BWView.h"

namespace brimwick {

/// Starts the interface once everything is linked.
class BWApplicationDelegate {
  public:
    /// The view must outlive the delegate.
    explicit BWApplicationDelegate(BWView& view) : view_(view) {}
    void awakeFromNib() { view_.initializeUserInterface(); }

  private:
    BWView& view_;
};

} // namespace brimwick
