#include "catalogue_keys.h"
#include "message_catalogue.h"
#include "temp_dir.h"
#include "text_decoding.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <string_view>

namespace qor {
namespace {

using namespace std::string_view_literals;

MessageCatalogue Loaded(std::string_view bytes)
{
    MessageCatalogue catalogue;
    auto status = catalogue.LoadFromBytes(bytes, "QORTool.msg");
    EXPECT_TRUE(status.ok()) << status.error().message;
    return catalogue;
}

// One catalogue holding the tricky lines side by side.
constexpr std::string_view Sample = "[Config]\r\n"
                                    "Version=1.70\r\n"
                                    "[frmEditor]\r\n"
                                    "Text51-1=A\r\n"
                                    "Text51=B\r\n"
                                    "Text5=five\r\n"
                                    "Text5-2=first\r\n"
                                    "Text5-2=second\r\n"
                                    "Text9-12=twelve\r\n"
                                    "Text9-2=two\r\n"
                                    "Text3=\"  \"\r\n"
                                    "Text4=Open ## the \"button\"\r\n"
                                    "Text6=\"  kept ## quotes do not protect\"\r\n"
                                    " Text7=one blank\r\n"
                                    "  Text8=two blanks\r\n"
                                    "; a comment line = not an entry\r\n"
                                    "[ String ]\r\n"
                                    "Str5=Ball\r\n"
                                    "Str5-2=never seen\r\n"
                                    "[frmLimit]\r\n"
                                    "Text3=Limit\r\n"
                                    "[MSG]\r\n"
                                    "MSG15-1=main\r\n"
                                    "MSG15-3=third\r\n"
                                    "msg16 = lower case key\r\n";

TEST(MessageCatalogue, GetTextFollowsTheFilesQuirks)
{
    struct Lookup
    {
        const char *section;
        const char *key;
        const char *expected;
    };
    const Lookup lookups[] = {
        // The last main text wins; sub-key 1 is the main text.
        Lookup{"frmEditor", "Text51", "B"}, Lookup{"frmEditor", "Text51-1", "B"},
        // The first sub-key definition wins; the plain search lets "2" find "12".
        Lookup{"frmEditor", "Text5-2", "first"}, Lookup{"frmEditor", "Text5", "five"},
        Lookup{"frmEditor", "Text5-3", ""}, Lookup{"frmEditor", "Text9-2", "twelve"},
        Lookup{"frmEditor", "Text5-x", "five"},
        // Values: quotes keep blanks, "##" starts a comment even inside quotes.
        Lookup{"frmEditor", "Text3", "  "}, Lookup{"frmEditor", "Text4", "Open"},
        Lookup{"frmEditor", "Text6", "  kept"},
        // Indented entries lose the start of their value.
        Lookup{"frmEditor", "Text7", "=one blank"}, Lookup{"frmEditor", "Text8", "8=two blanks"},
        // Str keys ignore the sub-key.
        Lookup{"String", "Str5-2", "Ball"}, Lookup{"STRING", "str5", "Ball"},
        Lookup{" frmlimit ", "Text3", "Limit"}, Lookup{"MSG", "MSG15-3", "third"},
        Lookup{"MSG", "MSG15", "main"}, Lookup{"msg", " MSG16 ", "lower case key"},
        // Anything not found is empty.
        Lookup{"frmList", "Text51", ""}, Lookup{"Config", "Text3", ""},
        Lookup{"frmEditor", "Tex51", ""}, Lookup{"frmEditor", "Text", ""},
        Lookup{"frmEditor", "Text99999", ""}, Lookup{"frmEditor", "Text30000", ""},
        Lookup{"frmEditor", "", ""}, Lookup{"", "Text51", ""}};

    // Entry numbers must stay below the line count: blank lines make room for 51.
    const MessageCatalogue catalogue = Loaded(std::string(Sample) + std::string(30, '\n'));

    for (const Lookup &lookup : lookups) {
        EXPECT_EQ(catalogue.GetText(lookup.section, lookup.key), lookup.expected)
            << lookup.section << "/" << lookup.key;
    }
}

// A file that cannot be loaded is refused naming the file and the line, and
// the catalogue keeps what it held.
TEST(MessageCatalogue, RefusesABrokenFileNamingTheLine)
{
    const struct
    {
        std::string bytes;
        int line;
        const char *says;
    } cases[] = {{"", 0, "empty"},
                 {"\xEF\xBB\xBF", 0, "empty"},
                 {"Text5=x", 1, "\"Text5\" stands outside a known section"},
                 {"[MSG]\r\n[Config]\r\nMsg2-2=x\r\n", 3, "outside a known section"},
                 // Three lines: the final line end starts no fourth one.
                 {"[MSG]\n\nMSG3=x\n", 3, "outside 0 to 2"},
                 {"[MSG]\nMSG99999=x\n", 2, "outside 0 to 1"},
                 {"[MSG]\nMSG1-40000=x\n", 2, "sub-key"}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.bytes);
        MessageCatalogue catalogue = Loaded("[MSG]\nMSG1=kept\n");

        auto status = catalogue.LoadFromBytes(c.bytes, "QORTool.msg");

        ASSERT_FALSE(status.ok());
        EXPECT_EQ(status.error().line, c.line);
        std::string where = "\"QORTool.msg\"";
        if (c.line > 0) {
            where += ", line " + std::to_string(c.line);
        }
        EXPECT_EQ(status.error().message.rfind(where, 0), 0u) << status.error().message;
        EXPECT_NE(status.error().message.find(c.says), std::string::npos) << status.error().message;
        EXPECT_EQ(catalogue.GetText("MSG", "MSG1"), "kept");
    }
    // An entry number up to the last line is fine.
    EXPECT_EQ(Loaded("[MSG]\nMSG3=x\n\n\n").GetText("MSG", "MSG3"), "x");
}

TEST(MessageCatalogue, ReadsOnlyTheFirst10001Lines)
{
    std::string bytes = "[frmList]\n";
    for (int i = 1; i < 10000; ++i) {
        bytes += "## filler\n";
    }
    bytes += "Text10000=last read\n[Config]\nText1=beyond the limit, so no error\n";

    auto catalogue = Loaded(bytes);

    EXPECT_EQ(catalogue.GetText("frmList", "Text10000"), "last read");
    EXPECT_EQ(catalogue.GetText("frmList", "Text1"), "");
}

TEST(MessageCatalogue, EndsLinesAtCrLfLfOrCrAndDecodesToUtf8)
{
    for (const std::string end : {"\r\n", "\n", "\r"}) {
        auto catalogue = Loaded("[frmInfo]" + end + "Text1=one" + end + end + "Text2=two" + end);

        EXPECT_EQ(catalogue.GetText("frmInfo", "Text1"), "one");
        EXPECT_EQ(catalogue.GetText("frmInfo", "Text2"), "two");
    }
    // The BOM sits before the first header, which it would hide if it were kept.
    for (const char *bytes : {"[frmEditor]\nText1=Caf\xC3\xA9 \xE2\x82\xAC",
                              "\xEF\xBB\xBF[frmEditor]\nText1=Caf\xC3\xA9 \xE2\x82\xAC",
                              "[frmEditor]\nText1=Caf\xE9 \x80"}) {
        auto catalogue = Loaded(bytes);

        EXPECT_EQ(catalogue.GetText("frmEditor", "Text1"), "Café €");
    }
}

TEST(MessageCatalogue, ReadsACatalogueThatIsNotUtf8InTheConfiguredCodePage)
{
    // "ツールリスト" and "ソフト": second bytes 5B ("[") and 5C ("\\"). Entry
    // numbers must stay below the line count.
    const std::string shiftJis = "[String]\r\nStr80=ATC\x83\x63\x81\x5B\x83\x8B\x83\x8A\x83\x58"
                                 "\x83\x67\r\n[frmInfo]\r\nText1=\x83\x5C\x83\x74\x83\x67\r\n" +
                                 std::string(100, '\n');
    MessageCatalogue catalogue;

    ASSERT_TRUE(catalogue.LoadFromBytes(shiftJis, "QORTool_ja.msg", 932).ok());

    EXPECT_EQ(catalogue.GetText("String", "Str80"),
              "ATC\xE3\x83\x84\xE3\x83\xBC\xE3\x83\xAB\xE3\x83\xAA\xE3\x82\xB9\xE3\x83\x88");
    EXPECT_EQ(catalogue.GetText("frmInfo", "Text1"), "\xE3\x82\xBD\xE3\x83\x95\xE3\x83\x88");
}

TEST(MessageCatalogue, LoadsAFileAndNamesOneItCannotRead)
{
    test::TempDir dir;
    dir.write("QORTool.msg", "[frmList]\r\nText1=Open\r\n");
    MessageCatalogue catalogue;

    auto loaded = catalogue.Load(dir.file("QORTool.msg"));
    auto missing = catalogue.Load(dir.file("missing.msg"));

    ASSERT_TRUE(loaded.ok()) << loaded.error().message;
    EXPECT_EQ(catalogue.GetText("frmList", "Text1"), "Open");
    ASSERT_FALSE(missing.ok());
    EXPECT_NE(missing.error().message.find(dir.file("missing.msg")), std::string::npos);
}

// The sample with random pieces inserted, erased or overwritten: whatever
// loads answers in UTF-8, whatever does not is refused naming the file.
TEST(MessageCatalogue, SurvivesRandomMutations)
{
    constexpr std::string_view pieces[] = {
        "[MSG]", "[ String ]", "[]", "Text", "str", "0",    "12",           "-",
        "1-",    "40000",      "=",  "\"",   "##",  "\xD8", "\xEF\xBB\xBF", "\x80\x9D",
        "\xC3",  "\0"sv,       " ",  "\r\n", "\n",  "\r"};
    std::mt19937 random(20240607);
    int loaded = 0;
    for (int round = 0; round < 4000; ++round) {
        std::string bytes = std::string(Sample) + std::string(30, '\n');
        for (int n = 1 + static_cast<int>(random() % 6); n > 0; --n) {
            const std::size_t at = random() % (bytes.size() + 1);
            const std::string_view piece = pieces[random() % std::size(pieces)];
            const std::size_t op = random() % 3; // insert, erase or overwrite
            const std::size_t length = op == 0 ? 0 : op == 1 ? 1 + random() % 8 : piece.size();
            bytes.replace(at, length, op == 1 ? std::string_view() : piece);
        }
        MessageCatalogue catalogue;

        auto status = catalogue.LoadFromBytes(bytes, "random");

        if (!status.ok()) {
            EXPECT_EQ(status.error().message.rfind("\"random\"", 0), 0u);
            continue;
        }
        ++loaded;
        for (const char *section : {"frmEditor", "MSG", "String"}) {
            for (const char *key : {"Text5-2", "Text9-2", "MSG15-3", "Str5", "Text5-x", "msg1-x"}) {
                EXPECT_TRUE(IsValidUtf8(catalogue.GetText(section, key)));
            }
        }
    }
    EXPECT_GT(loaded, 400); // the mutations reach both outcomes
    EXPECT_LT(loaded, 3600);
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

// The shipped catalogues hold a text for every key the program asks for; the
// Japanese one reads as UTF-8, keeps what the windows glue or fill in, and keeps the
// words that go into the tool list file as they are.
TEST(ShippedCatalogues, DefineEveryKeyAndTheJapaneseOneKeepsTheFileWords)
{
    const MessageCatalogue english = Loaded(test::SourceFile("data/QORTool.msg"));
    const MessageCatalogue japanese = Loaded(test::SourceFile("data/QORTool_ja.msg"));

    for (const CatalogueKey &k : CatalogueKeys()) {
        const std::string en = english.GetText(k.section, k.key);
        const std::string ja = japanese.GetText(k.section, k.key);
        SCOPED_TRACE(std::string(k.section) + " " + std::string(k.key));
        EXPECT_NE(en, "");
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

// Valid UTF-8 wins over the code page (the catalogue tests above read the
// other cases through it), and a BOM keeps one damaged character from turning
// the rest into mojibake.
TEST(DecodeTextFile, PrefersUtf8)
{
    EXPECT_EQ(DecodeTextFile("\xC3\x98", 932), "\xC3\x98"); // two half-width katakana in 932
    EXPECT_EQ(DecodeTextFile("\xEF\xBB\xBF\xC3\xA9\xFF", 1252), "\xC3\xA9\xEF\xBF\xBD");
}

} // namespace
} // namespace qor
