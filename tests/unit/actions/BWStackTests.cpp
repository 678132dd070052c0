#include "actions/BWStack.h"

#include <gmock/gmock.h>

#include <optional>

namespace brimwick {

namespace {

using testing::ElementsAre;
using testing::Pointee;

/// A stack of numbers with a menu item that is disabled at first.
struct Stack : BWStack<int> {
    Stack() {
        setMenuItem([this](bool value) { enabled = value; });
    }
    bool enabled = false;
};

TEST(Stack, BeginsEmptyAndLeavesTheItemAlone) {
    const Stack stack;
    EXPECT_EQ(stack.top(), nullptr);
    EXPECT_TRUE(stack.array().empty());
    EXPECT_FALSE(stack.enabled);
}

TEST(Stack, GivesBackTheNewestFirst) {
    Stack stack;
    stack.push(std::make_shared<int>(1));
    stack.push(std::make_shared<int>(2));
    EXPECT_THAT(stack.array(), ElementsAre(Pointee(1), Pointee(2)));
    EXPECT_THAT(stack.top(), Pointee(2));
    EXPECT_THAT(stack.pop(), Pointee(2));
    EXPECT_TRUE(stack.enabled);
    EXPECT_THAT(stack.pop(), Pointee(1));
    EXPECT_FALSE(stack.enabled);
}

TEST(Stack, TakesTheSameObjectTwice) {
    Stack stack;
    const auto object = std::make_shared<int>(1);
    stack.push(object);
    stack.push(object);
    EXPECT_EQ(stack.pop(), object);
    EXPECT_EQ(stack.pop(), object);
    EXPECT_EQ(stack.pop(), nullptr);
}

TEST(Stack, PoppingAnEmptyStackDoesNotTouchTheItem) {
    Stack stack;
    stack.enabled = true;
    EXPECT_EQ(stack.pop(), nullptr);
    EXPECT_TRUE(stack.enabled);
    stack.enabled = false;
    EXPECT_EQ(stack.pop(), nullptr);
    EXPECT_FALSE(stack.enabled);
}

TEST(Stack, WorksWithoutAMenuItem) {
    BWStack<int> stack;
    stack.push(std::make_shared<int>(1));
    EXPECT_THAT(stack.pop(), Pointee(1));
}

TEST(Stack, SettingTheItemOrTheObjectsDoesNotTouchTheItem) {
    BWStack<int> stack;
    stack.push(std::make_shared<int>(1));
    std::optional<bool> enabled;
    stack.setMenuItem([&enabled](bool value) { enabled = value; });
    stack.setArray({});
    EXPECT_EQ(enabled, std::nullopt);
    EXPECT_EQ(stack.top(), nullptr);
}

/// What the Undo and Redo commands do with the two stacks.
struct History {
    Stack undo;
    Stack redo;
    void undoNewest() { redo.push(undo.pop()); }
    void redoNewest() { undo.push(redo.pop()); }
};

TEST(Stacks, TwoUndosTakeTheSecondActionFirst) {
    History history;
    history.undo.push(std::make_shared<int>(1));
    history.undo.push(std::make_shared<int>(2));
    history.undoNewest();
    EXPECT_THAT(history.redo.top(), Pointee(2));
    EXPECT_TRUE(history.undo.enabled);
    EXPECT_TRUE(history.redo.enabled);
    history.undoNewest();
    EXPECT_FALSE(history.undo.enabled);
    EXPECT_THAT(history.redo.array(), ElementsAre(Pointee(2), Pointee(1)));
}

TEST(Stacks, ANewActionDoesNotClearWhatCanBeRedone) {
    History history;
    history.undo.push(std::make_shared<int>(1));
    history.undoNewest();
    history.undo.push(std::make_shared<int>(2));
    EXPECT_TRUE(history.redo.enabled);
    history.redoNewest();
    EXPECT_THAT(history.undo.array(), ElementsAre(Pointee(2), Pointee(1)));
    EXPECT_FALSE(history.redo.enabled);
}

} // namespace

} // namespace brimwick
