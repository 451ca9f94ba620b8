#pragma once

#include "message_service.h"
#include "settings_folder.h"
#include "workspace.h"

#include <cstdint>
#include <optional>
#include <string>

namespace qor {

// What a caller may put in place of the files beside the executable (the
// command line's --catalogue and --magazine-max), and the user's own settings
// folder, where the settings go when the program's folder cannot hold them
// (see ChooseSettingsFolder); empty keeps them beside the executable.
struct StartupOverrides
{
    std::optional<std::string> catalogue;
    std::optional<std::int16_t> magazineMax;
    std::string userSettingsFolder = {};
};

// Runs the start-up steps that open no window: paths, settings (each key
// written back with its default when missing or empty), the catalogue's
// presence and version, the catalogue itself (the one "TEXT FILE" names
// when it is in the program's folder, else "QORTool.msg"; when the named one
// cannot be loaded, "QORTool.msg" after the message), the table sized from
// "Magazine Max", the name tables, and a cleared table. Messages go through
// `messages`. Returns 0 when the program can go on to open its windows, and
// the process exit status otherwise (the catalogue is missing or broken).
int RunStartup(Workspace &workspace, const std::string &appDir, MessageService &messages,
               const StartupOverrides &overrides = {});

// The message shown when the catalogue file is missing.
std::string CatalogueMissingText(const std::string &msgPath);

// The message shown when the catalogue's version is not the program's.
std::string OldCatalogueText(const std::string &msgPath);

} // namespace qor
