#include "catalogue_choice.h"

#include "atomic_file.h"
#include "numeric_text.h"

namespace qor {

std::string ChooseCatalogue(Workspace &workspace, MessageService &messages, const std::string &name)
{
    const std::string trimmed(TrimSpaces(name));
    const std::string path = workspace.Globals.AppDir + trimmed;
    if (!trimmed.empty() && FileExists(path)) {
        workspace.Globals.MsgPath = path;
        workspace.Settings.WriteIniString("Config", "TEXT FILE", trimmed);
        messages.Show(workspace.Text("MSG", "MSG21") + "\n" + workspace.Text("MSG", "MSG22"),
                      MessageIcon::Information);
        return trimmed;
    }
    messages.Show(workspace.Text("MSG", "MSG5") + " " + path, MessageIcon::Exclamation);
    return FileOfPath(workspace.Globals.MsgPath);
}

} // namespace qor
