#include "app/commands/SearchRequest.h"

#include <gtest/gtest.h>

namespace brimwick {
namespace {

std::shared_ptr<const FolderIndex> oneFolder() {
    FolderTree folders;
    folders.addRoot("/home/Taxes", "Taxes");
    return std::make_shared<const FolderIndex>(std::move(folders));
}

/// What is printed in answer to a request, or the complaint.
std::string answerTo(const InstanceRequest& request) {
    std::string printed;
    const RequestResult result =
        answerSearchRequest(request, oneFolder())([&printed](std::string_view bytes) {
            printed += bytes;
            return true;
        });
    return printed + result.message;
}

TEST(SearchRequest, IsAnsweredInTheFormatThatItAsksFor) {
    EXPECT_EQ(answerTo(searchRequest("tax", SearchFormat::lines)), "/home/Taxes\n");
    EXPECT_EQ(answerTo(searchRequest("tax", SearchFormat::terminal)), "/home/Taxes\n");
    EXPECT_EQ(answerTo(searchRequest("tax", SearchFormat::nulSeparated)), std::string("/home/Taxes\0", 12));
    EXPECT_EQ(answerTo(searchRequest("tax", SearchFormat::json)),
              "[\n{\"name\": \"Taxes\", \"path\": \"/home/Taxes\"}\n]\n");
}

TEST(SearchRequest, OfAnotherVersionIsRefused) {
    const std::string refusal = "the running Brimwick is of another version";
    EXPECT_EQ(answerTo({.verb = "search", .arguments = {"tax", "from the future"}}), refusal);
    EXPECT_EQ(answerTo({.verb = "search", .arguments = {"tax"}}), refusal);
}

} // namespace
} // namespace brimwick
