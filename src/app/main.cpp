// QORTool start-up. Until the windows exist this runs the start-up steps and
// prints what they read.
#include "startup.h"

#include <cstdio>
#include <filesystem>
#include <iostream>

namespace {

class ConsoleMessageService : public qor::MessageService
{
public:
    qor::MessageAnswer Show(const std::string &text, qor::MessageIcon, qor::MessageButtons buttons,
                            const std::string &) override
    {
        std::cerr << text << "\n";
        return buttons == qor::MessageButtons::YesNo ? qor::MessageAnswer::Yes : qor::MessageAnswer::Ok;
    }
};

std::string ExecutableDir(const char *argv0)
{
    std::error_code ec;
    auto self = std::filesystem::read_symlink("/proc/self/exe", ec);
    if (ec) {
        self = std::filesystem::absolute(argv0, ec);
    }
    return self.parent_path().string();
}

} // namespace

int main(int, char **argv)
{
    qor::Workspace workspace;
    ConsoleMessageService messages;
    if (int status = qor::RunStartup(workspace, ExecutableDir(argv[0]), messages); status != 0) {
        return status;
    }
    const qor::StartupGlobals &g = workspace.Globals;
    std::cout << "Settings file:          " << g.IniPath << "\n"
              << "Catalogue:              " << g.MsgPath << " (version "
              << qor::Common::GetProfileValue("Config", "Version", g.MsgPath) << ")\n"
              << "COLUMNHEADER FONT SIZE: " << g.ColumnHeaderFontSize << "\n"
              << "TEXTBOX FONT SIZE:      " << g.TextBoxFontSize << "\n"
              << "LISTVIEW FONT SIZE:     " << g.ListViewFontSize << "\n"
              << "BUTTON FONT SIZE:       " << g.ButtonFontSize << "\n"
              << "BUTTON FONT BOLD:       " << (g.ButtonFontBold ? "on" : "off") << "\n"
              << "SUPPORT PEN MAX:        " << g.SupportPenMax << "\n"
              << "Magazine Max:           " << g.MagazineMax << "\n"
              << "Kinds:                 ";
    for (const auto &name : workspace.Table.KindNames) {
        std::cout << " " << (name.empty() ? "-" : name);
    }
    std::cout << "\n";
    return 0;
}
