#include "executable_dir.h"

#include "native_file.h"

#include <filesystem>

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// after windows.h, which it needs
#include <shellapi.h>
#endif

namespace qor::cli {

namespace fs = std::filesystem;

std::string ExecutableDir(const char *argv0)
{
    std::error_code ec;
#ifdef _WIN32
    std::wstring buffer(32768, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length > 0 && length < buffer.size()) {
        buffer.resize(length);
        return Utf8Path(fs::path(buffer).parent_path());
    }
#else
    fs::path self = fs::read_symlink("/proc/self/exe", ec);
    if (!ec && !self.empty()) {
        return Utf8Path(self.parent_path());
    }
#endif
    fs::path fallback = fs::absolute(argv0 ? argv0 : "", ec);
    return ec ? std::string() : Utf8Path(fallback.parent_path());
}

std::vector<std::string> ProgramArguments(int argc, char **argv)
{
#ifdef _WIN32
    int count = 0;
    if (LPWSTR *wide = CommandLineToArgvW(GetCommandLineW(), &count)) {
        std::vector<std::string> arguments;
        for (int i = 1; i < count; ++i) {
            arguments.push_back(Utf8Path(fs::path(wide[i])));
        }
        LocalFree(wide);
        return arguments;
    }
#endif
    return std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc);
}

} // namespace qor::cli
