#include "actions/BWStack.h"

#include <map>
#include <memory>
#include <random>

#include "unit/actions/ActionFixture.h"

namespace brimwick {

namespace {

/// How often each content lies anywhere. No two files have the same to begin with.
using Contents = std::map<std::string, int>;

void addContents(const std::filesystem::path& item, Contents& contents) {
    if (std::filesystem::is_regular_file(std::filesystem::symlink_status(item))) {
        const std::string text = TemporaryFolder::read(item);
        // Not the journal and the records of the Trash.
        if (text.starts_with("content ")) ++contents[text];
    }
    if (!std::filesystem::is_directory(std::filesystem::symlink_status(item))) return;
    for (const auto& entry : std::filesystem::directory_iterator(item)) addContents(entry.path(), contents);
}

/// Random actions among random folders on two file systems, undone and redone at random, beside a plain
/// account of what must be there.
class RandomActions : public ActionBetweenFileSystems, public testing::WithParamInterface<unsigned> {
  protected:
    RandomActions() {
        for (const auto* side : {&home, &other})
            for (const char* name : {"one", "two", "one/deep", "two/deep", "two/deep/er", "one/Trash"})
                folders.push_back(side->makeFolder(name));
        // Few names, so that they clash.
        for (int number = 0; number < 40; ++number) {
            const std::string path = pick(folders) + "/" + pick(names);
            if (!TemporaryFolder::exists(path)) std::ofstream(path) << "content " << number;
        }
    }

    std::size_t below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random);
    }
    template<typename List>
    const typename List::value_type& pick(const List& list) {
        return list[below(list.size())];
    }

    Contents contents() const {
        Contents found;
        addContents(home.path(), found);
        addContents(other.path(), found);
        return found;
    }
    Names itemsIn(const std::string& folder) const {
        Names items;
        for (const std::string& name : namesIn(folder)) items.push_back(folder + "/" + name);
        return items;
    }

    void doSomething() {
        std::string from = pick(folders);
        const std::string to = pick(folders);
        Names items = TemporaryFolder::exists(from) ? itemsIn(from) : Names();
        std::ranges::shuffle(items, random);
        items.resize(std::min<std::size_t>(items.size(), 1 + below(3)));
        if (items.empty() || !TemporaryFolder::exists(to)) return;
        auto action = std::make_shared<BWAction>(
            ActionModel{preferences, sounds, {journalOnDisk, workRunner}, home.path()}, view);
        action->setActionType(below(2) == 0 ? BWModeMove : BWModeCopy);
        BWAction::Files files;
        for (const std::string& item : items)
            files.push_back(BWSelectedFileOrFolder::fileOrFolderWithPath(item));
        action->setSourceFiles(files);
        action->setSourceFolder(files.front().parentFolder());
        action->setTargetFolder(BWSelectedFileOrFolder::fileOrFolderWithPath(to));
        perform(*action, forwards);
        if (succeeded) undoStack.push(action);
    }
    bool undo() {
        const auto action = undoStack.pop();
        if (!action) return false;
        perform(*action, backwards);
        redoStack.push(action);
        return true;
    }
    bool redo() {
        const auto action = redoStack.pop();
        if (!action) return false;
        perform(*action, forwards);
        undoStack.push(action);
        return true;
    }

    /// What is copied appears once more, all of it when the action answers yes; nothing else does, and
    /// nothing vanishes.
    void perform(BWAction& action, std::int32_t direction) {
        const Contents before = contents();
        Contents expected = before;
        if (action.actionType() == BWModeCopy && direction == forwards)
            for (const auto& file : action.sourceFiles()) addContents(file.path(), expected);
        succeeded = action.performActionInDirection(direction);
        const Contents now = contents();
        if (succeeded) {
            EXPECT_EQ(now, expected);
        } else {
            for (const auto& [content, count] : before)
                EXPECT_GE(now.count(content) ? now.at(content) : 0, count);
            for (const auto& [content, count] : now) EXPECT_LE(count, expected[content]);
        }
        EXPECT_EQ(hiddenItems(), 0);
        if (!succeeded || direction != forwards) return;
        for (const auto& file : action.targetFiles()) EXPECT_TRUE(TemporaryFolder::exists(file.path()));
    }
    int hiddenItems() const {
        int count = 0;
        for (const auto* side : {&home, &other})
            for (const auto& entry : std::filesystem::recursive_directory_iterator(side->path()))
                count += entry.path().filename().string().starts_with(".brimwick-") ? 1 : 0;
        return count;
    }

    std::mt19937 random{GetParam()};
    Names folders;
    const Names names = {"a", "b", "c.txt", "d.tar.gz", ".hidden", "\xff\n"};
    FileJournal journalOnDisk{home / "journal"};
    BWStack<BWAction> undoStack;
    BWStack<BWAction> redoStack;
    bool succeeded = false;
};

INSTANTIATE_TEST_SUITE_P(Seeds, RandomActions, testing::Range(1U, 13U));

TEST_P(RandomActions, LoseNothingDoneUndoneAndRedoneInAnyOrder) {
    for (int step = 0; step < 25; ++step) {
        SCOPED_TRACE(step);
        switch (below(4)) {
        case 0:
            undo();
            break;
        case 1:
            redo();
            break;
        default:
            doSomething();
            break;
        }
        if (HasFailure()) return;
    }
    const auto stackSize = undoStack.array().size();
    while (undo() && !HasFailure()) {
    }
    EXPECT_GE(redoStack.array().size(), stackSize);
    while (redo() && !HasFailure()) {
    }
    EXPECT_EQ(TemporaryFolder::read(home / "journal"), "");
    EXPECT_FALSE(service.delivered.empty());
}

TEST_P(RandomActions, OfMovesAloneAreUndoneToWhereTheyBegan) {
    // Without clashes: every item has a name of its own.
    const std::string from = home.makeFolder("from");
    for (int number = 0; number < 12; ++number)
        std::ofstream(from + "/" + std::to_string(number)) << "content of its own " << number;
    const auto placesOf = [&] {
        std::map<std::string, std::string> places;
        for (const std::string& root : {home.path(), other.path()})
            for (const auto& entry : std::filesystem::recursive_directory_iterator(root))
                if (entry.is_regular_file() && TemporaryFolder::read(entry.path()).starts_with("content of"))
                    places[entry.path()] = TemporaryFolder::read(entry.path());
        return places;
    };
    const auto before = placesOf();
    for (int step = 0; step < 10; ++step) {
        const Names items = itemsIn(from);
        if (items.empty()) break;
        auto action = std::make_shared<BWAction>(
            ActionModel{preferences, sounds, {journalOnDisk, workRunner}, home.path()}, view);
        action->setSourceFiles({BWSelectedFileOrFolder::fileOrFolderWithPath(pick(items))});
        action->setSourceFolder(BWSelectedFileOrFolder::fileOrFolderWithPath(from));
        action->setTargetFolder(BWSelectedFileOrFolder::fileOrFolderWithPath(pick(folders)));
        perform(*action, forwards);
        ASSERT_TRUE(succeeded);
        undoStack.push(action);
    }
    const auto after = placesOf();
    EXPECT_NE(before, after);
    while (undo()) EXPECT_TRUE(succeeded);
    EXPECT_EQ(placesOf(), before);
    while (redo()) EXPECT_TRUE(succeeded);
    EXPECT_EQ(placesOf(), after);
}

} // namespace

} // namespace brimwick
