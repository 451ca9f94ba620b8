#include "feed_limit_forms.h"

#include "current_slot.h"
#include "numeric_text.h"

namespace qor {
namespace {

void SetValueBoxes(LimitForm &limit, bool first, bool others)
{
    limit.Values[0].Enabled = first;
    for (int i = 1; i < 4; ++i) {
        limit.Values[static_cast<std::size_t>(i)].Enabled = others;
    }
}

} // namespace

bool SetOptionFeedMagNo(OptionFeedForm &feed, const ToolTable &table, std::string text)
{
    feed.MagNo = std::move(text);
    if (ToInt16(feed.MagNo).value_or(0) <= 0) {
        return false;
    }
    const ToolSlot *slot = CurrentSlotOf(table);
    if (slot == nullptr) {
        return false;
    }
    feed.FeedPos = slot->OptFeedPos;
    feed.FeedVal = slot->OptFeedVal;
    for (std::size_t letter = 0; letter < OptFeedLetterCount; ++letter) {
        feed.On[letter] = slot->OptFeedOn[letter] != 0;
    }
    return true;
}

void LimitKindClick(LimitForm &limit)
{
    switch (limit.LimKind.Index) {
    case 0:
        limit.OutType.Enabled = false;
        limit.SetKind.Enabled = false;
        SetValueBoxes(limit, false, false);
        break;
    case 1:
    case 2:
        limit.OutType.Enabled = true;
        limit.SetKind.Enabled = true;
        SetValueBoxes(limit, true, limit.SetKind.Index == 1);
        break;
    default:
        break;
    }
}

void LimitSetKindClick(LimitForm &limit)
{
    if (!limit.SetKind.Enabled) {
        return;
    }
    if (limit.SetKind.Index == 0) {
        SetValueBoxes(limit, true, false);
    } else if (limit.SetKind.Index == 1) {
        SetValueBoxes(limit, true, true);
    }
}

void frmLimitSet(LimitForm &limit, const ToolTable &table)
{
    const ToolSlot *slot = CurrentSlotOf(table);
    if (slot == nullptr) {
        return;
    }
    const std::uint8_t flags = slot->LimitFlags;
    const int mode = flags & LimitModeMask;
    limit.LimKind.Index = mode <= 2 ? mode : NoListEntry;
    LimitKindClick(limit);
    if (mode == 0) {
        return;
    }
    limit.OutType.Index = (flags & LimitPVariant) != 0 ? 1 : 0;
    limit.SetKind.Index = (flags & LimitFourValues) != 0 ? 1 : 0;
    LimitSetKindClick(limit);
    limit.Values[0].Text = SingleToText(slot->LimitValues[0]);
    if (limit.SetKind.Index == 1) {
        for (std::size_t i = 1; i < 4; ++i) {
            limit.Values[i].Text = SingleToText(slot->LimitValues[i]);
        }
    }
}

} // namespace qor
