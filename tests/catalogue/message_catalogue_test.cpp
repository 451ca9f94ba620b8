#include "catalogue_keys.h"
#include "message_catalogue.h"
#include "temp_dir.h"
#include "text_decoding.h"

#include <gtest/gtest.h>
#include <ostream>
#include <random>
#include <string>

namespace qor {
namespace {

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

struct Lookup
{
    const char *section;
    const char *key;
    const char *expected;
};

std::ostream &operator<<(std::ostream &out, const Lookup &lookup)
{
    return out << lookup.section << "/" << lookup.key;
}

class GetTextTest : public testing::TestWithParam<Lookup>
{};

TEST_P(GetTextTest, FindsWhatTheFileDefines)
{
    // Entry numbers must stay below the line count: blank lines make room for 51.
    static const MessageCatalogue catalogue = Loaded(std::string(Sample) + std::string(30, '\n'));

    EXPECT_EQ(catalogue.GetText(GetParam().section, GetParam().key), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    MessageCatalogue, GetTextTest,
    testing::Values(
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
        Lookup{"frmEditor", "", ""}, Lookup{"", "Text51", ""}));

TEST(MessageCatalogue, NumbersSectionsWithSevenLeftForThePool)
{
    EXPECT_EQ(SectionNumber("frmList"), 1);
    EXPECT_EQ(SectionNumber("String"), 6);
    EXPECT_EQ(SectionNumber("frmLimit"), 8);
    EXPECT_EQ(SectionNumber("Config"), 0);
}

struct BadFile
{
    std::string bytes;
    int line;
    const char *says;
};

class LoadErrorTest : public testing::TestWithParam<BadFile>
{};

TEST_P(LoadErrorTest, IsRefusedNamingTheLine)
{
    MessageCatalogue catalogue = Loaded("[MSG]\nMSG1=kept\n");

    auto status = catalogue.LoadFromBytes(GetParam().bytes, "QORTool.msg");

    ASSERT_FALSE(status.ok());
    EXPECT_EQ(status.error().line, GetParam().line);
    std::string where = "\"QORTool.msg\"";
    if (GetParam().line > 0) {
        where += ", line " + std::to_string(GetParam().line);
    }
    EXPECT_EQ(status.error().message.rfind(where, 0), 0u) << status.error().message;
    EXPECT_NE(status.error().message.find(GetParam().says), std::string::npos)
        << status.error().message;
    EXPECT_EQ(catalogue.GetText("MSG", "MSG1"), "kept");
}

INSTANTIATE_TEST_SUITE_P(
    MessageCatalogue, LoadErrorTest,
    testing::Values(BadFile{"", 0, "empty"}, BadFile{"\xEF\xBB\xBF", 0, "empty"},
                    BadFile{"Text5=x", 1, "\"Text5\" stands outside a known section"},
                    BadFile{"[MSG]\r\n[Config]\r\nMsg2-2=x\r\n", 3, "outside a known section"},
                    // Three lines: the final line end starts no fourth one.
                    BadFile{"[MSG]\n\nMSG3=x\n", 3, "outside 0 to 2"},
                    BadFile{"[MSG]\nMSG99999=x\n", 2, "outside 0 to 1"},
                    BadFile{"[MSG]\nMSG1-40000=x\n", 2, "sub-key"}));

TEST(MessageCatalogue, AcceptsEntryNumbersUpToTheLastLine)
{
    auto catalogue = Loaded("[MSG]\nMSG3=x\n\n\n");

    EXPECT_EQ(catalogue.GetText("MSG", "MSG3"), "x");
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

class LineEndTest : public testing::TestWithParam<const char *>
{};

TEST_P(LineEndTest, EndsLinesAtCrLfLfOrCr)
{
    std::string end = GetParam();

    auto catalogue = Loaded("[frmInfo]" + end + "Text1=one" + end + end + "Text2=two" + end);

    EXPECT_EQ(catalogue.GetText("frmInfo", "Text1"), "one");
    EXPECT_EQ(catalogue.GetText("frmInfo", "Text2"), "two");
}

INSTANTIATE_TEST_SUITE_P(MessageCatalogue, LineEndTest, testing::Values("\r\n", "\n", "\r"));

struct Encoded
{
    std::string bytes;
    std::string text;
};

class EncodingTest : public testing::TestWithParam<Encoded>
{};

TEST_P(EncodingTest, DecodesToUtf8)
{
    auto catalogue = Loaded(GetParam().bytes);

    EXPECT_EQ(catalogue.GetText("frmEditor", "Text1"), GetParam().text);
}

// The BOM sits before the first header, which it would hide if it were kept.
INSTANTIATE_TEST_SUITE_P(
    MessageCatalogue, EncodingTest,
    testing::Values(Encoded{"[frmEditor]\nText1=Durchmesser \xC3\x98", "Durchmesser Ø"},
                    Encoded{"\xEF\xBB\xBF[frmEditor]\nText1=Durchmesser \xC3\x98", "Durchmesser Ø"},
                    Encoded{"[frmEditor]\nText1=Durchmesser \xD8", "Durchmesser Ø"},
                    Encoded{"[frmEditor]\nText1=Caf\xE9 \x80", "Café €"}));

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

TEST(MessageCatalogue, ShippedCatalogueDefinesEveryKeyTheProgramAsksFor)
{
    auto catalogue = Loaded(test::SourceFile("data/QORTool.msg"));

    for (const CatalogueKey &key : CatalogueKeys()) {
        EXPECT_NE(catalogue.GetText(key.section, key.key), "") << key.section << " " << key.key;
    }
}

// Random catalogues: lines shaped like the grammar, with stray bytes mixed in.
std::string RandomCatalogue(std::mt19937 &random)
{
    constexpr std::string_view headers[] = {"[MSG]", "[frmList]", "[ String ]", "[Config]", "[]"};
    constexpr std::string_view keys[] = {"Text", "MSG", "str", "Tex", "xSTR", ""};
    constexpr std::string_view numbers[] = {"0",   "1",    "12",   "2",  "3e1",   "x",  "-",
                                            "1-2", "2-12", "5--2", "1-", "40000", "1-1"};
    constexpr std::string_view values[] = {"A",    "\"",           " ",        "##", "\xC3\x98",
                                           "\xD8", "\xEF\xBB\xBF", "\x80\x9D", "=",  "-"};
    constexpr std::string_view ends[] = {"\r\n", "\n", "\r"};
    auto pick = [&](const auto &list) { return list[random() % std::size(list)]; };
    std::string bytes;
    for (int line = random() % 40; line > 0; --line) {
        switch (random() % 4) {
        case 0:
            bytes += pick(headers);
            break;
        case 1:
            for (int i = random() % 6; i > 0; --i) {
                bytes += static_cast<char>(random());
            }
            break;
        default:
            bytes.append(random() % 3, ' ');
            bytes += pick(keys);
            bytes += pick(numbers);
            bytes += "=";
            for (int i = random() % 5; i > 0; --i) {
                bytes += pick(values);
            }
        }
        bytes += pick(ends);
    }
    return bytes;
}

TEST(MessageCatalogue, SurvivesRandomBytes)
{
    std::mt19937 random(20240607);
    for (int round = 0; round < 4000; ++round) {
        std::string bytes = RandomCatalogue(random);
        MessageCatalogue catalogue;

        auto status = catalogue.LoadFromBytes(bytes, "random");

        if (!status.ok()) {
            EXPECT_EQ(status.error().message.rfind("\"random\"", 0), 0u);
            continue;
        }
        for (const char *section : {"frmList", "MSG", "String"}) {
            for (const char *key : {"Text1", "Text2-12", "MSG2-2", "Str0", "Text12-1", "msg1-x"}) {
                EXPECT_TRUE(IsValidUtf8(catalogue.GetText(section, key)));
            }
        }
    }
}

} // namespace
} // namespace qor
