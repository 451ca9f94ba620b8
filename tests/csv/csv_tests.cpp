#include "random_table.h"
#include "tool_list_reader.h"
#include "tool_list_writer.h"
#include "tool_table_csv.h"

#include <cmath>
#include <gtest/gtest.h>

namespace qor {
namespace {

// Holds a random table to what the editor accepts: no minus sign but in the
// corner radius of CUT and BUL and in the shift, angles below 90, pens
// below 32767, names of at most 20 characters.
void FitToEditor(ToolTable &table)
{
    auto angle = [](float &v) {
        v = static_cast<float>(std::abs(static_cast<long>(std::lround(v * 1000))) % 90000) / 1000;
    };
    for (float &v : table.DefaultArbor.Len) {
        v = std::abs(v);
    }
    for (ToolSlot &tool : table.Slots) {
        for (float *v :
             {&tool.ToolDia, &tool.Param3, &tool.Param4, &tool.ToolLength, &tool.Param7}) {
            *v = std::abs(*v);
        }
        if (tool.ToolKind != KindCut && tool.ToolKind != KindBul) {
            tool.CornerRad = std::abs(tool.CornerRad);
        }
        angle(tool.Param5);
        angle(tool.Param6);
        tool.Param7 = tool.Param6 > 0 ? tool.Param7 : 0;
        for (float &v : tool.Len) {
            v = std::abs(v);
        }
        if (tool.LengthMode == 3) {
            angle(tool.Len[2]);
            angle(tool.Len[3]);
        }
        for (float &v : tool.Arbor.Len) {
            v = std::abs(v);
        }
        tool.PenNo = std::min<std::int16_t>(tool.PenNo, 32766);
        tool.ToolComment = std::string(TrimSpaces(tool.ToolComment.substr(0, 20)));
    }
}

TEST(ToolTableCsv, TtlToCsvToTtlGivesTheSameBytes)
{
    std::mt19937 random(20261125);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        ToolTable table = test::RandomTable(random);
        FitToEditor(table);
        const WriteOptions options{"Round trip", std::to_string(table.InitialMagazine)};
        const std::string written = FormatToolList(table, options);
        ToolTable read;
        SizeToolTable(read, table.MagazineMax);
        ASSERT_EQ(ReadToolListText(read, written).outcome, ReadOutcome::Read);

        const std::string csv = FormatToolTableCsv(read, 1252);
        CsvImport imported = ParseToolTableCsv(csv, {table.MagazineMax, 1252, 32767});

        ASSERT_TRUE(imported.ok()) << CsvRefusalEnglish(*imported.Refusal);
        EXPECT_EQ(FormatToolList(imported.Table, options), written);
        EXPECT_EQ(FormatToolTableCsv(imported.Table, 1252), csv);
    }
}

const std::string Header = "Magazine,Kind,Name,Diameter,Corner radius,Parameter 5,Parameter 7,"
                           "Length mode,Len3,Len4,Arbor mode,Arbor 1 diameter,Arbor 1 length,"
                           "Arbor 2 diameter,Arbor 2 flag,Arbor 3 diameter,Shift,Shift value,Pen,"
                           "Feed A,Feed A point 1,Feed A value 1,Feed A point 2,Feed A point 3,"
                           "Limit mode,Limit 1,Limit 4,Initial magazine\r\n";

TEST(ToolTableCsv, RefusesTheWholeFileNamingRowColumnAndReason)
{
    struct Case
    {
        std::string rows;
        int row;
        std::string column;
        std::string key;
    };
    const Case cases[] = {
        {"1,BAL,,10\r\n2,XYZ\r\n", 3, "Kind", "MSG35-5"},
        {"0,BAL\r\n", 2, "Magazine", "MSG35-4"},
        {"21,BAL\r\n", 2, "Magazine", "MSG35-4"},
        {"1.5,BAL\r\n", 2, "Magazine", "MSG35-4"},
        {"3,BAL\r\n\r\n3,FLA\r\n", 4, "Magazine", "MSG35-6"},
        {"1,BAL,,abc\r\n", 2, "Diameter", "MSG35-3"},
        {"1,BAL,,1e39\r\n", 2, "Diameter", "MSG35-3"},
        {"1,BAL,,-1\r\n", 2, "Diameter", "MSG35-8"},
        {"1,OVA,,1,-1\r\n", 2, "Corner radius", "MSG35-8"},
        {"1,BAL,,1,2\r\n", 2, "Corner radius", "MSG35-7"},
        {"1,T-T,,1,0,90\r\n", 2, "Parameter 5", "MSG35-9"},
        {"1,CUT,,1,,,5\r\n", 2, "Parameter 7", "MSG35-19"},
        {"1,FLA,,,,,,3,90\r\n", 2, "Len3", "MSG35-9"},
        {"1,FLA,,,,,,3,1,90.5\r\n", 2, "Len4", "MSG35-10"},
        {"1,FLA,,,,,,1,5\r\n", 2, "Len3", "MSG35-15"},
        {"1,FLA,,,,,,,,,4\r\n", 2, "Arbor mode", "MSG35-4"},
        {"1,FLA,,,,,,,,,1\r\n", 2, "Arbor 1 diameter", "MSG35-13"},
        {"1,FLA,,,,,,,,,1,20,5,10\r\n", 2, "Arbor 2 diameter", "MSG35-12"},
        {"1,FLA,,,,,,,,,1,20,5,,,30\r\n", 2, "Arbor 3 diameter", "MSG35-11"},
        {"1,FLA,,,,,,,,,1,20,5,30,1\r\n", 2, "Arbor 2 flag", "MSG35-15"},
        {"1,FLA,,,,,,,,,,,,,,,0,2\r\n", 2, "Shift value", "MSG35-15"},
        {"1,FLA,,,,,,,,,,,,,,,,,16\r\n", 2, "Pen", "MSG35-20"},
        {"1,FLA,,,,,,,,,,,,,,,,,,1,10,5,5\r\n", 2, "Feed A point 2", "MSG35-16"},
        {"1,FLA,,,,,,,,,,,,,,,,,,1,10,,,30\r\n", 2, "Feed A point 3", "MSG35-17"},
        {"1,FLA,,,,,,,,,,,,,,,,,,0,10\r\n", 2, "Feed A point 1", "MSG35-15"},
        {"1,FLA,,,,,,,,,,,,,,,,,,,,,,,0,1\r\n", 2, "Limit 1", "MSG35-15"},
        {"1,FLA,,,,,,,,,,,,,,,,,,,,,,,,,,2\r\n", 2, "Initial magazine", "MSG35-14"},
        {"1,FLA,\"a\"\"b\"\r\n", 2, "Name", "MSG35-21"},
        {"1,FLA,ABCDEFGHIJKLMNOPQRSTU\r\n", 2, "Name", "MSG35-22"},
        {"1,FLA,\xE5\xB7\xA5\r\n", 2, "Name", "MSG35-23"},
        {"FILE,,,,,,,,,,,,,,,,,,,,,,,,,,,1\r\nFILE\r\n", 3, "Magazine", "MSG35-28"},
        {"FILE,,,5\r\n", 2, "Diameter", "MSG35-18"},
        {"1,FLA,\"open\r\n", 2, "", "MSG35-27"},
        {"1,FLA,,,,,,,,,,,,,,,,,,,,,,,,,,,,x\r\n", 2, "", "MSG35-29"},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.rows);

        CsvImport imported = ParseToolTableCsv(Header + c.rows, {20, 1252, 16});

        ASSERT_FALSE(imported.ok());
        EXPECT_EQ(imported.Refusal->Row, c.row);
        EXPECT_EQ(imported.Refusal->Column, c.column);
        EXPECT_EQ(imported.Refusal->Key, c.key) << CsvRefusalEnglish(*imported.Refusal);
    }
}

