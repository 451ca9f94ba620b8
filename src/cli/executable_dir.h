#pragma once

#include <string>

namespace qor::cli {

// The folder of the running executable, where the settings file and the
// catalogue lie. Asks the system; falls back on `argv0` when it cannot.
std::string ExecutableDir(const char *argv0);

} // namespace qor::cli
