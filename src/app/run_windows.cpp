#include "run_windows.h"

#include "editor_windows.h"
#include "tool_list_window.h"

#include <QApplication>

namespace qor {

int RunWindows(Workspace &workspace, MessageService &messages, const QString &commandLineFile)
{
    workspace.DrawSuppressed = true;
    ToolListWindow toolList(workspace, messages, commandLineFile);
    // Joined before the window shows: the user may close it during the
    // first round of events below, before the event loop runs, and quit()
    // does nothing outside the loop.
    bool closed = false;
    QObject::connect(&toolList, &ToolListWindow::closed, [&closed] {
        closed = true;
        QCoreApplication::quit();
    });
    toolList.show();
    QCoreApplication::processEvents();
    workspace.DrawSuppressed = false;
    if (closed) {
        return 0;
    }

    CreateEditorWindows(workspace, &toolList, messages);
    toolList.OfferRecovery();
    return QApplication::exec();
}

} // namespace qor
