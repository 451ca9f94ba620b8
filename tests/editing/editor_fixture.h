#pragma once

#include "editor_rules.h"
#include "field_entry.h"
#include "recording_message_service.h"

#include <array>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace qor::test {

// Boxes as texts between blanks, and their enabled states as "1"/"0".
template <typename Boxes> void Fill(Boxes &boxes, const std::string &texts)
{
    std::istringstream words(texts);
    for (TextBox &box : boxes) {
        words >> box.Text;
    }
}

template <typename Boxes> std::string Texts(const Boxes &boxes)
{
    std::string texts;
    for (const TextBox &box : boxes) {
        texts += (texts.empty() ? "" : " ") + box.Text;
    }
    return texts;
}

template <typename Boxes> std::string Enabled(const Boxes &boxes)
{
    std::string mask;
    for (const TextBox &box : boxes) {
        mask += box.Enabled ? '1' : '0';
    }
    return mask;
}

// An editor without a window: a five-slot table, the form, the rules over it
// and a count of the redraws that got through.
class Editor : public testing::Test
{
protected:
    Editor()
    {
        SizeToolTable(ws.Table, 5);
        ws.TenthKindOffered = true;
        ws.ArborFlagCaptions = {"Straight", "Tapered"};
        // Entry numbers must stay below the catalogue's line count.
        EXPECT_TRUE(ws.Catalogue
                        .LoadFromBytes("[MSG]\nMSG1=Not a number.\nMSG14=Full.\nMSG17-1=From 1 to\n"
                                       "MSG17-2=only.\nMSG19=Bad angle.\nMSG28-1=No quotes.\n"
                                       "[frmEditor]\n"
                                       "Text6=Centre offset\n" +
                                           std::string(100, '\n'),
                                       "test.msg")
                        .ok());
        rules.SetRedrawHandler([this] { ++redraws; });
        // Like a window whose widgets run their change handlers whenever the
        // rules write into them: only the guards keep those from drawing.
        rules.SetChangeListener([this](FormField field) { rules.BoxChanged(field); });
    }

    ToolSlot &Slot(int slot) { return ws.Table.Slots.at(static_cast<std::size_t>(slot)); }

    // A cutter using every field the editor shows.
    void PutFullCutter(int index)
    {
        ToolSlot &slot = Slot(index);
        slot.ToolKind = KindCut;
        SetShape(slot, {12, -1.5f, 3, 30, 5, 6, 25, 0.1f});
        slot.ToolComment = "  Ma\xDF 12 "; // Windows-1252, blanks as read
        slot.ArborMode = 3;
        slot.Arbor.Dia = {20, 30, 40};
        slot.Arbor.Len = {10, 15};
        slot.Arbor.Flag = {0, 1};
        slot.LengthMode = 2;
        slot.Len = {80, 10, 40, 45, 0, 0};
        slot.ShiftOn = 1;
        slot.ShiftValue = -2.5f;
        slot.PenNo = 3;
        slot.OptFeedOn = {0, 1, 0, 1};
        slot.OptFeedPos[1][19] = 7;
        slot.OptFeedVal[3][18] = 0.25f;
        slot.LimitFlags = 65 | 128;
        slot.LimitValues = {0.5f, 1, 2, 3};
    }

    // The eight shape values in the order of the Para boxes.
    static void SetShape(ToolSlot &slot, std::array<float, ParaCount> values)
    {
        float *const fields[ParaCount] = {&slot.ToolDia,    &slot.CornerRad, &slot.Param3,
                                          &slot.Param4,     &slot.Param5,    &slot.Param6,
                                          &slot.ToolLength, &slot.Param7};
        for (std::size_t i = 0; i < ParaCount; ++i) {
            *fields[i] = values[i];
        }
    }

    // Loads a slot the way the list window does: current slot, then MagNo.
    void Load(int slot)
    {
        ws.Table.CurrentSlot = static_cast<std::int16_t>(slot);
        redraws = 0;
        rules.SetMagNo(std::to_string(slot + 1));
    }

    Workspace ws;
    EditorForm form;
    EditorRules rules{form, ws};
    RecordingMessageService messages;
    int redraws = 0;
};

// An editor whose boxes run the full change rule whenever the rules write
// into them, as a window that does not tell user input from its own writes.
class EntryEditor : public Editor
{
protected:
    EntryEditor()
    {
        rules.SetChangeListener(
            [this](FormField field) { BoxTextChanged(rules, field, messages); });
    }

    // The user types a whole new text into a box.
    EntryOutcome Type(FormField box, std::string text)
    {
        if (TextBox *target = FormBox(form, box)) {
            target->Text = std::move(text);
        } else {
            auto &grid = box.Part == FormPart::ArbD ? form.Grid.ArbD : form.Grid.ArbH;
            grid.at(static_cast<std::size_t>(box.Index)) = std::move(text);
        }
        return BoxTextChanged(rules, box, messages);
    }

    EntryOutcome Leave(FormField box) { return LeaveBox(rules, box, messages); }

    std::string LastMessage() const
    {
        return messages.shown.empty() ? std::string() : messages.shown.back().text;
    }

    static constexpr FormField Para(int i) { return {FormPart::Para, i}; }
    static constexpr FormField Len(LengthBox box) { return {FormPart::Length, box}; }
};

} // namespace qor::test
