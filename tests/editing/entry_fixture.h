#pragma once

#include "editor_fixture.h"
#include "field_entry.h"

#include <string>

namespace qor::test {

// An editor whose boxes run the full change rule whenever the rules write
// into them, as a window that does not tell user input from its own writes:
// only the guards keep those writes from drawing twice.
class EntryEditor : public Editor
{
protected:
    EntryEditor()
    {
        EXPECT_TRUE(ws.Catalogue
                        .LoadFromBytes("[MSG]\nMSG1=Not a number.\nMSG17-1=From 1 to\n"
                                       "MSG17-2=only.\nMSG19=Bad angle.\n" +
                                           std::string(100, '\n'),
                                       "test.msg")
                        .ok());
        ws.ArborFlagCaptions = {"Straight", "Tapered"};
        rules.SetChangeListener(
            [this](FormField field) { BoxTextChanged(rules, field, messages); });
    }

    // The user types a whole new text into a box.
    EntryOutcome Type(FormField box, std::string text)
    {
        if (TextBox *target = FormBox(form, box)) {
            target->Text = std::move(text);
        } else if (box.Part == FormPart::ArbD) {
            form.Grid.ArbD.at(static_cast<std::size_t>(box.Index)) = std::move(text);
        } else if (box.Part == FormPart::ArbH) {
            form.Grid.ArbH.at(static_cast<std::size_t>(box.Index)) = std::move(text);
        }
        return BoxTextChanged(rules, box, messages);
    }

    EntryOutcome Leave(FormField box) { return LeaveBox(rules, box, messages); }

    void SetLengths(std::array<const char *, LengthBoxCount> texts)
    {
        for (std::size_t k = 0; k < LengthBoxCount; ++k) {
            form.Lengths[k].Text = texts[k];
        }
    }

    std::string LastMessage() const
    {
        return messages.shown.empty() ? std::string() : messages.shown.back().text;
    }

    static constexpr FormField Para(int i) { return {FormPart::Para, i}; }
    static constexpr FormField Len(LengthBox box) { return {FormPart::Length, box}; }
};

} // namespace qor::test
