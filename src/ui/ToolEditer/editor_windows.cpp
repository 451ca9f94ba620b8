#include "editor_windows.h"

#include "tool_editor_window.h"
#include "tool_fset_window.h"
#include "tool_limit_window.h"
#include "tool_list_window.h"

namespace qor {

EditorWindows CreateEditorWindows(Workspace &workspace, ToolListWindow *list,
                                  MessageService &messages)
{
    EditorWindows windows;
    windows.Editor = new ToolEditorWindow(workspace, messages, list);
    windows.OptionFeed =
        new ToolFSetWindow(workspace, windows.Editor->Form(), messages, windows.Editor);
    windows.Limit =
        new ToolLimitWindow(workspace, windows.Editor->Form(), messages, windows.Editor);
    windows.Editor->SetCompanions(windows.OptionFeed, windows.Limit);
    if (list != nullptr) {
        windows.Editor->SetListWindow(list);
        windows.Editor->SetHistory(&list->History());
        list->SetEditorLink(windows.Editor);
        QObject::connect(windows.Editor, &ToolEditorWindow::stored, list,
                         &ToolListWindow::ShowStoredTool);
    }
    windows.Editor->SetMagazineNumber(std::to_string(workspace.Table.CurrentSlot + 1));
    return windows;
}

} // namespace qor
