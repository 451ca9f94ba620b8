#pragma once

#include <string>
#include <vector>

namespace qor::cli {

// The folder of the running executable, where the settings file and the
// catalogue lie, in UTF-8. Asks the system; falls back on `argv0` when it
// cannot.
std::string ExecutableDir(const char *argv0);

// The command line's arguments after the program name, in UTF-8. On Windows
// they come from the wide command line, since `argv` there is in the ANSI
// code page and loses what it cannot hold.
std::vector<std::string> ProgramArguments(int argc, char **argv);

} // namespace qor::cli
