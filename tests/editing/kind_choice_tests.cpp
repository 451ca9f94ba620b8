#include "editor_fixture.h"

namespace qor::test {
namespace {

TEST_F(Editor, EachKindEnablesByOneMaskZeroesByTheOtherAndDrawsOnce)
{
    const struct
    {
        int kind;
        const char *enabled; // with a corner radius of 0 or more
        const char *kept;
        const char *label15;
        const char *tipPara7;
    } cases[] = {
        {0, "11001110", "7 7 7 7 7 7 7 7", "Text15-4", "Text85-2"},
        {1, "10000010", "7 7 0 7 0 0 7 0", "Text15-4", "Text85-2"},
        {2, "01000110", "7 7 0 7 0 7 7 7", "Text15-4", "Text85-2"},
        {3, "10000010", "7 0 0 0 0 0 7 0", "Text15-4", "Text85-2"},
        {4, "11000010", "7 7 7 7 0 0 7 0", "Text15-4", "Text85-2"},
        {5, "10000011", "7 0 0 0 0 0 7 7", "Text15", "Text85"},
        {6, "10000010", "7 0 0 0 0 0 7 0", "Text15-4", "Text85-2"},
        {7, "11000010", "7 7 0 0 0 0 7 7", "Text15-2", "Text85-2"},
        {8, "11000001", "7 7 0 0 0 0 7 7", "Text15-3", "Text85-3"},
        {9, "11001011", "7 7 0 0 7 0 7 7", "Text15-5", "Text85-4"},
    };
    for (const auto &c : cases) {
        Fill(form.Para, "7 7 7 7 7 7 7 7");
        redraws = 0;

        rules.SelectKind(c.kind);

        EXPECT_EQ(Enabled(form.Para), c.enabled) << c.kind;
        EXPECT_EQ(Texts(form.Para), c.kept) << c.kind;
        EXPECT_EQ(form.Label15, c.label15) << c.kind;
        EXPECT_EQ(form.ParaTips[7], c.tipPara7) << c.kind;
        EXPECT_EQ(redraws, 1) << c.kind;
    }
}

TEST_F(Editor, CutOpensTheStepHeightOnlyForANegativeRadius)
{
    for (const char *radius : {"-1", "0", "-", "2"}) {
        form.Para[1].Text = radius;

        rules.SelectKind(KindCut);

        EXPECT_EQ(form.Para[3].Enabled, std::string(radius) == "-1") << radius;
    }
}

TEST_F(Editor, OvalDerivesHalfWidthAndHalfHeightOnlyWhenNoWidthIsSet)
{
    Fill(form.Para, "10 1 0 0 0 0 20 0");

    rules.SelectKind(KindOva);

    EXPECT_EQ(Texts(form.Para), "10 2.5 0 0 0 0 20 5");
    EXPECT_EQ(redraws, 1);

    Fill(form.Para, "10 1 0 0 0 0 20 3");
    rules.SelectKind(KindOva);

    EXPECT_EQ(Texts(form.Para), "10 1 0 0 0 0 20 3");
}

TEST_F(Editor, InsertCutterDefaultsToTenAndShowsItsNoteAlone)
{
    Fill(form.Para, "12 1 0 0 0 0 0 -");

    rules.SelectKind(KindTT);

    EXPECT_EQ(Texts(form.Para), "12 1 0 0 0 0 10 10");
    EXPECT_TRUE(form.ThrowCommentVisible);
    EXPECT_EQ(form.Label5, "Text5-3");

    rules.SelectKind(KindCut);

    EXPECT_FALSE(form.ThrowCommentVisible);
    EXPECT_EQ(form.Label5, "Text5");
}

TEST_F(Editor, ScriberLocksArborAndLengthAndOtherKindsUnlockWithoutRestoring)
{
    rules.SelectArbor(2);
    rules.SelectLengthDefinition(3);
    form.keepLD = "3";
    rules.Check1Click(true);
    form.Shift.Text = "4";

    rules.SelectKind(KindKeg);

    EXPECT_EQ(form.Arbor, (ListBox{0, false}));
    EXPECT_EQ(form.LenDef, (ListBox{0, false}));
    EXPECT_EQ(form.keepLD, "0");
    EXPECT_EQ(form.Check1, (CheckBox{false, false}));
    EXPECT_EQ(form.Shift, (TextBox{"0", false}));
    EXPECT_FALSE(form.Command1Enabled);
    EXPECT_EQ(Enabled(form.Lengths), "100000");

    rules.SelectKind(KindBal);

    EXPECT_EQ(form.Arbor, (ListBox{0, true}));
    EXPECT_EQ(form.LenDef, (ListBox{0, true}));
    EXPECT_EQ(form.Check1, (CheckBox{false, true}));
    EXPECT_TRUE(form.Command1Enabled);
}

} // namespace
} // namespace qor::test
