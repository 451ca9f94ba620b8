#pragma once

#include "message_service.h"
#include "workspace.h"

#include <QString>

namespace qor {

// The last steps of start-up and the program's run: shows the list window
// (which reads `commandLineFile` or the settings' file) while drawing is held
// off for the events of its first show, makes the editor windows, and runs
// the event loop until the list window is closed. Returns the exit status.
int RunWindows(Workspace &workspace, MessageService &messages, const QString &commandLineFile);

} // namespace qor
