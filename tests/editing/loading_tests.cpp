#include "editor_fixture.h"

namespace qor::test {
namespace {

TEST_F(Editor, LoadingAToolShowsEveryFieldAndDrawsOnce)
{
    PutFullCutter(1);
    Slot(0).ToolKind = KindCut; // shown before, with a positive radius
    Load(0);

    Load(1);

    EXPECT_EQ(Texts(form.Para), "12 -1.5 3 30 5 6 25 0.1");
    EXPECT_TRUE(form.Para[3].Enabled); // follows the loaded radius
    EXPECT_EQ(form.ToolName.Text, "  Ma\xC3\x9F 12 ");
    EXPECT_EQ(form.Arbor.Index, 3);
    EXPECT_EQ(form.SavedSections, Slot(1).Arbor);
    EXPECT_EQ(form.keepLD, "2");
    EXPECT_EQ(Texts(form.Lengths), "80 10 40 45 0 0");
    EXPECT_EQ(Enabled(form.Lengths), "111100");
    EXPECT_EQ(form.Shift, (TextBox{"-2.5", true}));
    EXPECT_EQ(form.Pen, (TextBox{"3", true}));
    EXPECT_TRUE(form.Check1.Checked && form.Check2.Checked);
    EXPECT_EQ(form.OptionFeed.On, (std::array<bool, 4>{false, true, false, true}));
    EXPECT_EQ(form.OptionFeed.FeedPos[1][19], 7);
    EXPECT_EQ(redraws, 1);
    EXPECT_FALSE(ws.EditorBusy || ws.DrawHold);

    ws.ArborOnlyMode = true; // the list window draws the arbor itself
    Load(1);

    EXPECT_EQ(redraws, 0);
}

TEST_F(Editor, AnEmptyPositionShowsTheDefaultsOfANewTool)
{
    PutFullCutter(0);
    Load(0);

    Load(2);

    EXPECT_EQ(form.Tool.Index, KindBal);
    EXPECT_EQ(Texts(form.Para), "10 5 0 0 0 0 20 0");
    EXPECT_EQ(Enabled(form.Para), "10000010");
    EXPECT_EQ(form.ToolName.Text, "");
    EXPECT_EQ(form.Arbor.Index + form.LenDef.Index, 0);
    EXPECT_EQ(Texts(form.Lengths), "50 0 0 0 0 0");
    EXPECT_EQ(form.Sections, ArborSections{});
    EXPECT_EQ(form.Shift, (TextBox{"0", false}));
    EXPECT_EQ(form.Pen, (TextBox{"0", false}));
    EXPECT_EQ(redraws, 1);
}

TEST_F(Editor, TheKindsKeepMaskDecidesWhichValuesAreShown)
{
    Slot(0).ToolKind = KindOva;
    SetShape(Slot(0), {10, 2, 3, 4, 5, 6, 7, 8});
    Slot(1).ToolKind = KindTT; // zeros overwrite the kind's "10"
    SetShape(Slot(1), {20, 1, 3, 4, 5, 6, 0, 0});

    Load(0);

    EXPECT_EQ(Texts(form.Para), "10 2 0 0 0 0 7 8");

    Load(1);

    EXPECT_EQ(Texts(form.Para), "20 1 0 0 5 0 0 0");
}

TEST_F(Editor, MagazineZeroLoadsNoToolButTheFileArborWhenItIsEdited)
{
    PutFullCutter(0);
    Load(0);
    ws.Table.DefaultArborType = 2;
    ws.Table.DefaultArbor.Dia = {50, 60};

    rules.SetMagNo("0");

    EXPECT_EQ(Texts(form.Para), "12 -1.5 3 30 5 6 25 0.1");
    EXPECT_EQ(form.Sections, Slot(0).Arbor);
    EXPECT_EQ(redraws, 1);

    ws.ArborEdit = true;
    rules.SetMagNo("");

    EXPECT_EQ(form.Arbor.Index, 2);
    EXPECT_EQ(form.Sections, ws.Table.DefaultArbor);
    EXPECT_EQ(form.ArborFrame, "Text51-2");
    EXPECT_EQ(redraws, 1);
}

TEST_F(Editor, LimitStateFollowsTheFlags)
{
    Slot(0).LimitFlags = 130;
    Slot(0).LimitValues = {1.5f};
    Slot(1).LimitFlags = 65;
    Slot(1).LimitValues = {0.5f, 1, 2, 3};

    Load(0);

    EXPECT_EQ(form.Limit.LimKind.Index, 2);
    EXPECT_EQ(form.Limit.OutType, (ListBox{1, true}));
    EXPECT_EQ(form.Limit.SetKind, (ListBox{0, true}));
    EXPECT_EQ(Enabled(form.Limit.Values), "1000");

    Load(1);

    EXPECT_EQ(form.Limit.OutType.Index, 0);
    EXPECT_EQ(Enabled(form.Limit.Values), "1111");
    EXPECT_EQ(Texts(form.Limit.Values), "0.5 1 2 3");

    Load(2);

    EXPECT_FALSE(form.Limit.OutType.Enabled || form.Limit.SetKind.Enabled);
    EXPECT_EQ(Enabled(form.Limit.Values), "0000");
    EXPECT_EQ(Texts(form.Limit.Values), "0.5 1 2 3"); // kept from the tool before
}

TEST_F(Editor, NewToolGoesToTheFirstFreePositionWithEmptyFeedsAndLimitsOrWarnsWhenFull)
{
    PutFullCutter(0);
    PutFullCutter(1);
    Load(0);
    redraws = 0;

    EXPECT_EQ(rules.NewB(messages), 3);

    EXPECT_EQ(form.Tool.Index, KindBal);
    EXPECT_EQ(form.OptionFeed.On, (std::array<bool, 4>{}));
    EXPECT_EQ(form.Limit.LimKind.Index, 0);
    EXPECT_EQ(redraws, 1);
    EXPECT_EQ(ws.Table.CurrentSlot, 0); // moves only when the tool is stored

    // On a full table it warns and leaves the form alone.
    for (int slot = 2; slot < 5; ++slot) {
        PutFullCutter(slot);
    }
    Load(4);
    const EditorForm before = form;

    EXPECT_FALSE(rules.NewB(messages));

    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(messages.shown[0].text, "Full.");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Exclamation);
    EXPECT_TRUE(form == before);
    EXPECT_EQ(redraws, 1); // the load's
}

TEST_F(Editor, ClearingShiftZeroesItButClearingPenKeepsTheNumber)
{
    rules.Check1Click(true);
    form.Shift.Text = "2.5";
    rules.Check2Click(true);
    form.Pen.Text = "5";

    rules.Check1Click(false);
    rules.Check2Click(false);

    EXPECT_EQ(form.Shift, (TextBox{"0", false}));
    EXPECT_EQ(form.Pen, (TextBox{"5", false}));
    EXPECT_EQ(redraws, 1); // the shift marker moved; a pen is not drawn
}

} // namespace
} // namespace qor::test
