#include "editor_fixture.h"
#include "kind_table.h"

namespace qor::test {
namespace {

TEST_F(EntryEditor, EachBoxFiltersItsKeysAndBeepsForTheRefused)
{
    const struct
    {
        FormField box;
        int kind;
        const char *passes; // of the keys "-./5a" and the backspace
    } cases[] = {
        {Para(0), KindCut, "010101"},
        {Para(1), KindCut, "110101"},
        {Para(1), KindRad, "010101"},
        {Len(BoxLength), KindCut, "010101"},
        {{FormPart::Shift}, KindCut, "110101"},
        {{FormPart::Pen}, KindCut, "000101"},
        {{FormPart::ArbD, 0}, KindCut, "010101"},
        {{FormPart::ArbD, 1}, KindCut, "110101"},
        {{FormPart::ArbH, 1}, KindCut, "010101"},
    };
    const int keys[] = {'-', '.', '/', '5', 'a', KeyBackspace};
    for (const auto &c : cases) {
        form.Tool.Index = c.kind;
        std::string passes;
        for (const int key : keys) {
            const int beepsBefore = messages.beeps;
            const int remaining = FilterKey(form, c.box, key, messages);
            EXPECT_TRUE(remaining == key || remaining == 0);
            EXPECT_EQ(messages.beeps - beepsBefore, remaining == 0 ? 1 : 0);
            passes += remaining != 0 ? '1' : '0';
        }
        EXPECT_EQ(passes, c.passes) << "part " << static_cast<int>(c.box.Part) << " index "
                                    << c.box.Index << " kind " << c.kind;
    }
    EXPECT_EQ(FilterKey(form, {FormPart::Limit}, '"', messages), '"'); // not a box
}

TEST_F(EntryEditor, TheToolNameTakesNoDoubleQuoteTypedNorLeavesWithAPastedOne)
{
    const FormField name{FormPart::ToolName};
    const int others[] = {'/', '-', 'a', ' ', '\'', 0xDF, 0x5DE5, KeyBackspace};
    for (const int key : others) {
        EXPECT_EQ(FilterKey(form, name, key, messages), key) << key;
    }
    EXPECT_EQ(messages.beeps, 0);
    EXPECT_EQ(FilterKey(form, name, '"', messages), 0);
    EXPECT_EQ(messages.beeps, 1);
    // A paste goes in whole; the box refuses it when left.
    EXPECT_TRUE(FilterText(form, name, "D6 \"Garant\" 3/4", messages));
    EXPECT_EQ(messages.beeps, 1);

    form.ToolName.Text = "D6 \"Garant\" 3/4";
    EXPECT_EQ(Leave(name), EntryOutcome::Refused);
    EXPECT_EQ(LastMessage(), "No quotes.");
    EXPECT_EQ(messages.shown.back().icon, MessageIcon::Exclamation);
    EXPECT_EQ(form.ToolName.Text, "D6 \"Garant\" 3/4");

    for (const char *accepted : {"D6 'Garant' 3/4", "", "D6 Garant 3/4 HSS-E"}) {
        form.ToolName.Text = accepted;
        EXPECT_EQ(Leave(name), EntryOutcome::Accepted) << accepted;
    }
    EXPECT_EQ(messages.shown.size(), 1u);
}

// The store keeps the first 20 characters, a character being a code point;
// the count beside the name box must count the same way.
TEST_F(EntryEditor, TheNameCountCountsCodePointsNotBytes)
{
    EXPECT_EQ(NameCharacters(""), 0u);
    EXPECT_EQ(NameCharacters("Ma\xC3\x9F 12"), 6u);            // two-byte sharp s
    EXPECT_EQ(NameCharacters("\xE5\xB7\xA5\xE5\x85\xB7"), 2u); // two kanji
    EXPECT_EQ(NameCharacters("\xF0\x9F\x94\xA7 D6"), 4u);      // four-byte wrench
}

TEST_F(EntryEditor, PastedTextPassesOnlyWhenEveryCharacterWould)
{
    EXPECT_TRUE(FilterText(form, {FormPart::Shift}, "-12.5", messages));
    EXPECT_TRUE(FilterText(form, {FormPart::Pen}, "12", messages));
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
    EXPECT_EQ(Type(Para(4), "90"), EntryOutcome::Refused);
    EXPECT_EQ(Type(Para(5), "1" + std::string(42, '0')), EntryOutcome::Refused); // beyond a single
    EXPECT_EQ(Type(Para(2), "90"), EntryOutcome::Accepted);

    EXPECT_EQ(form.Para[4].Text, "");
    EXPECT_EQ(LastMessage(), "Bad angle.");
    EXPECT_EQ(messages.shown.back().icon, MessageIcon::Exclamation);
    EXPECT_EQ(redraws, 3);
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

    Type(Para(0), "-"); // not a number: nothing happens
    rules.SelectKind(KindCut);
    Type(Para(0), "20"); // another kind: the half width stays

    EXPECT_EQ(form.Para[7].Text, "6");
}

TEST_F(EntryEditor, ChangesRedrawOnlyNumericTextsAndNeverForThePen)
{
    Type(Len(BoxLength), "5");
    Type(Len(BoxLength), "");
    Type({FormPart::Shift}, "-");
    Type({FormPart::Shift}, "-1");
    Type({FormPart::Pen}, "3");
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

    Type(Para(1), "-.5");
    EXPECT_EQ(Leave(Para(1)), EntryOutcome::Accepted);
    EXPECT_EQ(messages.shown.size(), 5u);
}

TEST_F(EntryEditor, PenAcceptsOneBelowTheSupportedMaximum)
{
    ws.Globals.SupportPenMax = 8;
    const std::pair<const char *, bool> pens[] = {{"1", true},     {"7", true},  {"07", true},
                                                  {"0", false},    {"8", false}, {"", false},
                                                  {"40000", false}};
    for (const auto &[pen, accepted] : pens) {
        messages.shown.clear();
        Type({FormPart::Pen}, pen);

        EXPECT_EQ(Leave({FormPart::Pen}) == EntryOutcome::Accepted, accepted) << pen;
        EXPECT_EQ(LastMessage(), accepted ? "" : "From 1 to 7 only.") << pen;
    }
}

TEST_F(EntryEditor, NeckAndTaperLengthsRaiseTheLengthOnlyAtPosition3)
{
    rules.SelectLengthDefinition(3);
    Fill(form.Lengths, "50 10 5 90 30 25");
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
    Fill(form.Lengths, "40 10 45 0 0 0");

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
    Fill(form.Lengths, "50 10 89.5 90 0 0");

    EXPECT_EQ(Leave(Len(BoxShN)), EntryOutcome::Accepted);
    EXPECT_EQ(Leave(Len(BoxShNb)), EntryOutcome::Accepted); // 90 itself is a square step
    EXPECT_EQ(form.Lengths[BoxLength].Text, "50");          // an angle raises no length

    Fill(form.Lengths, "50 10 90 90.5 0 0");
    EXPECT_EQ(Leave(Len(BoxShN)), EntryOutcome::Refused);
    EXPECT_EQ(Leave(Len(BoxShNb)), EntryOutcome::Refused);
    EXPECT_EQ(messages.shown.size(), 2u);
    EXPECT_EQ(LastMessage(), "Bad angle.");

    rules.SelectLengthDefinition(2);
    EXPECT_EQ(Leave(Len(BoxShNb)), EntryOutcome::Accepted);
}

} // namespace
} // namespace qor::test
