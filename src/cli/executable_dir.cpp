#include "executable_dir.h"

#include <filesystem>

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
#endif

namespace qor::cli {

namespace fs = std::filesystem;

std::string ExecutableDir(const char *argv0)
{
    std::error_code ec;
#ifdef _WIN32
    // The ANSI form, like the profile functions the settings go through.
    std::string buffer(32768, '\0');
    DWORD length = GetModuleFileNameA(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length > 0 && length < buffer.size()) {
        buffer.resize(length);
        return fs::path(buffer).parent_path().string();
    }
#else
    fs::path self = fs::read_symlink("/proc/self/exe", ec);
    if (!ec && !self.empty()) {
        return self.parent_path().string();
    }
#endif
    fs::path fallback = fs::absolute(argv0 ? argv0 : "", ec);
    return ec ? std::string() : fallback.parent_path().string();
}

} // namespace qor::cli
