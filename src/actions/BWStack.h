#pragma once

#include <functional>
#include <memory>
#include <vector>

namespace brimwick {

/// A pile of objects, newest on top, that keeps a menu item enabled exactly while there is something on it.
/// Unlimited. Main thread only.
template<typename Object>
class BWStack {
  public:
    /// Enables or disables the item.
    using MenuItem = std::function<void(bool enabled)>;

    /// May be empty. Setting it does not touch the item.
    void setMenuItem(MenuItem menuItem) { menuItem_ = std::move(menuItem); }
    const MenuItem& menuItem() const { return menuItem_; }

    /// Oldest first.
    const std::vector<std::shared_ptr<Object>>& array() const { return array_; }
    void setArray(std::vector<std::shared_ptr<Object>> array) { array_ = std::move(array); }

    void push(std::shared_ptr<Object> object) {
        array_.push_back(std::move(object));
        setEnabled(true);
    }
    /// Nothing when the stack is empty; the item is left alone then.
    std::shared_ptr<Object> pop() {
        if (array_.empty()) return nullptr;
        std::shared_ptr<Object> object = std::move(array_.back());
        array_.pop_back();
        setEnabled(!array_.empty());
        return object;
    }
    std::shared_ptr<Object> top() const { return array_.empty() ? nullptr : array_.back(); }

  private:
    void setEnabled(bool enabled) const {
        if (menuItem_) menuItem_(enabled);
    }

    MenuItem menuItem_;
    std::vector<std::shared_ptr<Object>> array_;
};

} // namespace brimwick
