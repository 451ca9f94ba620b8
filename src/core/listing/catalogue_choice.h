#pragma once

#include "message_service.h"
#include "workspace.h"

#include <string>

namespace qor {

// The information window's choice of another catalogue file, by its name.
// The file is looked for in the program's folder whatever folder it was
// chosen in. When it is there it becomes MsgPath, its name is stored under
// "TEXT FILE" and the user is told that it takes effect at the next start;
// otherwise "MSG5" names the missing path. Returns the name the window
// shows afterwards: the chosen one, or the one in use.
std::string ChooseCatalogue(Workspace &workspace, MessageService &messages,
                            const std::string &name);

} // namespace qor
