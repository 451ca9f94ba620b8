#include "table_diff.h"
#include "tool_list_reader.h"

#include <gtest/gtest.h>

namespace qor {
namespace {

ToolTable Read(const std::string &text)
{
    ToolTable table;
    SizeToolTable(table, 10);
    const ReadResult result = ReadToolListText(table, text);
    EXPECT_EQ(result.outcome, ReadOutcome::Read) << result.error.message;
    return table;
}

TEST(TableDiff, ListsWhatChangedPerPositionComparingTablesNotText)
{
    const std::string base = "INI = MAGAZINE01\r\n"
                             "MAGAZINE01 = BAL/10,20,\"D10\"\r\n"
                             "PEN/2\r\n"
                             "MAGAZINE03 = FLA/6,40\r\n";
    struct Case
    {
        std::string other;
        std::string expected;
    };
    const Case cases[] = {
        {"# another comment\r\nINI = magazine1\r\nmagazine03 = fla/6.0,40\r\n"
         "MAGAZINE01 = BAL/10,20,\"D10\"\r\n  pen/2.0\r\n",
         "no differences\n"},
        {base + "MAGAZINE04 = BUL/8,1,30,\"\xE4\"\r\n",
         "MAGAZINE04: added BUL/8,1,30,\"\xC3\xA4\"\n"},
        {"INI = MAGAZINE01\r\nMAGAZINE01 = BAL/10,20,\"D10\"\r\nPEN/2\r\n",
         "MAGAZINE03: removed FLA/6,40\n"},
        {"INI = MAGAZINE01\r\nMAGAZINE01 = BAL/12,20,\"D12\"\r\nSHIFT/0.5\r\n"
         "MAGAZINE03 = FLA/6,40\r\n",
         "MAGAZINE01:\n  Name: D10 -> D12\n  Diameter: 10 -> 12\n  Shift: 0 -> 1\n"
         "  Shift value: (empty) -> 0.5\n  Pen: 2 -> (empty)\n"},
        {"INI = MAGAZINE03\r\nARBOR/40,50\r\nMAGAZINE01 = BAL/10,20,\"D10\"\r\nPEN/2\r\n"
         "MAGAZINE03 = FLA/6,40\r\n",
         "FILE:\n  Arbor mode: 0 -> 1\n  Arbor 1 diameter: (empty) -> 40\n"
         "  Arbor 1 length: (empty) -> 50\n  Initial magazine: 1 -> 3\n"},
    };
    const ToolTable before = Read(base);
    for (const Case &c : cases) {
        const auto diffs = DiffToolTables(before, Read(c.other), 1252);

        EXPECT_EQ(FormatTableDiff(diffs, DiffWords{}), c.expected) << c.other;
    }
}

} // namespace
} // namespace qor
