#include "atomic_file.h"

#include "native_file.h"
#include "save_target.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#include <process.h>
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#define QOR_GETPID _getpid
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#define QOR_GETPID getpid
#endif

namespace qor {

namespace fs = std::filesystem;

namespace {

std::string Reason(int error)
{
    if (error == 0) {
        return "unknown error";
    }
    return std::generic_category().message(error);
}

// "Cannot read", "Cannot write" ... a file, with the system's reason; `key`
// is the catalogue's text of the same.
Error FileError(const char *key, const std::string &what, const std::string &path, int error)
{
    return KeyedError(key, {path, Reason(error)},
                      what + " \"" + path + "\": " + Reason(error) + ".");
}

constexpr const char *KeyCannotRead = "MSG30-1";
constexpr const char *KeyCannotWrite = "MSG30-2";
constexpr const char *KeyCannotCopy = "MSG30-3";
constexpr const char *KeyCannotReplace = "MSG30-4";

bool SyncToDisk(std::FILE *file)
{
#ifdef _WIN32
    return _commit(_fileno(file)) == 0;
#else
    return fsync(fileno(file)) == 0;
#endif
}

// Makes a rename or a new name in the folder survive a power cut. Where the
// system cannot do that for folders, the rename is as durable as it gets.
void SyncFolder([[maybe_unused]] const fs::path &file)
{
#ifndef _WIN32
    fs::path folder = file.parent_path();
    int descriptor = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
#endif
}

// A temporary file's name: hidden, unique, recognisable as ours, and short
// enough that a target whose name is at the system's length limit can still
// be written.
std::string TemporaryName(const fs::path &target, unsigned number)
{
    std::string base = Utf8Path(target.filename());
    if (base.size() > 64) {
        // Cut on a character boundary, so that the name stays valid UTF-8.
        std::size_t cut = 64;
        while (cut > 0 && (static_cast<unsigned char>(base[cut]) & 0xC0) == 0x80) {
            --cut;
        }
        base.resize(cut);
    }
    return "." + base + "." + std::to_string(QOR_GETPID()) + "." + std::to_string(number) +
           TemporarySuffix;
}

// Creates a new temporary file beside `target`; its name in `made`.
std::FILE *CreateTemporary(const fs::path &target, std::string &made, int &error)
{
    static std::atomic<unsigned> counter{0};
    const fs::path folder = target.parent_path();
    for (int attempt = 0; attempt < 100; ++attempt) {
        const fs::path candidate = folder / NativePath(TemporaryName(target, counter++));
        errno = 0;
        if (std::FILE *file = CreateNewFile(Utf8Path(candidate))) {
#ifndef _WIN32
            // Held while the save runs, so that no other save takes it for
            // a leftover (Windows refuses to delete an open file anyway). If
            // another save removed it before the lock was taken, take the
            // next name.
            struct stat status;
            if (::flock(fileno(file), LOCK_EX) != 0 || ::fstat(fileno(file), &status) != 0 ||
                status.st_nlink == 0) {
                std::fclose(file);
                continue;
            }
#endif
            made = Utf8Path(candidate);
            return file;
        }
        if (errno != EEXIST) {
            error = errno;
            return nullptr;
        }
    }
    error = EEXIST;
    return nullptr;
}

#ifndef _WIN32

// A complete copy of `from` under a new temporary name beside `like`, synced.
Result<std::string> CopyToTemporary(const std::string &from, const fs::path &like)
{
    std::string made;
    int error = 0;
    std::FILE *copy = CreateTemporary(like, made, error);
    if (!copy) {
        return FileError(KeyCannotCopy, "Cannot copy", from, error);
    }
    std::fclose(copy);
    fs::remove(NativePath(made));
    if (Status copied = CopyToNewFile(from, made); !copied) {
        return copied.error();
    }
    std::error_code ec;
    fs::last_write_time(NativePath(made), fs::last_write_time(NativePath(from), ec), ec);
    fs::permissions(NativePath(made), fs::status(NativePath(from), ec).permissions(), ec);
    return made;
}

// Gives a new name to a file that must not replace anything there: a hard
// link, which fails when the name is taken.
int LinkWithoutReplacing(const std::string &from, const std::string &to)
{
    return ::link(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

#endif

} // namespace

AtomicFileWriter::AtomicFileWriter(AtomicFileWriter &&other) noexcept
{
    *this = std::move(other);
}

AtomicFileWriter &AtomicFileWriter::operator=(AtomicFileWriter &&other) noexcept
{
    if (this != &other) {
        Abandon();
        m_path = std::move(other.m_path);
        m_target = std::move(other.m_target);
        m_temporary = std::move(other.m_temporary);
        m_file = other.m_file;
        m_failed = other.m_failed;
        m_finished = other.m_finished;
        m_errno = other.m_errno;
        other.m_file = nullptr;
        other.m_temporary.clear();
    }
    return *this;
}

AtomicFileWriter::~AtomicFileWriter()
{
    Abandon();
}

Status AtomicFileWriter::Open(const std::string &path)
{
    Abandon();
    m_path = path;
    m_failed = false;
    m_finished = false;
    m_errno = 0;
    std::error_code ec;
    if (path.empty() || fs::is_directory(NativePath(path), ec)) {
        return KeyedError("MSG30-5", {path},
                          "Cannot write \"" + path + "\": the name is a folder, not a file.");
    }
    auto resolved = ResolveSaveTarget(path);
    if (!resolved) {
        return resolved.error();
    }
    m_target = resolved.value();
    const fs::path target = NativePath(m_target);
    const fs::path folder = target.parent_path();
    if (!folder.empty() && !fs::is_directory(folder, ec)) {
        return KeyedError("MSG30-6", {path, Utf8Path(folder)},
                          "Cannot write \"" + path + "\": the folder \"" + Utf8Path(folder) +
                              "\" does not exist.");
    }
    RemoveStaleTemporaryFiles(folder);

    int error = 0;
    m_file = CreateTemporary(target, m_temporary, error);
    if (!m_file) {
        if (error == EACCES || error == EPERM || error == EROFS) {
            const std::string where = folder.empty() ? std::string(".") : Utf8Path(folder);
            return KeyedError(KeyFolderNotWritable, {path, where, Reason(error)},
                              "Cannot save \"" + path +
                                  "\": no new file can be made in the folder \"" + where + "\" (" +
                                  Reason(error) +
                                  "). The new content is written beside the file first, so that "
                                  "the old file is never half overwritten.");
        }
        return FileError(KeyCannotWrite, "Cannot write", path, error);
    }
    std::setvbuf(m_file, nullptr, _IOFBF, 1 << 16);
#ifndef _WIN32
    // The new file takes the place of the old one: it keeps its mode, owner
    // and group, or the save is refused.
    struct stat existing;
    if (::stat(m_target.c_str(), &existing) == 0) {
        ::fchmod(fileno(m_file), existing.st_mode & 07777);
        struct stat made;
        ::fstat(fileno(m_file), &made);
        if ((made.st_uid != existing.st_uid || made.st_gid != existing.st_gid) &&
            ::fchown(fileno(m_file), existing.st_uid, existing.st_gid) != 0) {
            Abandon();
            return KeyedError(KeyOwnerNotKept, {path},
                              "Cannot save \"" + path +
                                  "\": the file belongs to another user or group, and a new file "
                                  "in its place could not keep them. Nothing was saved.");
        }
        ::fchmod(fileno(m_file), existing.st_mode & 07777);
    }
#endif
    return Success();
}

void AtomicFileWriter::Write(std::string_view bytes)
{
    if (!m_file || m_failed || m_finished || bytes.empty()) {
        return;
    }
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size()) {
        m_failed = true;
        m_errno = errno;
    }
}

Status AtomicFileWriter::Finish()
{
    if (m_finished) {
        return Success();
    }
    if (!m_file) {
        return Error{"Cannot write \"" + m_path + "\": the file was not opened."};
    }
    if (!m_failed && std::fflush(m_file) != 0) {
        m_failed = true;
        m_errno = errno;
    }
    if (!m_failed && !SyncToDisk(m_file)) {
        m_failed = true;
        m_errno = errno;
    }
    if (std::fclose(m_file) != 0 && !m_failed) {
        m_failed = true;
        m_errno = errno;
    }
    m_file = nullptr;
    if (m_failed) {
        int error = m_errno;
        Abandon();
        return FileError(KeyCannotWrite, "Cannot write", m_path, error);
    }
    m_finished = true;
    return Success();
}

Status AtomicFileWriter::Replace()
{
#ifdef _WIN32
    const std::wstring target = NativePath(m_target).native();
    const std::wstring temporary = NativePath(m_temporary).native();
    // ReplaceFileW keeps the attributes and the security of the file replaced.
    const bool replaced =
        FileExists(m_target)
            ? ReplaceFileW(target.c_str(), temporary.c_str(), nullptr,
                           REPLACEFILE_IGNORE_MERGE_ERRORS | REPLACEFILE_IGNORE_ACL_ERRORS, nullptr,
                           nullptr) != 0
            : MoveFileExW(temporary.c_str(), target.c_str(),
                          MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    if (!replaced) {
        const std::string reason = std::system_category().message(static_cast<int>(GetLastError()));
        Abandon();
        return KeyedError(KeyCannotReplace, {m_path, reason},
                          "Cannot replace \"" + m_path + "\": " + reason + ".");
    }
#else
    std::error_code ec;
    fs::rename(NativePath(m_temporary), NativePath(m_target), ec);
    if (ec) {
        Abandon();
        return KeyedError(KeyCannotReplace, {m_path, ec.message()},
                          "Cannot replace \"" + m_path + "\": " + ec.message() + ".");
    }
#endif
    m_temporary.clear();
    m_finished = false;
    SyncFolder(NativePath(m_target));
    return Success();
}

Status AtomicFileWriter::Commit()
{
    if (auto finished = Finish(); !finished) {
        return finished;
    }
    return Replace();
}

Result<std::string>
AtomicFileWriter::CommitKeepingOriginal(const std::function<std::string(int)> &backupName)
{
    if (auto finished = Finish(); !finished) {
        return finished.error();
    }
    if (!FileExists(m_target)) {
        if (auto replaced = Replace(); !replaced) {
            return replaced.error();
        }
        return std::string();
    }
    auto taken = [](const std::string &name) {
        std::error_code ec;
        return fs::symlink_status(NativePath(name), ec).type() != fs::file_type::not_found;
    };
    auto backupFailed = [this](const std::string &why) {
        Abandon();
        return KeyedError(KeyBackupFailed, {m_path, why},
                          "Cannot keep the original of \"" + m_path + "\" as a backup: " + why +
                              ". Nothing was saved; the file is unchanged.");
    };

#ifdef _WIN32
    for (int n = 1; n < 100000; ++n) {
        const std::string backup = backupName(n);
        if (taken(backup)) {
            continue;
        }
        // The original becomes the backup and the new file takes its place in
        // one call.
        if (ReplaceFileW(NativePath(m_target).c_str(), NativePath(m_temporary).c_str(),
                         NativePath(backup).c_str(),
                         REPLACEFILE_IGNORE_MERGE_ERRORS | REPLACEFILE_IGNORE_ACL_ERRORS, nullptr,
                         nullptr)) {
            m_temporary.clear();
            m_finished = false;
            return backup;
        }
        const DWORD error = GetLastError();
        if (error == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2) {
            // The original already moved to the backup's name: put it back.
            MoveFileExW(NativePath(backup).c_str(), NativePath(m_target).c_str(), 0);
        }
        return backupFailed(std::system_category().message(static_cast<int>(error)));
    }
    return backupFailed("no free name");
#else
    std::string copy; // made only where no hard link can be
    std::string kept;
    for (int n = 1; n < 100000 && kept.empty(); ++n) {
        const std::string backup = backupName(n);
        if (taken(backup)) {
            continue;
        }
        int error = LinkWithoutReplacing(copy.empty() ? m_target : copy, backup);
        if (error == 0) {
            kept = backup;
        } else if (error != EEXIST && copy.empty()) {
            // No hard links here (or none across this file's folder): a
            // complete copy under a temporary name, then the backup's name.
            auto made = CopyToTemporary(m_target, NativePath(m_target));
            if (!made) {
                return backupFailed(made.error().message);
            }
            copy = made.value();
            --n;
        } else if (error != EEXIST) {
            // No hard links at all on this file system: the copy itself takes
            // the backup's name.
            std::error_code ec;
            if (!taken(backup)) {
                fs::rename(NativePath(copy), NativePath(backup), ec);
                if (!ec) {
                    kept = backup;
                    copy.clear();
                    break;
                }
            }
            fs::remove(NativePath(copy), ec);
            return backupFailed(Reason(error));
        }
    }
    if (!copy.empty()) {
        std::error_code ec;
        fs::remove(NativePath(copy), ec);
    }
    if (kept.empty()) {
        return backupFailed("no free name");
    }
    SyncFolder(NativePath(kept));
    if (auto replaced = Replace(); !replaced) {
        std::error_code ec;
        fs::remove(NativePath(kept), ec);
        return replaced.error();
    }
    return kept;
#endif
}

void AtomicFileWriter::Abandon()
{
    m_finished = false;
    if (m_file) {
        std::fclose(m_file);
        m_file = nullptr;
    }
    if (!m_temporary.empty()) {
        std::error_code ec;
        fs::remove(NativePath(m_temporary), ec);
        m_temporary.clear();
    }
}

Status WriteFileAtomically(const std::string &path, std::string_view content)
{
    AtomicFileWriter writer;
    if (auto opened = writer.Open(path); !opened) {
        return opened;
    }
    writer.Write(content);
    return writer.Commit();
}

Status CopyToNewFile(const std::string &from, const std::string &to)
{
    std::FILE *source = OpenFile(from, "rb");
    if (!source) {
        return FileError(KeyCannotRead, "Cannot read", from, errno);
    }
    std::FILE *copy = CreateNewFile(to);
    if (!copy) {
        int error = errno;
        std::fclose(source);
        return FileError(KeyCannotWrite, "Cannot write", to, error);
    }
    int error = 0;
    char buffer[1 << 16];
    std::size_t got = 0;
    while (error == 0 && (got = std::fread(buffer, 1, sizeof buffer, source)) > 0) {
        if (std::fwrite(buffer, 1, got, copy) != got) {
            error = errno ? errno : EIO;
        }
    }
    if (error == 0 && std::ferror(source)) {
        error = errno ? errno : EIO;
    }
    if (error == 0 && (std::fflush(copy) != 0 || !SyncToDisk(copy))) {
        error = errno ? errno : EIO;
    }
    std::fclose(source);
    if (std::fclose(copy) != 0 && error == 0) {
        error = errno ? errno : EIO;
    }
    if (error != 0) {
        std::error_code ec;
        fs::remove(NativePath(to), ec);
        return FileError(KeyCannotCopy, "Cannot copy to", to, error);
    }
    return Success();
}

Result<std::string> ReadWholeFile(const std::string &path, std::uintmax_t maxSize)
{
    auto opened = OpenRegularFile(path);
    if (!opened) {
        return opened.error();
    }
    std::FILE *file = opened.value();
    std::error_code ec;
    const std::uintmax_t size = fs::file_size(NativePath(path), ec);
    if (!ec && size > maxSize) {
        std::fclose(file);
        return KeyedError("MSG30-11", {path, std::to_string(size), std::to_string(maxSize)},
                          "Cannot read \"" + path + "\": it holds " + std::to_string(size) +
                              " bytes, more than such a file ever has (" + std::to_string(maxSize) +
                              ").");
    }
    std::string content;
    char buffer[1 << 16];
    std::size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0) {
        content.append(buffer, got);
        if (content.size() > maxSize) {
            std::fclose(file);
            std::string over = ">";
            over += std::to_string(maxSize);
            return KeyedError("MSG30-11", {path, over, std::to_string(maxSize)},
                              "Cannot read \"" + path + "\": it holds more than " +
                                  std::to_string(maxSize) +
                                  " bytes, more than such a file ever has.");
        }
    }
    bool failed = std::ferror(file) != 0;
    int error = errno;
    std::fclose(file);
    if (failed) {
        return FileError(KeyCannotRead, "Cannot read", path, error);
    }
    return content;
}

bool FileExists(const std::string &path)
{
    std::error_code ec;
    return !path.empty() && path.find('\0') == std::string::npos &&
           fs::is_regular_file(NativePath(path), ec);
}

} // namespace qor
