#include "listing_fixture.h"
#include "param_string.h"

namespace qor::test {
namespace {

class ParamString : public Listing
{
protected:
    std::string Of(const ToolSlot &slot)
    {
        Slot(3) = slot;
        ws.Table.CurrentSlot = 3;
        return MakeParamString(ws);
    }

    // A label as the summary shows it: filled with blanks to 10 characters, at least one.
    std::string L(std::string_view key) const
    {
        std::string label = Str(key);
        label.resize(std::max<std::size_t>(label.size() + 1, 10), ' ');
        return label;
    }

    static std::string Pad20(std::string entry)
    {
        entry.resize(std::max<std::size_t>(entry.size(), 20), ' ');
        return entry;
    }
};

TEST_F(ParamString, ShapeEntriesDependOnTheKind)
{
    ToolSlot tool;
    tool.ToolDia = 12;
    tool.CornerRad = 3;
    tool.Param5 = 8;
    tool.Param6 = 1.25f;
    tool.Param7 = 6;
    tool.ToolLength = 25;

    tool.ToolKind = KindCut;
    EXPECT_EQ(Of(tool), Pad20(L("Str40") + "8.0") + L("Str41") + "1.3\r\n" + L("Str42") + "25.0");
    tool.ToolKind = KindOva;
    EXPECT_EQ(Of(tool), Pad20(L("Str81") + "3.0") + L("Str83") + "6.0\r\n" + L("Str42") + "25.0");
    tool.ToolKind = KindTT;
    EXPECT_EQ(Of(tool), Pad20(L("Str91") + "25.0") + L("Str93") + "3.0\r\n" +
                            Pad20(L("Str92") + "6.0") + L("Str94") + "8.0");
}

TEST_F(ParamString, EveryLabelAndEntryIsFollowedByABlankAndShortOnesKeepTheirColumns)
{
    // Labels of 6 columns (three wide characters), 10, 13 and 10 (five wide characters).
    ASSERT_TRUE(ws.Catalogue
                    .LoadFromBytes("[String]\nStr40=刃長：\nStr41=Taper ang:\n"
                                   "Str42=Flute length:\nStr43=テーパ角：\n" +
                                       std::string(50, '\n'),
                                   "labels.msg")
                    .ok());
    ToolSlot tool;
    tool.ToolKind = KindVer;
    tool.Param5 = 8;
    tool.Param6 = 1.25f;
    tool.ToolLength = 12345;
    tool.Param7 = 1;

    EXPECT_EQ(Of(tool), "刃長：    8.0       Taper ang: 1.3\r\n"
                        "Flute length: 12345.0 テーパ角： 1.0");
}

TEST_F(ParamString, LengthDefinitionEntriesFollowTheMode)
{
    ToolSlot tool;
    tool.ToolKind = KindRad;
    tool.Param7 = 1;
    tool.Len = {80, 8, 35, 7.6f, 30, 12};
    const std::string shape = L("Str82") + "1.0\r\n";

    tool.LengthMode = 1;
    EXPECT_EQ(Of(tool), shape + L("Str44") + "80.0");
    tool.LengthMode = 2;
    EXPECT_EQ(Of(tool), shape + Pad20(L("Str44") + "80.0") + L("Str45") + "35.0\r\n" +
                            Pad20(L("Str46") + "8.0") + L("Str47") + "7.6");
    tool.LengthMode = 3;
    EXPECT_EQ(Of(tool), shape + Pad20(L("Str44") + "80.0") + L("Str87") + "7.6\r\n" +
                            Pad20(L("Str46") + "8.0") + L("Str88") + "12.0\r\n" +
                            Pad20(L("Str89") + "35.0") + L("Str90") + "30.0");
}

TEST_F(ParamString, LimitShowsItsValuesAndTheOutputVariantOnASecondLine)
{
    ToolSlot tool;
    tool.ToolKind = KindRad;
    tool.LimitValues = {35, 45.125f, 50, 55};
    const std::string shape = L("Str82") + "0.0\r\n";

    tool.LimitFlags = 1;
    EXPECT_EQ(Of(tool), shape + L("Str84") + "A: 35.00  V: ----  U: ----  D: ----\r\n" +
                            std::string(20, ' ') + Str("Str85"));
    tool.LimitFlags = 2 | LimitFourValues | LimitPVariant;
    EXPECT_EQ(Of(tool), shape + L("Str84") + "A: 35.00  V: 45.13  U: 50.00  D: 55.00\r\n" +
                            std::string(20, ' ') + Str("Str86"));
    tool.LimitFlags = LimitFourValues; // no limit mode: no limit shown
    EXPECT_EQ(Of(tool), L("Str82") + "0.0");
}

TEST_F(ParamString, EmptyPositionsAndSlotsOutsideTheTableHaveNoSummary)
{
    EXPECT_EQ(Of(ToolSlot{}), "");
    ws.Table.CurrentSlot = 20;
    EXPECT_EQ(MakeParamString(ws), "");
}

} // namespace
} // namespace qor::test
