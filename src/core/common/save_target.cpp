#include "save_target.h"

#include "native_file.h"

#include <system_error>

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace qor {

namespace fs = std::filesystem;

namespace {

bool ReadOnly(const fs::path &file)
{
    std::error_code ec;
    const fs::perms perms = fs::status(file, ec).permissions();
    if (ec) {
        return false;
    }
    constexpr fs::perms anyWrite =
        fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    if ((perms & anyWrite) == fs::perms::none) {
        return true;
    }
#ifndef _WIN32
    return ::access(file.c_str(), W_OK) != 0 && errno == EACCES;
#else
    return false;
#endif
}

// How many names the file has; 1 when that cannot be found out.
std::uintmax_t HardLinkCount(const fs::path &file)
{
#ifdef _WIN32
    HANDLE handle =
        CreateFileW(file.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return 1;
    }
    BY_HANDLE_FILE_INFORMATION information{};
    const bool known = GetFileInformationByHandle(handle, &information) != 0;
    CloseHandle(handle);
    return known ? information.nNumberOfLinks : 1;
#else
    std::error_code ec;
    const auto links = fs::hard_link_count(file, ec);
    return ec ? 1 : links;
#endif
}

} // namespace

Result<std::string> ResolveSaveTarget(const std::string &path)
{
    if (path.find('\0') != std::string::npos) {
        return KeyedError("MSG30-2", {path, "the name holds a NUL character"},
                          "Cannot write \"" + path + "\": the name holds a NUL character.");
    }
    // A full path: ReplaceFileW refuses bare names, and a relative link is
    // resolved against the folder of the link.
    std::error_code ec;
    fs::path target = fs::absolute(NativePath(path), ec);
    if (ec) {
        target = NativePath(path);
    }
    for (int depth = 0; depth < 40; ++depth) {
        const fs::file_status status = fs::symlink_status(target, ec);
        if (ec || status.type() != fs::file_type::symlink) {
            break;
        }
        fs::path next = fs::read_symlink(target, ec);
        if (ec) {
            break;
        }
        target = next.is_absolute() ? next : target.parent_path() / next;
    }
    const std::string resolved = Utf8Path(target.lexically_normal());
    const fs::file_status status = fs::status(target, ec);
    if (ec || status.type() == fs::file_type::not_found) {
        return resolved;
    }
    if (status.type() != fs::file_type::regular) {
        return KeyedError(KeyNotAFile, {path}, "Cannot save \"" + path + "\": it is not a file.");
    }
    if (ReadOnly(target)) {
        return KeyedError(KeyReadOnly, {path},
                          "Cannot save \"" + path +
                              "\": the file is read-only. Nothing was saved.");
    }
    const auto links = HardLinkCount(target);
    if (links > 1) {
        return KeyedError(KeyHardLinks, {path, std::to_string(links - 1)},
                          "Cannot save \"" + path + "\": the file has " +
                              std::to_string(links - 1) +
                              " other name(s) (hard links), which would keep the old content. "
                              "Nothing was saved.");
    }
    return resolved;
}

bool IsTemporaryName(const std::string &fileName)
{
    const std::string suffix = TemporarySuffix;
    return fileName.size() > suffix.size() + 1 && fileName.front() == '.' &&
           fileName.compare(fileName.size() - suffix.size(), suffix.size(), suffix) == 0;
}

void RemoveStaleTemporaryFiles(const fs::path &folder)
{
    std::error_code ec;
    const fs::path where = folder.empty() ? fs::path(".") : folder;
    for (fs::directory_iterator it(where, ec), end; !ec && it != end; it.increment(ec)) {
        const fs::path &file = it->path();
        std::error_code probe;
        if (!IsTemporaryName(Utf8Path(file.filename())) || !it->is_regular_file(probe)) {
            continue;
        }
#ifdef _WIN32
        // A running save keeps its file open, and Windows refuses to delete it.
        fs::remove(file, probe);
#else
        const int descriptor = ::open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        if (descriptor < 0) {
            continue;
        }
        if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0) {
            ::unlink(file.c_str());
        }
        ::close(descriptor);
#endif
    }
}

} // namespace qor
