#pragma once

#include <string>

namespace qor {

// Starts the configured text editor on a file without waiting for it. Where
// the configured program is the Windows default "Notepad.exe" (any case) and
// no such program exists, the desktop's default application for the file
// opens it instead. False when nothing could be started.
bool StartTextEditor(const std::string &program, const std::string &path);

} // namespace qor
