#include "option_feed_rows.h"

#include "numeric_text.h"

namespace qor {

std::optional<int> FeedEntry(FeedBox box, int offset)
{
    const int rows = box.Value ? FeedValueBoxes : FeedPositionBoxes;
    if (box.Letter < 0 || box.Letter >= OptFeedLetterCount || box.Row < 0 || box.Row >= rows ||
        offset < 0 || offset > FeedOffsetMax) {
        return std::nullopt;
    }
    return offset + box.Row;
}

std::string FeedBoxText(const OptionFeedForm &feed, FeedBox box, int offset)
{
    const std::optional<int> entry = FeedEntry(box, offset);
    if (!entry) {
        return {};
    }
    const auto letter = static_cast<std::size_t>(box.Letter);
    const auto k = static_cast<std::size_t>(*entry);
    return SingleToText(box.Value ? feed.FeedVal[letter][k] : feed.FeedPos[letter][k]);
}

bool StoreFeedBox(OptionFeedForm &feed, FeedBox box, int offset, std::string_view text)
{
    const std::optional<int> entry = FeedEntry(box, offset);
    const std::optional<float> value = ToSingle(text);
    if (!entry || !value) {
        return false;
    }
    const auto letter = static_cast<std::size_t>(box.Letter);
    const auto k = static_cast<std::size_t>(*entry);
    (box.Value ? feed.FeedVal[letter][k] : feed.FeedPos[letter][k]) = *value;
    return true;
}

} // namespace qor
