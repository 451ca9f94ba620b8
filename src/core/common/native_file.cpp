#include "native_file.h"

#include <cerrno>
#include <system_error>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

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

namespace {

// `what`: "a folder", "a pipe (FIFO)", "a device" or anything else.
Error NotAFile(const std::string &path, const char *what)
{
    const std::string_view kind = what;
    const char *key = kind == "a folder"        ? "MSG30-7"
                      : kind == "a pipe (FIFO)" ? "MSG30-8"
                      : kind == "a device"      ? "MSG30-9"
                                                : "MSG30-10";
    return KeyedError(key, {path}, "Cannot read \"" + path + "\": it is " + what + ", not a file.");
}

#ifdef _WIN32
const char *KindOf(fs::file_type type)
{
    switch (type) {
    case fs::file_type::directory:
        return "a folder";
    case fs::file_type::fifo:
        return "a pipe (FIFO)";
    case fs::file_type::socket:
        return "a socket";
    case fs::file_type::block:
    case fs::file_type::character:
        return "a device";
    default:
        return "something else";
    }
}
#endif

// No system takes a NUL inside a name; a narrow call would cut the name short
// there and open another file.
bool HoldsNul(const std::string &path)
{
    return path.find('\0') != std::string::npos;
}

Error CannotOpen(const std::string &path, int error)
{
    const std::string reason = std::generic_category().message(error);
    return KeyedError("MSG30-1", {path, reason}, "Cannot read \"" + path + "\": " + reason + ".");
}

} // namespace

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
    if (HoldsNul(utf8Path)) {
        errno = EINVAL;
        return nullptr;
    }
    return _wfopen(Wide(utf8Path).c_str(), Wide(mode).c_str());
}

Result<std::FILE *> OpenRegularFile(const std::string &utf8Path)
{
    if (HoldsNul(utf8Path)) {
        return CannotOpen(utf8Path, EINVAL);
    }
    std::error_code ec;
    const fs::file_status status = fs::status(NativePath(utf8Path), ec);
    if (!ec && status.type() != fs::file_type::regular &&
        status.type() != fs::file_type::not_found) {
        return NotAFile(utf8Path, KindOf(status.type()));
    }
    if (std::FILE *file = OpenFile(utf8Path, "rb")) {
        return file;
    }
    return CannotOpen(utf8Path, errno);
}

std::FILE *CreateNewFile(const std::string &utf8Path)
{
    if (HoldsNul(utf8Path)) {
        errno = EINVAL;
        return nullptr;
    }
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
    if (HoldsNul(utf8Path)) {
        errno = EINVAL;
        return nullptr;
    }
    return std::fopen(utf8Path.c_str(), mode);
}

Result<std::FILE *> OpenRegularFile(const std::string &utf8Path)
{
    if (HoldsNul(utf8Path)) {
        return CannotOpen(utf8Path, EINVAL);
    }
    // Non-blocking, so that opening a pipe does not wait for a writer.
    const int descriptor = ::open(utf8Path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0) {
        return CannotOpen(utf8Path, errno);
    }
    struct stat status;
    if (::fstat(descriptor, &status) != 0) {
        const int error = errno;
        ::close(descriptor);
        return CannotOpen(utf8Path, error);
    }
    if (!S_ISREG(status.st_mode)) {
        ::close(descriptor);
        if (S_ISDIR(status.st_mode)) {
            return NotAFile(utf8Path, "a folder");
        }
        if (S_ISFIFO(status.st_mode)) {
            return NotAFile(utf8Path, "a pipe (FIFO)");
        }
        if (S_ISCHR(status.st_mode) || S_ISBLK(status.st_mode)) {
            return NotAFile(utf8Path, "a device");
        }
        return NotAFile(utf8Path, "something else");
    }
    ::fcntl(descriptor, F_SETFL, ::fcntl(descriptor, F_GETFL) & ~O_NONBLOCK);
    if (std::FILE *file = ::fdopen(descriptor, "rb")) {
        return file;
    }
    const int error = errno;
    ::close(descriptor);
    return CannotOpen(utf8Path, error);
}

std::FILE *CreateNewFile(const std::string &utf8Path)
{
    if (HoldsNul(utf8Path)) {
        errno = EINVAL;
        return nullptr;
    }
    return std::fopen(utf8Path.c_str(), "wbx");
}

std::string NativeSeparators(std::string path)
{
    return path;
}

#endif

} // namespace qor
