#pragma once

#include "editor_form.h"
#include "message_service.h"
#include "workspace.h"

#include <optional>
#include <string>

namespace qor {

struct StoreOutcome
{
    bool Stored = false;
    // The box that stopped the store, for the window to put the focus into.
    std::optional<FormField> Refused;
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
// the slot keeps its kind. The form keeps showing what was stored.
StoreOutcome StoreForm(EditorForm &form, Workspace &workspace, MessageService &messages);

// The comment the store writes: the loaded bytes when the tool name is
// unchanged, else its first 20 characters trimmed of blanks at both ends
// (leading blanks count against the 20).
std::string CommentToStore(const EditorForm &form);

} // namespace qor
