#pragma once

#include "arguments.h"
#include "render_command.h"

#include <iosfwd>
#include <string>

namespace qor::cli {

// Exit statuses besides 0 and ExitUsage. Reading a tool list file gives the
// reader's own codes.
inline constexpr int ExitNotFound = 1;
inline constexpr int ExitFormatError = 2;
inline constexpr int ExitStartupFailed = 2;
inline constexpr int ExitWriteFailed = 3;
inline constexpr int ExitToolsBeyondTable = 1; // normalize: writing would drop them
inline constexpr int ExitNotOverwritten = 4;   // normalize: OUT unread, or FILE changed
inline constexpr int ExitKeysMissing = 1;
inline constexpr int ExitCatalogueBroken = 2;
inline constexpr int ExitCsvRefused = 2;   // import-csv: a faulty cell
inline constexpr int ExitTablesDiffer = 1; // diff, like diff(1)
inline constexpr int ExitDiffTrouble = 2;  // diff: a file missing or unreadable

// Runs one parsed command. `appDir` is the folder of the executable, where
// the settings file and the catalogue lie. Results go to `out`, diagnostics
// and start-up messages to `err`. `makeWriter` draws for render; without it
// render exits with ExitUsage. Returns the process exit status.
int RunInvocation(const Invocation &invocation, const std::string &appDir, std::ostream &out,
                  std::ostream &err, PictureWriterFactory makeWriter = nullptr);

} // namespace qor::cli
