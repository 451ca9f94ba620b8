#include "arbor_grid.h"
#include "editor_fixture.h"
#include "length_definition_choice.h"
#include "option_feed_rows.h"

namespace qor::test {
namespace {

class LengthDefinition : public EntryEditor
{
protected:
    LengthDefinition()
    {
        rules.SelectKind(KindCut);
        Fill(form.Para, "6 0 0 0 0 0 18 0");
    }

    bool Choose(int position) { return ChooseLengthDefinition(rules, position, messages); }
};

TEST_F(LengthDefinition, TaperAngleAndNeckLengthConvertBothWays)
{
    ASSERT_TRUE(Choose(2));
    Fill(form.Lengths, "80 10 43 90 20 0");
    redraws = 0;

    ASSERT_TRUE(Choose(3));

    // The neck widens by 2 from the straight part at 20 to the shank at 43.
    EXPECT_EQ(Texts(form.Lengths), "80 10 5 90 20 0");
    EXPECT_EQ(form.keepLD, "3");
    EXPECT_EQ(form.ShNLabel, "Text88");
    EXPECT_EQ(Enabled(form.Lengths), "111111");
    EXPECT_EQ(redraws, 1);
    EXPECT_FALSE(ws.DrawHold);

    ASSERT_TRUE(Choose(2));

    EXPECT_EQ(form.Lengths[BoxShN].Text, "43"); // 20 + 2 / tan 5° = 42.86
    EXPECT_EQ(form.ShNLabel, "Text25");
    EXPECT_EQ(Enabled(form.Lengths), "111100");
}

TEST_F(LengthDefinition, WithoutATaperTheOutlineStaysAsItWas)
{
    ASSERT_TRUE(Choose(2));
    Fill(form.Lengths, "80 6 30 90 0 7");

    ASSERT_TRUE(Choose(3));

    EXPECT_EQ(Texts(form.Lengths), "80 6 0 90 30 7"); // no shank step: straight to 30

    ASSERT_TRUE(Choose(1));

    EXPECT_EQ(form.Lengths[BoxShN].Text, "37"); // the taper stage's top, 30 + 7
    EXPECT_EQ(form.keepLD, "1");
}

TEST_F(LengthDefinition, ANewNeckStartsAtTheFlutesOnTheToolDiameter)
{
    ASSERT_TRUE(Choose(1));
    Fill(form.Lengths, "75 0 0 0 0 0");

    ASSERT_TRUE(Choose(2));

    EXPECT_EQ(Texts(form.Lengths), "75 6 18 0 0 0");

    Choose(0);
    Fill(form.Lengths, "10 0 0 0 0 0");
    Choose(3);

    EXPECT_EQ(Texts(form.Lengths), "18 6 0 0 18 0"); // the neck raised the length
}

TEST_F(LengthDefinition, SteepAndDegenerateSlopesStayInRange)
{
    EXPECT_EQ(WholeAngleOfSlope(5, 0.001), 89.0);
    EXPECT_FALSE(WholeAngleOfSlope(0, 10));
    EXPECT_FALSE(WholeRunOfAngle(90, 10));
    EXPECT_FALSE(WholeRunOfAngle(1e-30, 10)); // would not fit a single

    ASSERT_TRUE(Choose(3));
    Fill(form.Lengths, "80 10 0.000001 90 20 0");
    ASSERT_TRUE(Choose(2));
    EXPECT_EQ(form.Lengths[BoxShN].Text, "20");
}

class ArborGridTest : public EntryEditor
{
protected:
    ArborGridTest()
    {
        PutFullCutter(0); // ARBOR3, sections 20/10, 30/15, 40/0
        Load(0);
        ArbDataSet(rules);
    }
};

TEST_F(ArborGridTest, RowsShowAndEditTheSectionsUnderTheScrollBar)
{
    EXPECT_EQ(form.Grid.ArbD[1], "30");
    EXPECT_EQ(form.Grid.ArbH[1], "15");
    EXPECT_EQ(ArborFlagCaption(ws, form, 1), "Tapered");
    redraws = 0;

    ScrollArborGrid(rules, 99);
    EXPECT_EQ(form.Grid.First, ArborGridLast);
    Type({FormPart::ArbD, 4}, "55");
    Type({FormPart::ArbH, 4}, "12.");
    Type({FormPart::ArbH, 3}, "x");

    EXPECT_EQ(form.Sections.Dia[9], 55);
    EXPECT_EQ(form.Sections.Len[9], 12);
    EXPECT_EQ(form.Sections.Len[8], 0);
    EXPECT_EQ(redraws, 2);

    ScrollArborGrid(rules, 0);
    ArbFlgBClick(rules, 0);
    EXPECT_EQ(form.Grid.ArbD[0], "20");
    EXPECT_EQ(ArborFlagCaption(ws, form, 0), "Tapered");
    EXPECT_EQ(redraws, 3);
}

TEST_F(ArborGridTest, FlagsTurnOnlyForTheArborTypeThatReadsThem)
{
    rules.SelectArbor(1);
    ArbFlgBClick(rules, 0);
    EXPECT_EQ(form.Sections.Flag[0], 0);

    rules.SelectArbor(3);
    ArbFlgBClick(rules, 1);
    EXPECT_EQ(form.Sections.Flag[1], 0);
}

TEST_F(ArborGridTest, CancelGoesBackToTheSectionsAsLoaded)
{
    Type({FormPart::ArbD, 0}, "25");
    ArbFlgBClick(rules, 1);
    redraws = 0;

    CancelArborEdits(rules);

    EXPECT_EQ(form.Sections, Slot(0).Arbor);
    EXPECT_EQ(form.Grid.ArbD[0], "20");
    EXPECT_EQ(redraws, 1);
}

TEST(OptionFeedRows, BoxesMapOntoTheTablesByTheirOffset)
{
    OptionFeedForm feed;

    EXPECT_EQ(FeedEntry({1, false, 9}, FeedOffsetMax), 19);
    EXPECT_EQ(FeedEntry({1, true, 8}, FeedOffsetMax), 18);
    EXPECT_FALSE(FeedEntry({1, true, 9}, 0));
    EXPECT_FALSE(FeedEntry({4, false, 0}, 0));
    EXPECT_TRUE(StoreFeedBox(feed, {3, false, 9}, 10, "2.5"));
    EXPECT_FALSE(StoreFeedBox(feed, {3, true, 1}, 10, "8,5"));

    EXPECT_EQ(feed.FeedPos[3][19], 2.5f);
    EXPECT_EQ(feed.FeedVal[3][11], 0);
    EXPECT_EQ(FeedBoxText(feed, {3, false, 9}, 10), "2.5");
}

} // namespace
} // namespace qor::test
