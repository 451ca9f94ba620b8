#include "editor_fixture.h"
#include "kind_table.h"

#include <ostream>

namespace qor::test {
namespace {

struct KindCase
{
    int kind;
    const char *enabled; // with a corner radius of 0 or more
    const char *kept;
    const char *label15;
    const char *tipPara7;
};

std::ostream &operator<<(std::ostream &out, const KindCase &c)
{
    return out << "kind " << c.kind;
}

class KindChoice : public Editor, public testing::WithParamInterface<KindCase>
{};

TEST_P(KindChoice, EnablesByOneMaskZeroesByTheOtherAndDrawsOnce)
{
    const KindCase &c = GetParam();
    SetParas({"7", "7", "7", "7", "7", "7", "7", "7"});

    rules.SelectKind(c.kind);

    std::string kept;
    for (const char bit : std::string(c.kept)) {
        kept += kept.empty() ? "" : " ";
        kept += bit == '1' ? "7" : "0";
    }
    EXPECT_EQ(Enabled(form.Para), c.enabled);
    EXPECT_EQ(Texts(form.Para), kept);
    EXPECT_EQ(form.Label15, c.label15);
    EXPECT_EQ(form.ParaTips[7], c.tipPara7);
    EXPECT_EQ(redraws, 1);
}

INSTANTIATE_TEST_SUITE_P(
    EditorRules, KindChoice,
    testing::Values(KindCase{0, "11001110", "11111111", "Text15-4", "Text85-2"},
                    KindCase{1, "10000010", "11010010", "Text15-4", "Text85-2"},
                    KindCase{2, "01000110", "11010111", "Text15-4", "Text85-2"},
                    KindCase{3, "10000010", "10000010", "Text15-4", "Text85-2"},
                    KindCase{4, "11000010", "11110010", "Text15-4", "Text85-2"},
                    KindCase{5, "10000011", "10000011", "Text15", "Text85"},
                    KindCase{6, "10000010", "10000010", "Text15-4", "Text85-2"},
                    KindCase{7, "11000010", "11000011", "Text15-2", "Text85-2"},
                    KindCase{8, "11000001", "11000011", "Text15-3", "Text85-3"},
                    KindCase{9, "11001011", "11001011", "Text15-5", "Text85-4"}));

TEST_F(Editor, CutOpensTheStepHeightOnlyForANegativeRadius)
{
    for (const char *radius : {"-1", "0", "-", "2"}) {
        form.Para[1].Text = radius;

        rules.SelectKind(KindCut);

        EXPECT_EQ(form.Para[3].Enabled, std::string(radius) == "-1") << radius;
    }
}

TEST_F(Editor, TapToFlatKeepsOnlyDiameterAndFluteLength)
{
    SetParas({"1", "2", "3", "4", "5", "6", "7", "8"});

    rules.SelectKind(KindTap);
    rules.SelectKind(KindFla);

    EXPECT_EQ(Texts(form.Para), "1 0 0 0 0 0 7 0");
}

TEST_F(Editor, OvalDerivesHalfWidthAndHalfHeightOnlyWhenNoWidthIsSet)
{
    SetParas({"10", "1", "0", "0", "0", "0", "20", "0"});

    rules.SelectKind(KindOva);

    EXPECT_EQ(Texts(form.Para), "10 2.5 0 0 0 0 20 5");
    EXPECT_EQ(redraws, 1);

    form.Para[7].Text = "3";
    form.Para[1].Text = "1";

    rules.SelectKind(KindOva);

    EXPECT_EQ(Texts(form.Para), "10 1 0 0 0 0 20 3");
}

TEST_F(Editor, InsertCutterDefaultsToTenAndShowsItsNoteAlone)
{
    SetParas({"12", "1", "0", "0", "0", "0", "0", "-"});

    rules.SelectKind(KindTT);

    EXPECT_EQ(Texts(form.Para), "12 1 0 0 0 0 10 10");
    EXPECT_TRUE(form.ThrowCommentVisible);
    EXPECT_EQ(form.Label5, "Text5-3");
    EXPECT_EQ(redraws, 1);

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

TEST_F(Editor, RedrawRequestsPassOnlyWithoutGuards)
{
    for (bool Workspace::*guard :
         {&Workspace::DrawSuppressed, &Workspace::EditorBusy, &Workspace::DrawHold}) {
        ws.*guard = true;
        EXPECT_FALSE(rules.RequestRedraw());
        ws.*guard = false;
    }
    ws.ArborOnlyMode = true;

    EXPECT_TRUE(rules.RequestRedraw());
    EXPECT_EQ(redraws, 1);
}

TEST_F(Editor, TenthKindIsOfferedOnlyByItsSwitch)
{
    ws.TenthKindOffered = false;
    Slot(0).ToolKind = KindTT;
    Slot(0).Param7 = 4;

    Load(0);

    EXPECT_EQ(KindListTexts(ws).size(), 9u);
    EXPECT_EQ(form.Tool.Index, NoListEntry);
    EXPECT_EQ(form.Para[7].Text, "4"); // shown all the same
}

} // namespace
} // namespace qor::test
