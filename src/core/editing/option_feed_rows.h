#pragma once

#include "editor_form.h"

#include <optional>
#include <string>
#include <string_view>

namespace qor {

// The option feed window shows each letter's table through ten position
// boxes and nine value boxes, moved along the table by the letter's scroll
// bar: at offset o, position box j shows position o + j + 1 and value box j
// value o + j + 1 (1-based, as the window labels them).
inline constexpr int FeedPositionBoxes = 10;
inline constexpr int FeedValueBoxes = 9;
inline constexpr int FeedOffsetMax = OptFeedPointCount - FeedPositionBoxes; // 10

// One box of the window: letter 0..3 (A, V, U, D), a position or a value box,
// and its index among the visible boxes.
struct FeedBox
{
    int Letter = 0;
    bool Value = false;
    int Row = 0;
};

// The 0-based entry of FeedPos or FeedVal the box shows at the offset; empty
// when the letter, row or offset lies outside the window's boxes.
std::optional<int> FeedEntry(FeedBox box, int offset);

// The text the box shows at the offset: the shortest text of its number.
std::string FeedBoxText(const OptionFeedForm &feed, FeedBox box, int offset);

// A typed text goes into the working copy when it is a number in the
// single range; returns false (and changes nothing) otherwise.
bool StoreFeedBox(OptionFeedForm &feed, FeedBox box, int offset, std::string_view text);

} // namespace qor
