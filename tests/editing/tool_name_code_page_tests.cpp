#include "editor_fixture.h"
#include "editor_store.h"

#include <ostream>

namespace qor::test {
namespace {

struct NameCase
{
    const char *name;
    int codePage;
    std::string loaded;   // the comment's bytes in the table
    std::string appended; // typed at the end of the name; "" leaves it untouched
    std::string stored;   // the bytes stored, when the code page holds the name
    std::string unheld;   // else the character refused, and its code point
    std::string codePoint;
};

void PrintTo(const NameCase &c, std::ostream *out)
{
    *out << c.name;
}

// The tool name box in a code page: the name loaded from the table, maybe
// typed on, then the box left and the tool stored at position 2.
class ToolNameInCodePage : public EntryEditor, public testing::WithParamInterface<NameCase>
{
protected:
    ToolNameInCodePage()
    {
        EXPECT_TRUE(ws.Catalogue
                        .LoadFromBytes("[MSG]\nMSG27-1=Cannot hold\nMSG27-2=: code page\n"
                                       "MSG27-3=(setting).\n" +
                                           std::string(100, '\n'),
                                       "test.msg")
                        .ok());
        const NameCase &c = GetParam();
        ws.Globals.CodePage = c.codePage;
        PutFullCutter(0);
        Slot(0).ToolComment = c.loaded;
        Load(0);
        form.ToolName.Text += c.appended;
    }

    StoreOutcome StoreAtTwo()
    {
        form.MagNo.Text = "2";
        return StoreForm(form, ws, messages);
    }
};

TEST_P(ToolNameInCodePage, IsStoredInTheCodePageOrRefusedOnLeaveAndStore)
{
    const NameCase &c = GetParam();
    const ToolTable before = ws.Table;

    const EntryOutcome left = Leave({FormPart::ToolName});
    const StoreOutcome stored = StoreAtTwo();

    if (c.unheld.empty()) {
        EXPECT_EQ(left, EntryOutcome::Accepted);
        EXPECT_TRUE(messages.shown.empty());
        ASSERT_TRUE(stored.Stored);
        EXPECT_EQ(Slot(1).ToolComment, c.stored);
        return;
    }
    const std::string refusal = "Cannot hold \"" + c.unheld + "\" (" + c.codePoint +
                                "): code page " + std::to_string(c.codePage) + " (setting).";
    EXPECT_EQ(left, EntryOutcome::Refused);
    EXPECT_EQ(stored.Refused, FormField{FormPart::ToolName});
    ASSERT_EQ(messages.shown.size(), 2u);
    EXPECT_EQ(messages.shown[0].text, refusal);
    EXPECT_EQ(messages.shown[1].text, refusal);
    EXPECT_EQ(ws.Table.Slots, before.Slots);
}

// Bytes a code page does not define survive as long as nobody edits the
// name; once edited, they show as U+FFFD, which no code page holds.
INSTANTIATE_TEST_SUITE_P(
    Names, ToolNameInCodePage,
    testing::Values(
        NameCase{"UntouchedUndefinedByte1252", 1252, "Ma\x81 12", "", "Ma\x81 12", "", ""},
        NameCase{"UntouchedNoSecondByte932", 932, "\x83\x47\x83\x93\x83\x68 \x81\x20", "",
                 "\x83\x47\x83\x93\x83\x68 \x81\x20", "", ""},
        NameCase{"UntouchedCutShort932", 932, "ab\x82", "", "ab\x82", "", ""},
        NameCase{"UntouchedUtf8Bytes1252", 1252, "\xC3\x98 UTF-8", "", "\xC3\x98 UTF-8", "", ""},
        NameCase{"AppendedToSlashedO1252", 1252,
                 "\xD8"
                 "20 x 4 T-slot",
                 " new",
                 "\xD8"
                 "20 x 4 T-slot new",
                 "", ""},
        NameCase{"TypedUmlaut1252", 1252, "D10", " \xC3\xBC", "D10 \xFC", "", ""},
        NameCase{"TypedCircledDigit932", 932, "\x8D\x48\x8B\xEF", " \xE2\x91\xA0",
                 "\x8D\x48\x8B\xEF \x87\x40", "", ""}, // 工具 ①
        NameCase{"TypedKanji1252", 1252, "D6", " \xE5\xB7\xA5", "", "\xE5\xB7\xA5", "U+5DE5"},
        NameCase{"TypedSlashedO932", 932, "D20", " \xC3\x98", "", "\xC3\x98", "U+00D8"},
        NameCase{"EditedCutShort932", 932, "ab\x82", "c", "", "\xEF\xBF\xBD", "U+FFFD"}),
    [](const testing::TestParamInfo<NameCase> &info) { return info.param.name; });

} // namespace
} // namespace qor::test
