#include "catalogue_keys.h"
#include "message_catalogue.h"
#include "temp_dir.h"
#include "text_decoding.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace qor {
namespace {

MessageCatalogue Loaded(const std::string &bytes, const std::string &name)
{
    MessageCatalogue catalogue;
    auto status = catalogue.LoadFromBytes(bytes, name);
    EXPECT_TRUE(status.ok()) << status.error().message;
    return catalogue;
}

struct DefinedKey
{
    std::string section;
    std::string key;
};

// Every entry the file writes under a section, in file order: lines that
// start with a key and an equals sign (comments start with "##").
std::vector<DefinedKey> DefinedKeys(std::string_view bytes)
{
    std::vector<DefinedKey> keys;
    std::string section;
    while (!bytes.empty()) {
        std::size_t end = bytes.find('\n');
        std::string_view line = bytes.substr(0, end);
        bytes = end == std::string_view::npos ? std::string_view() : bytes.substr(end + 1);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
            section = std::string(line.substr(1, line.size() - 2));
            continue;
        }
        const std::size_t equals = line.find('=');
        if (equals == std::string_view::npos || line.starts_with("##") || section == "Config") {
            continue;
        }
        keys.push_back({section, std::string(line.substr(0, equals))});
    }
    return keys;
}

// The "%1" ... "%9" a text fills in.
std::string Placeholders(std::string_view text)
{
    std::string found;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == '%' && text[i + 1] >= '1' && text[i + 1] <= '9') {
            found += text[i + 1];
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

// The Japanese catalogue holds a text for every key of the English one,
// keeps what the program glues or fills in, and keeps the words that go into
// the tool list file as they are.
TEST(JapaneseCatalogue, TranslatesEveryEnglishKeyAndKeepsFileWords)
{
    const std::string englishBytes = test::SourceFile("data/QORTool.msg");
    const std::string japaneseBytes = test::SourceFile("data/QORTool_ja.msg");
    const MessageCatalogue english = Loaded(englishBytes, "QORTool.msg");
    const MessageCatalogue japanese = Loaded(japaneseBytes, "QORTool_ja.msg");

    const std::vector<DefinedKey> keys = DefinedKeys(englishBytes);
    ASSERT_GT(keys.size(), 250u);
    for (const DefinedKey &k : keys) {
        const std::string en = english.GetText(k.section, k.key);
        const std::string ja = japanese.GetText(k.section, k.key);
        EXPECT_NE(ja, "") << k.section << " " << k.key;
        EXPECT_EQ(Placeholders(ja), Placeholders(en)) << k.section << " " << k.key;
        // The windows glue texts together around the blanks the texts bring.
        EXPECT_EQ(ja.starts_with(' '), en.starts_with(' ')) << k.section << " " << k.key;
        EXPECT_EQ(ja.ends_with(' '), en.ends_with(' ')) << k.section << " " << k.key;
    }
    for (const CatalogueKey &key : CatalogueKeys()) {
        EXPECT_NE(japanese.GetText(key.section, key.key), "") << key.section << " " << key.key;
    }

    // The kind words and arbor words the file writer and the list use, the
    // file's title line, and the limit keywords.
    const std::vector<std::string> fileWords = {"Str0",  "Str1",  "Str2",  "Str3", "Str4",  "Str5",
                                                "Str6",  "Str7",  "Str8",  "Str9", "Str10", "Str11",
                                                "Str12", "Str13", "Str15", "Str80"};
    for (const std::string &key : fileWords) {
        EXPECT_EQ(japanese.GetText("String", key), english.GetText("String", key)) << key;
    }
    EXPECT_EQ(japanese.GetText("String", "Str15"), "T-T");
    EXPECT_EQ(japanese.GetText("frmLimit", "Text3"), "LIMIT");
    EXPECT_EQ(japanese.GetText("frmLimit", "Text4"), "LIMITS");
}

// UTF-8 without BOM and with CR LF, so it is read as UTF-8 and not taken for
// Windows-1252; the lines above [Config] stay ASCII for readers that take the
// file in the system's code page.
TEST(JapaneseCatalogue, IsUtf8WithCrLfAndReadsAsJapanese)
{
    const std::string bytes = test::SourceFile("data/QORTool_ja.msg");
    ASSERT_FALSE(bytes.empty());
    EXPECT_TRUE(IsValidUtf8(bytes));
    EXPECT_FALSE(bytes.starts_with("\xEF\xBB\xBF"));
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == '\n') {
            ASSERT_TRUE(i > 0 && bytes[i - 1] == '\r') << "bare LF at byte " << i;
        }
    }
    const std::size_t config = bytes.find("[Config]\r\nVersion=1.70\r\n");
    ASSERT_NE(config, std::string::npos);
    for (std::size_t i = 0; i < config; ++i) {
        ASSERT_LT(static_cast<unsigned char>(bytes[i]), 0x80u) << "byte " << i;
    }

    const MessageCatalogue japanese = Loaded(bytes, "QORTool_ja.msg");
    EXPECT_EQ(japanese.GetText("frmEditor", "Text31"), "OK");
    EXPECT_EQ(japanese.GetText("frmEditor", "Text32"), "キャンセル");
    EXPECT_EQ(japanese.GetText("frmList", "Text23"), "工具径");
}

} // namespace
} // namespace qor
