#include "fakes/TemporaryFolder.h"
#include "model/PropertyListFile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <initializer_list>

namespace brimwick {
namespace {

using testing::HasSubstr;

std::string document(const std::string& root) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST "
           "1.0//EN\" "
           "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n<plist version=\"1.0\">" +
           root + "</plist>\n";
}

std::string documentWithValue(const std::string& value) {
    return document("<dict><key>k</key>" + value + "</dict>");
}

std::string repeated(const std::string& text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

PropertyListDictionary single(PropertyListValue value) {
    PropertyListDictionary dictionary;
    dictionary.set("k", std::move(value));
    return dictionary;
}

PropertyListValue text(const char* bytes) {
    return {std::string(bytes)};
}

PropertyListDictionary writtenAndRead(const PropertyListDictionary& dictionary) {
    const auto bytes = serialisePropertyList(dictionary);
    EXPECT_TRUE(bytes.has_value());
    const auto read = parsePropertyList(bytes.value_or(""));
    EXPECT_TRUE(read.has_value()) << (read ? "" : read.error());
    return read.value_or(PropertyListDictionary());
}

PropertyListValue nestedArrays(int depth) {
    PropertyListValue value = {PropertyListArray{}};
    for (int i = 1; i < depth; ++i) {
        PropertyListArray outer;
        outer.push_back(std::move(value));
        value = {std::move(outer)};
    }
    return value;
}

TEST(PropertyListFile, WritesTheXmlFormat) {
    const std::string bytes = serialisePropertyList(single({true})).value();
    EXPECT_THAT(bytes, testing::StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>"));
    EXPECT_THAT(bytes, HasSubstr("<plist version=\"1.0\">"));
    EXPECT_THAT(bytes, HasSubstr("<key>k</key>\n\t<true/>"));
}

TEST(PropertyListFile, GivesEveryKindOfValueBack) {
    PropertyListDictionary inner;
    inner.set("", text("under an empty key"));
    PropertyListDictionary all;
    all.set("text", text("h\u00e9llo \u65e5\u672c \U0001F600 <&>\"' \t\n  "));
    all.set("empty", text(""));
    all.set("white", text("  \n"));
    all.set("yes", {true});
    all.set("no", {false});
    all.set("negative", {std::int64_t{-5}});
    all.set("largest", {INT64_MAX});
    all.set("smallest", {INT64_MIN});
    all.set("real", {0.1});
    all.set("data", {PropertyListData{std::string("\xFF\0a", 3)}});
    all.set("no data", {PropertyListData{}});
    all.set("date", {PropertyListDate{-5}});
    all.set("array", {PropertyListArray{text("a"), {PropertyListArray{}}, {inner}}});
    all.set("<&>", {PropertyListDictionary()});
    EXPECT_EQ(writtenAndRead(all), all);
}

TEST(PropertyListFile, DropsFromTextsAndKeysWhatXmlCannotHold) {
    PropertyListDictionary dictionary;
    dictionary.set("k\x01", {std::string("a\0b\x1F"
                                         "c\xFF"
                                         "d\xEF\xBF\xBE",
                                         11)});
    EXPECT_EQ(writtenAndRead(dictionary), single(text("abcd")));
}

TEST(PropertyListFile, ReadsCommentsCharacterDataAndEntities) {
    const std::string bytes = document("<!-- <array> --><dict><key>k</key>"
                                       "<string>a<![CDATA[<array>]]>&lt;&#233;</string></dict>");
    EXPECT_EQ(parsePropertyList(bytes).value(), single(text("a<array><\u00e9")));
}

TEST(PropertyListFile, ReadsAFileThatBeginsWithAByteOrderMark) {
    EXPECT_EQ(parsePropertyList("\xEF\xBB\xBF" + documentWithValue("<true/>")).value(), single({true}));
}

TEST(PropertyListFile, RefusesWhatIsNoPropertyList) {
    const std::string whole = documentWithValue("<string>value</string>");
    for (const std::string& bytes : std::initializer_list<std::string>{
             "", "hello", std::string(100, '\0'), whole.substr(0, whole.size() / 2),
             document("<dict/><dict/>"), document("<dict><key>k</key>"), documentWithValue("<unknown/>"), "<",
             "<plist", "<!--", "<![CDATA[", "<?xml", "<dict", "</dict>", "<plist><dict"})
        EXPECT_FALSE(parsePropertyList(bytes).has_value()) << bytes;
}

TEST(PropertyListFile, RefusesABinaryPropertyList) {
    // {"k": true}
    const std::string binary(
        "bplist00\xD1\x01\x02Qk\x09\x08\x0B\x0D\0\0\0\0\0\0\x01\x01\0\0\0\0\0\0\0\x03\0\0"
        "\0\0\0\0\0\0\0\0\0\0\0\0\0\x0E",
        49);
    EXPECT_FALSE(parsePropertyList(binary).has_value());
}

TEST(PropertyListFile, RefusesARootThatIsNoDictionary) {
    for (const char* root : {"<array/>", "<string>text</string>", "<true/>", "<integer>1</integer>"}) {
        const auto read = parsePropertyList(document(root));
        ASSERT_FALSE(read.has_value()) << root;
        EXPECT_THAT(read.error(), HasSubstr("root"));
    }
}

TEST(PropertyListFile, RefusesTextThatIsNotUtf8) {
    for (const std::string& bytes :
         {documentWithValue("<string>\xFF\xFE</string>"), documentWithValue("<string>&#xD800;</string>"),
          documentWithValue("<array><dict><key>\xC3</key><true/></dict></array>"),
          document("<dict><key>\xFF</key><true/></dict>")}) {
        const auto read = parsePropertyList(bytes);
        ASSERT_FALSE(read.has_value()) << bytes;
        EXPECT_THAT(read.error(), HasSubstr("UTF-8"));
    }
}

TEST(PropertyListFile, RefusesEntitiesOfItsOwnMaking) {
    EXPECT_FALSE(parsePropertyList("<!DOCTYPE p [<!ENTITY x SYSTEM \"file:///etc/passwd\">]><plist><dict>"
                                   "<key>k</key><string>&x;</string></dict></plist>")
                     .has_value());
}

TEST(PropertyListFile, ReadsAndWritesContainersUpToItsDepth) {
    const PropertyListDictionary deepest = single(nestedArrays(maximumPropertyListDepth - 1));
    EXPECT_EQ(writtenAndRead(deepest), deepest);
    EXPECT_FALSE(serialisePropertyList(single(nestedArrays(maximumPropertyListDepth))).has_value());
    const int arrays = maximumPropertyListDepth;
    EXPECT_FALSE(
        parsePropertyList(documentWithValue(repeated("<array>", arrays) + repeated("</array>", arrays)))
            .has_value());
}

TEST(PropertyListFile, RefusesContainersNestedWithoutEnd) {
    for (const char* name : {"array", "dict"}) {
        const std::string open = std::string("<") + name + ">";
        const std::string close = std::string("</") + name + ">";
        EXPECT_FALSE(parsePropertyList(documentWithValue(repeated(open, 100000) + repeated(close, 100000)))
                         .has_value());
        EXPECT_FALSE(parsePropertyList(repeated(open, 100000)).has_value());
    }
}

TEST(PropertyListFile, IsNotDeceivedAboutTheDepth) {
    const std::string closes = "</array></array>";
    for (const std::string& disguise :
         {"<!--" + closes + "-->", "<string><![CDATA[" + closes + "]]></string>",
          "<string a=\">" + closes + "\"/>", "<string a='>" + closes + "'/>", "<? \">" + closes + "\" ?>",
          "<!DOCTYPE a \">" + closes + "\">", "<!DOCTYPE a [" + closes + "]>"})
        EXPECT_FALSE(
            parsePropertyList(documentWithValue(repeated("<array><array>" + disguise, 50000))).has_value())
            << disguise;
}

TEST(PropertyListFile, CountsNestingAndNotNeighbours) {
    const auto read = parsePropertyList(
        documentWithValue("<array>" + repeated("<dict/><array></array>", 1000) + "</array>"));
    ASSERT_TRUE(read.has_value()) << read.error();
    EXPECT_EQ(std::get<PropertyListArray>(read->find("k")->value).size(), 2000u);
}

TEST(PropertyListFile, RefusesMoreBytesThanItsLimit) {
    const std::string bytes =
        documentWithValue("<string>" + std::string(maximumPropertyListSize, 'x') + "</string>");
    const auto read = parsePropertyList(bytes);
    ASSERT_FALSE(read.has_value());
    EXPECT_EQ(read.error(), "too large");
}

TEST(PropertyListFile, DoesNotEvenReadAHugeFile) {
    const TemporaryFolder folder;
    const std::string path = folder.makeFile("huge.plist", documentWithValue("<true/>"));
    std::filesystem::resize_file(path, std::uintmax_t{1} << 40);
    const auto read = readPropertyListFile(path);
    ASSERT_FALSE(read.has_value());
    EXPECT_EQ(read.error(), "too large");
}

TEST(PropertyListFile, DoesNotWaitForWhatIsNoFile) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_FALSE(readPropertyListFile(folder / "pipe").has_value());
    EXPECT_FALSE(readPropertyListFile(folder.path()).has_value());
    EXPECT_FALSE(readPropertyListFile(folder / "missing").has_value());
    EXPECT_FALSE(readPropertyListFile("").has_value());
}

} // namespace
} // namespace brimwick
