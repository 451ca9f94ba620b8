#pragma once

#include "message_service.h"
#include "workspace.h"

namespace qor {

class ToolEditorWindow;
class ToolFSetWindow;
class ToolLimitWindow;
class ToolListWindow;

struct EditorWindows
{
    ToolEditorWindow *Editor = nullptr;
    ToolFSetWindow *OptionFeed = nullptr;
    ToolLimitWindow *Limit = nullptr;
};

// Creates the tool editor, option feed and limit windows hidden, all three
// over one editor form, and joins them to the list window: the list hands
// positions to the editor, and a stored tool rebuilds the list. Then the
// editor loads the list's current position (CurrentSlot + 1 into MagNo).
// The editor is a child of the list window, the other two of the editor, so
// that closing the list closes them all. `messages` must outlive them.
EditorWindows CreateEditorWindows(Workspace &workspace, ToolListWindow *list,
                                  MessageService &messages);

} // namespace qor
