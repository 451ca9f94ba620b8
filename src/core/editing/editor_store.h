#pragma once

#include "code_page.h"
#include "editor_form.h"
#include "message_service.h"
#include "table_change.h"
#include "workspace.h"

#include <optional>
#include <string>
#include <string_view>

namespace qor {

struct StoreOutcome
{
    bool Stored = false;
    // The box that stopped the store, for the window to put the focus into.
    std::optional<FormField> Refused;
    // What the store changed in the table, already made there (Store or
    // FileArbor); nothing when it stored nothing or the table stayed as it
    // was. An undo stack takes it as it is.
    std::optional<TableChange> Change;
};

// keepB: stores what the form shows into the table at the magazine number in
// MagNo, which becomes the current slot. An empty MagNo or a number of 0 or
// less stores the arbor list and the working sections as the file-level
// arbor and nothing else. Before anything is written every box that is
// stored is checked: a text that is not a number shows "MSG1" with the box's
// caption and nothing is stored; so does a magazine number beyond the table
// ("MSG17-1"). Shift and pen store 0 while their switch is cleared, the
// option feeds only while the option feed window's magazine box holds 1 or
// more, the limit values only those the limit kind uses. With no kind chosen
// the slot keeps its kind. The form keeps showing what was stored. A stored
// tool clears the workspace's NewToolSlot.
StoreOutcome StoreForm(EditorForm &form, Workspace &workspace, MessageService &messages);

// How many characters of an edited tool name the store keeps.
inline constexpr std::size_t CommentCharacters = 20;

// The comment the store writes: the loaded bytes when the tool name is
// unchanged, else its first CommentCharacters characters trimmed of blanks at
// both ends (leading blanks count against them), in `codePage`. When the code
// page cannot hold one of those characters, Unheld names the first one; keepB
// then shows UnheldCharacterText and stores nothing.
EncodedText CommentToStore(const EditorForm &form, int codePage);

// The refusal of a tool name character that the workspace's code page cannot
// hold: "MSG27-1", the character in quotes and its code point, "MSG27-2",
// the code page, "MSG27-3".
std::string UnheldCharacterText(const Workspace &workspace, std::string_view character);

} // namespace qor