TEST(ToolTableCsv, RefusesAHeaderWithUnknownDoubledOrMissingColumns)
{
    const std::pair<std::string, std::string> cases[] = {
        {"Magazine,Kind,Colour\r\n", "MSG35-24"},
        {"Magazine,Kind,pen,PEN\r\n", "MSG35-25"},
        {"Magazine,Name\r\n", "MSG35-26"},
        {"", "MSG35-26"},
    };
    for (const auto &[text, key] : cases) {
        CsvImport imported = ParseToolTableCsv(text, {});

        ASSERT_FALSE(imported.ok()) << text;
        EXPECT_EQ(imported.Refusal->Row, 1);
        EXPECT_EQ(imported.Refusal->Key, key) << text;
    }
}

TEST(ToolTableCsv, TakesWhatSpreadsheetsSaveBack)
{
    const std::string cases[] = {
        // LibreOffice: no byte order mark, LF, quoted numbers, a trailing empty line.
        "Magazine,Kind,Name,Diameter,Flute length,Pen\n"
        "FILE,,,,,\n"
        "2,bal,\"D10, \xC3\xA4\",\"10.5\",20,3\n\n",
        // German Excel: semicolons, decimal commas, code page text, CR LF.
        "Magazine;Kind;Name;Diameter;Flute length;Pen;Initial magazine\r\n"
        "2;BAL;D10, \xE4;10,5;20;3;\r\n"
        "FILE;;;;;;1\r\n",
    };
    for (const std::string &text : cases) {
        CsvImport imported = ParseToolTableCsv(text, {5, 1252, 16});

        ASSERT_TRUE(imported.ok()) << CsvRefusalEnglish(*imported.Refusal);
        const ToolSlot &tool = imported.Table.Slots[1];
        EXPECT_EQ(tool.ToolKind, KindBal);
        EXPECT_EQ(tool.ToolComment, "D10, \xE4");
        EXPECT_EQ(tool.ToolDia, 10.5f);
        EXPECT_EQ(tool.ToolLength, 20.0f);
        EXPECT_EQ(tool.PenNo, 3);
        EXPECT_EQ(imported.Table.InitialMagazine, 1);
        EXPECT_FALSE(imported.Table.Slots[0].HasTool());
    }
}

TEST(ToolTableCsv, WritesNamesInUtf8WithQuotingAndKeepsLongNamesThatWereThere)
{
    ToolTable table;
    SizeToolTable(table, 3);
    table.Slots[2].ToolKind = KindFla;
    table.Slots[2].ToolComment = "\xE4 a,b 123456789012345678";

    const std::string csv = FormatToolTableCsv(table, 1252);
    CsvImport fresh = ParseToolTableCsv(csv, {3, 1252, 16});
    CsvImport same = ParseToolTableCsv(csv, {3, 1252, 16, &table});

    EXPECT_TRUE(csv.starts_with("\xEF\xBB\xBFMagazine,Kind,Name,"));
    EXPECT_NE(csv.find("\r\n3,FLA,\"\xC3\xA4 a,b 123456789012345678\",0,"), std::string::npos);
    ASSERT_FALSE(fresh.ok());
    EXPECT_EQ(fresh.Refusal->Key, "MSG35-22");
    ASSERT_TRUE(same.ok());
    EXPECT_EQ(same.Table.Slots[2].ToolComment, table.Slots[2].ToolComment);
}

} // namespace
} // namespace qor
