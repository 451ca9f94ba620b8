#include "entry_fixture.h"
#include "kind_table.h"

namespace qor::test {
namespace {

struct KeyCase
{
    FormField box;
    int kind;
    const char *passes; // of the keys "-./5a" and the backspace, in that order
};

TEST_F(EntryEditor, EachBoxFiltersItsKeys)
{
    const FormField shift{FormPart::Shift};
    const FormField pen{FormPart::Pen};
    const FormField arbD0{FormPart::ArbD, 0};
    const FormField arbD1{FormPart::ArbD, 1};
    const FormField arbH1{FormPart::ArbH, 1};
    const KeyCase cases[] = {
        {Para(0), KindCut, "01010 1"},
        {Para(1), KindCut, "11010 1"},
        {Para(1), KindBul, "11010 1"},
        {Para(1), KindBal, "01010 1"},
        {Para(1), KindRad, "01010 1"},
        {Para(3), KindCut, "01010 1"},
        {Len(BoxLength), KindCut, "01010 1"},
        {Len(BoxShN), KindCut, "01010 1"},
        {Len(BoxShTb), KindCut, "01010 1"},
        {shift, KindCut, "11010 1"},
        {pen, KindCut, "00010 1"},
        {arbD0, KindCut, "01010 1"},
        {arbD1, KindCut, "11010 1"},
        {arbH1, KindCut, "01010 1"},
    };
    const int keys[] = {'-', '.', '/', '5', 'a', ' ', KeyBackspace};
    for (const KeyCase &c : cases) {
        form.Tool.Index = c.kind;
        std::string passes;
        for (const int key : keys) {
            if (key == ' ') {
                passes += ' ';
                continue;
            }
            const int beepsBefore = messages.beeps;
            const int remaining = FilterKey(form, c.box, key, messages);
            EXPECT_TRUE(remaining == key || remaining == 0);
            EXPECT_EQ(messages.beeps - beepsBefore, remaining == 0 ? 1 : 0);
            passes += remaining != 0 ? '1' : '0';
        }
        EXPECT_EQ(passes, c.passes) << "part " << static_cast<int>(c.box.Part) << " index "
                                    << c.box.Index << " kind " << c.kind;
    }
    EXPECT_EQ(NumKey('/'), 0);
    EXPECT_EQ(FilterKey(form, {FormPart::ToolName}, '/', messages), '/'); // not a numeric box
}

TEST_F(EntryEditor, PastedTextPassesOnlyWhenEveryCharacterWould)
{
    EXPECT_TRUE(FilterText(form, {FormPart::Shift}, "-12.5", messages));
    EXPECT_TRUE(FilterText(form, {FormPart::Pen}, "12", messages));
    EXPECT_EQ(messages.beeps, 0);

    EXPECT_FALSE(FilterText(form, Len(BoxLength), "-12", messages));
    EXPECT_FALSE(FilterText(form, {FormPart::Pen}, "1.5", messages));
    EXPECT_FALSE(FilterText(form, Para(0), "1,5", messages));
    EXPECT_EQ(messages.beeps, 3);
}

TEST_F(EntryEditor, AnglesInPara4And5MustLieBelowNinety)
{
    rules.SelectKind(KindCut);
    redraws = 0;

    EXPECT_EQ(Type(Para(4), "89.9"), EntryOutcome::Accepted);
    EXPECT_EQ(Type(Para(5), "0"), EntryOutcome::Accepted);
    EXPECT_EQ(redraws, 2);
    EXPECT_TRUE(messages.shown.empty());

    EXPECT_EQ(Type(Para(4), "90"), EntryOutcome::Refused);

    EXPECT_EQ(form.Para[4].Text, "");
    EXPECT_EQ(LastMessage(), "Bad angle.");
    EXPECT_EQ(messages.shown.back().icon, MessageIcon::Exclamation);
    EXPECT_EQ(redraws, 2);

    EXPECT_EQ(Type(Para(5), "1000000000000000000000000000000000000000000"),
              EntryOutcome::Refused); // beyond the single range
    EXPECT_EQ(Type(Para(2), "90"), EntryOutcome::Accepted);
}

TEST_F(EntryEditor, OvalDiameterSetsTheHalfWidthWithOneRedraw)
{
    rules.SelectKind(KindOva);
    redraws = 0;

    Type(Para(0), "1");
    Type(Para(0), "12");

    EXPECT_EQ(form.Para[7].Text, "6");
    EXPECT_EQ(redraws, 2); // one per keystroke, none from the Para(7) write
    EXPECT_FALSE(ws.ParaChangeGuard);

    Type(Para(0), "12.");
    EXPECT_EQ(form.Para[7].Text, "6");
    Type(Para(0), "-");
    EXPECT_EQ(form.Para[7].Text, "6"); // not a number: nothing happens
    EXPECT_EQ(redraws, 3);

    rules.SelectKind(KindCut); // keeps every value
    Type(Para(0), "20");
    EXPECT_EQ(form.Para[7].Text, "6");
}

TEST_F(EntryEditor, ChangesRedrawOnlyNumericTextsAndNeverForThePen)
{
    Type(Len(BoxLength), "5");
    Type(Len(BoxLength), "");
    Type({FormPart::Shift}, "-");
    Type({FormPart::Shift}, "-1");
    Type({FormPart::Pen}, "3");

    EXPECT_EQ(redraws, 2);

    ws.EditorBusy = true;
    Type(Len(BoxShD), "8");
    EXPECT_EQ(redraws, 2);
}

TEST_F(EntryEditor, LeavingATextThatIsNotANumberKeepsItAndRefuses)
{
    for (const FormField box :
         {Para(0), Len(BoxShD), FormField{FormPart::Shift}, FormField{FormPart::ArbH, 2}}) {
        Type(box, "");

        EXPECT_EQ(Leave(box), EntryOutcome::Refused);
        EXPECT_EQ(LastMessage(), "Not a number.");
    }
    Type(Para(1), "-");
    EXPECT_EQ(Leave(Para(1)), EntryOutcome::Refused);
    EXPECT_EQ(form.Para[1].Text, "-");
    EXPECT_EQ(messages.shown.size(), 5u);

    Type(Para(1), "-.5");
    EXPECT_EQ(Leave(Para(1)), EntryOutcome::Accepted);
}

TEST_F(EntryEditor, PenAcceptsOneBelowTheSupportedMaximum)
{
    ws.Globals.SupportPenMax = 8;
    for (const char *pen : {"1", "7", "07"}) {
        Type({FormPart::Pen}, pen);
        EXPECT_EQ(Leave({FormPart::Pen}), EntryOutcome::Accepted) << pen;
    }
    EXPECT_TRUE(messages.shown.empty());

    for (const char *pen : {"0", "8", "", "40000"}) {
        Type({FormPart::Pen}, pen);
        EXPECT_EQ(Leave({FormPart::Pen}), EntryOutcome::Refused) << pen;
        EXPECT_EQ(LastMessage(), "From 1 to 7 only.");
    }
}

TEST_F(EntryEditor, NeckAndTaperLengthsRaiseTheLengthOnlyAtPosition3)
{
    rules.SelectLengthDefinition(3);
    SetLengths({"50", "10", "5", "90", "30", "25"});
    redraws = 0;

    EXPECT_EQ(Leave(Len(BoxShT)), EntryOutcome::Accepted);
    EXPECT_EQ(form.Lengths[BoxLength].Text, "55");
    EXPECT_EQ(redraws, 1);

    form.Lengths[BoxLength].Text = "60";
    Leave(Len(BoxShTb));
    EXPECT_EQ(form.Lengths[BoxLength].Text, "60"); // never lowered
    EXPECT_EQ(redraws, 1);

    rules.SelectLengthDefinition(2);
    form.Lengths[BoxShT].Text = "100";
    Leave(Len(BoxShT));
    EXPECT_EQ(form.Lengths[BoxLength].Text, "60");
}

TEST_F(EntryEditor, TheLengthBoxJustLeftWinsAgainstTheNeck)
{
    rules.SelectLengthDefinition(2);
    SetLengths({"40", "10", "45", "0", "0", "0"});

    Leave(Len(BoxLength));
    EXPECT_EQ(form.Lengths[BoxShN].Text, "40");

    form.Lengths[BoxShN].Text = "70";
    Leave(Len(BoxShN));
    EXPECT_EQ(form.Lengths[BoxLength].Text, "70");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(EntryEditor, NeckAnglesAreCheckedOnlyAtPosition3)
{
    rules.SelectLengthDefinition(3);
    SetLengths({"50", "10", "89.5", "90", "0", "0"});

    EXPECT_EQ(Leave(Len(BoxShN)), EntryOutcome::Accepted);
    EXPECT_EQ(Leave(Len(BoxShNb)), EntryOutcome::Accepted); // 90 itself is a square step
    EXPECT_EQ(form.Lengths[BoxLength].Text, "50");          // an angle raises no length

    form.Lengths[BoxShN].Text = "90";
    form.Lengths[BoxShNb].Text = "90.5";
    EXPECT_EQ(Leave(Len(BoxShN)), EntryOutcome::Refused);
    EXPECT_EQ(Leave(Len(BoxShNb)), EntryOutcome::Refused);
    EXPECT_EQ(messages.shown.size(), 2u);
    EXPECT_EQ(LastMessage(), "Bad angle.");

    rules.SelectLengthDefinition(2);
    EXPECT_EQ(Leave(Len(BoxShNb)), EntryOutcome::Accepted);
}

} // namespace
} // namespace qor::test
