#include "catalogue_keys.h"
#include "message_catalogue.h"
#include "temp_dir.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace qor {
namespace {

MessageCatalogue Shipped(const std::string &name)
{
    MessageCatalogue catalogue;
    const auto status = catalogue.LoadFromBytes(test::SourceFile("data/" + name), name);
    EXPECT_TRUE(status.ok()) << status.error().message;
    return catalogue;
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

// The Japanese catalogue reads as UTF-8, holds a text for every key the
// program asks for, keeps what the windows glue or fill in, and keeps the
// words that go into the tool list file as they are.
TEST(JapaneseCatalogue, TranslatesEveryKeyAndKeepsTheFileWords)
{
    const MessageCatalogue english = Shipped("QORTool.msg");
    const MessageCatalogue japanese = Shipped("QORTool_ja.msg");

    for (const CatalogueKey &k : CatalogueKeys()) {
        const std::string en = english.GetText(k.section, k.key);
        const std::string ja = japanese.GetText(k.section, k.key);
        SCOPED_TRACE(std::string(k.section) + " " + std::string(k.key));
        EXPECT_NE(ja, "");
        EXPECT_EQ(Placeholders(ja), Placeholders(en));
        EXPECT_EQ(ja.starts_with(' '), en.starts_with(' '));
        EXPECT_EQ(ja.ends_with(' '), en.ends_with(' '));
    }
    for (const char *key : {"Str0", "Str1", "Str2", "Str3", "Str4", "Str5", "Str6", "Str7", "Str8",
                            "Str9", "Str11", "Str12", "Str13", "Str15", "Str80"}) {
        EXPECT_EQ(japanese.GetText("String", key), english.GetText("String", key)) << key;
    }
    EXPECT_EQ(japanese.GetText("frmLimit", "Text3"), "LIMIT");
    EXPECT_EQ(japanese.GetText("frmEditor", "Text32"), "キャンセル");
    EXPECT_EQ(japanese.GetText("frmList", "Text23"), "工具径");
}

} // namespace
} // namespace qor
