#include "model/PreferencesStore.h"
#include "model/RebuildReason.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace brimwick {

TEST(RebuildReason, NamesPreferencesThatExist) {
    const PropertyListDictionary defaults = PreferencesStore::defaultPreferencesDictionary();
    for (const auto code : std::initializer_list<RebuildReasonCode>{0, 1, 2}) {
        const RebuildReason* reason = rebuildReason(code);
        ASSERT_NE(reason, nullptr);
        for (const char* key : {reason->progressKey, reason->animationKey, reason->soundKey})
            EXPECT_TRUE(defaults.contains(key)) << key;
    }
}

TEST(RebuildReason, KnowsNoOtherCode) {
    EXPECT_EQ(rebuildReason(3), nullptr);
    EXPECT_EQ(rebuildReason(-1), nullptr);
    EXPECT_EQ(rebuildReason(-128), nullptr);
}

TEST(RebuildReason, HasOneMessageForTheFirstIndexAndOneForAllOthers) {
    EXPECT_STREQ(rebuildCompletionMessage(0), "Index initialization complete.");
    for (const auto code : std::initializer_list<RebuildReasonCode>{1, 2, 3, -1})
        EXPECT_STREQ(rebuildCompletionMessage(code), "Index rebuilding complete.");
}

} // namespace brimwick
