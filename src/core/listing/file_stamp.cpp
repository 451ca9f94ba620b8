#include "file_stamp.h"

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
#include <sys/stat.h>
#endif

namespace qor {

namespace fs = std::filesystem;

namespace {

// Device and file number; false when the system will not say.
bool ReadIdentity(const fs::path &path, FileStamp &stamp)
{
#ifdef _WIN32
    // Opening with no access rights reads no data and blocks nobody.
    HANDLE handle =
        CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return false;
    }
    BY_HANDLE_FILE_INFORMATION info{};
    const bool known = GetFileInformationByHandle(handle, &info) != 0;
    CloseHandle(handle);
    if (known) {
        stamp.device = info.dwVolumeSerialNumber;
        stamp.index = (std::uint64_t{info.nFileIndexHigh} << 32) | info.nFileIndexLow;
    }
    return known;
#else
    struct stat status;
    if (::stat(path.c_str(), &status) != 0) {
        return false;
    }
    stamp.device = static_cast<std::uint64_t>(status.st_dev);
    stamp.index = static_cast<std::uint64_t>(status.st_ino);
    return true;
#endif
}

} // namespace

FileStamp TakeFileStamp(const std::string &utf8Path)
{
    FileStamp stamp;
    const fs::path path = NativePath(utf8Path);
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found) {
        return stamp;
    }
    // Something that cannot be probed may still be there: it counts as there.
    stamp.exists = true;
    if (fs::is_regular_file(status)) {
        const std::uintmax_t size = fs::file_size(path, error);
        stamp.size = error ? 0 : size;
    }
    const fs::file_time_type modified = fs::last_write_time(path, error);
    if (!error) {
        stamp.modified = modified;
    }
    ReadIdentity(path, stamp);
    return stamp;
}

bool SameFile(const std::string &a, const std::string &b)
{
    std::error_code error;
    return a == b || fs::equivalent(NativePath(a), NativePath(b), error);
}

OverwriteRisk RiskOfOverwriting(const std::string &path, const std::optional<LastRead> &lastRead)
{
    const FileStamp now = TakeFileStamp(path);
    if (!now.exists) {
        return OverwriteRisk::None;
    }
    if (!lastRead || !SameFile(path, lastRead->path)) {
        return OverwriteRisk::NotRead;
    }
    if (lastRead->failed) {
        return OverwriteRisk::ReadFailed;
    }
    return now == lastRead->stamp ? OverwriteRisk::None : OverwriteRisk::ChangedOnDisk;
}

} // namespace qor
