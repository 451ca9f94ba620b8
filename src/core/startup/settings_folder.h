#pragma once

#include <string>
#include <string_view>

namespace qor {

// The settings file's name, in whichever folder holds it.
inline constexpr const char *SettingsFileName = "QorTool.INI";

// A file the install rules put beside an installed program: its settings
// then live in each user's own folder, even for a user (root) who could
// write the program's folder.
inline constexpr const char *PerUserSettingsMark = "QorTool.per-user";

// The user's own settings folder for the program `appName`, the one Qt's
// QStandardPaths::AppConfigLocation gives when the application has that name
// and no organisation: "$XDG_CONFIG_HOME/<app>" or "$HOME/.config/<app>" on
// Linux, "%LOCALAPPDATA%\<app>" on Windows, "~/Library/Preferences/<app>" on
// macOS. For ttltool, which has no Qt. Empty when the system names no home.
std::string UserSettingsFolder(std::string_view appName);

// Whether a new file can be made in `folder` (tried, not guessed from the
// permissions, which do not stop root).
bool FolderTakesNewFiles(const std::string &folder);

// The folder whose settings file start-up uses: `appDir` when the program's
// folder can be written and carries no per-user mark, else `userFolder`,
// made when missing and seeded with a copy of the settings file in `appDir`
// when it has none of its own. When `userFolder` is empty or cannot be made,
// `appDir`: the settings are then only read, the defaults fill the gaps, and
// every write-back fails without a word. Both folders end in the separator.
std::string ChooseSettingsFolder(const std::string &appDir, const std::string &userFolder);

// The settings file that start-up with the same folders reads, found without
// making or copying anything (for checks that must change nothing): the
// user's own where start-up would choose the user folder and it holds one,
// else the one beside the program.
std::string SettingsFileToRead(const std::string &appDir, const std::string &userFolder);

} // namespace qor
