#include "native_file.h"

#include <cerrno>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#endif

namespace qor {

namespace fs = std::filesystem;

#ifdef _WIN32

namespace {

std::wstring Wide(std::string_view utf8)
{
    if (utf8.empty()) {
        return {};
    }
    int size =
        MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), wide.data(), size);
    return wide;
}

std::string Narrow(std::wstring_view wide)
{
    if (wide.empty()) {
        return {};
    }
    int size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), nullptr,
                                   0, nullptr, nullptr);
    std::string utf8(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), utf8.data(), size,
                        nullptr, nullptr);
    return utf8;
}

} // namespace

fs::path NativePath(std::string_view utf8Path)
{
    return fs::path(Wide(utf8Path));
}

std::string Utf8Path(const fs::path &path)
{
    return Narrow(path.native());
}

std::FILE *OpenFile(const std::string &utf8Path, const char *mode)
{
    return _wfopen(Wide(utf8Path).c_str(), Wide(mode).c_str());
}

std::FILE *CreateNewFile(const std::string &utf8Path)
{
    int descriptor = _wopen(Wide(utf8Path).c_str(), _O_CREAT | _O_EXCL | _O_WRONLY | _O_BINARY,
                            _S_IREAD | _S_IWRITE);
    if (descriptor < 0) {
        return nullptr;
    }
    std::FILE *file = _fdopen(descriptor, "wb");
    if (!file) {
        _close(descriptor);
    }
    return file;
}

std::string NativeSeparators(std::string path)
{
    for (char &c : path) {
        if (c == '/') {
            c = '\\';
        }
    }
    return path;
}

#else

fs::path NativePath(std::string_view utf8Path)
{
    return fs::path(std::string(utf8Path));
}

std::string Utf8Path(const fs::path &path)
{
    return path.native();
}

std::FILE *OpenFile(const std::string &utf8Path, const char *mode)
{
    return std::fopen(utf8Path.c_str(), mode);
}

std::FILE *CreateNewFile(const std::string &utf8Path)
{
    return std::fopen(utf8Path.c_str(), "wbx");
}

std::string NativeSeparators(std::string path)
{
    return path;
}

#endif

} // namespace qor
