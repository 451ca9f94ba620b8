#pragma once

#include "result.h"

#include <filesystem>
#include <string>

namespace qor {

// Message keys (section "MSG") of the reasons a save is refused before it
// touches anything. Each error also carries an English sentence with the path.
inline constexpr const char *KeyBackupFailed = "MSG25-1";
inline constexpr const char *KeyReadOnly = "MSG25-2";
inline constexpr const char *KeyFolderNotWritable = "MSG25-3";
inline constexpr const char *KeyHardLinks = "MSG25-4";
inline constexpr const char *KeyOwnerNotKept = "MSG25-5";
inline constexpr const char *KeyNotAFile = "MSG25-6";

// The file a save really replaces: `path` with its symbolic links followed, so
// that a link stays a link and its target gets the new content. Refuses a
// target that is not a regular file, is read-only, or has other names (hard
// links), which a replacement would leave with the old content.
Result<std::string> ResolveSaveTarget(const std::string &path);

// Temporary files of saves carry this ending and a leading ".", so that a
// later save recognises those an interrupted one left behind.
inline constexpr const char *TemporarySuffix = ".qortool-tmp";
bool IsTemporaryName(const std::string &fileName);

// Removes the temporary files that interrupted saves left in `folder`: those
// no running save holds open (Windows refuses to delete those; elsewhere a
// running save holds a lock on its file).
void RemoveStaleTemporaryFiles(const std::filesystem::path &folder);

} // namespace qor
