#include "atomic_file.h"

#include "native_file.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <io.h>
#include <process.h>
#define QOR_GETPID _getpid
#else
#include <fcntl.h>
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

Error FileError(const std::string &what, const std::string &path, int error)
{
    return Error{what + " \"" + path + "\": " + Reason(error) + "."};
}

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

// The temporary file's name: hidden, unique, and short enough that a target
// whose name is at the system's length limit can still be written.
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
    std::string name(1, '.');
    name.append(base)
        .append(1, '.')
        .append(std::to_string(QOR_GETPID()))
        .append(1, '.')
        .append(std::to_string(number))
        .append(".tmp");
    return name;
}

} // namespace

AtomicFileWriter::AtomicFileWriter(AtomicFileWriter &&other) noexcept
{
    *this = std::move(other);
}

AtomicFileWriter &AtomicFileWriter::operator=(AtomicFileWriter &&other) noexcept
{
    if (this != &other) {
        Abandon();
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
    m_target = path;
    m_failed = false;
    m_finished = false;
    m_errno = 0;
    std::error_code ec;
    fs::path target = NativePath(path);
    if (path.empty() || fs::is_directory(target, ec)) {
        return Error{"Cannot write \"" + path + "\": the name is a folder, not a file."};
    }
    static std::atomic<unsigned> counter{0};
    fs::path folder = target.parent_path();
    for (int attempt = 0; attempt < 100; ++attempt) {
        std::string name = TemporaryName(target, counter++);
        fs::path candidate = folder.empty() ? NativePath(name) : folder / NativePath(name);
        errno = 0;
        m_file = CreateNewFile(Utf8Path(candidate));
        if (m_file) {
            m_temporary = Utf8Path(candidate);
            break;
        }
        if (errno != EEXIST) {
            int error = errno;
            if (!folder.empty() && !fs::is_directory(folder, ec)) {
                return Error{"Cannot write \"" + path + "\": the folder \"" + Utf8Path(folder) +
                             "\" does not exist."};
            }
            return FileError("Cannot write", path, error);
        }
    }
    if (!m_file) {
        return FileError("Cannot write", path, EEXIST);
    }
    std::setvbuf(m_file, nullptr, _IOFBF, 1 << 16);
#ifndef _WIN32
    // Keep the permissions of the file being replaced.
    struct stat existing;
    if (::stat(path.c_str(), &existing) == 0) {
        fchmod(fileno(m_file), existing.st_mode & 07777);
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
        return Error{"Cannot write \"" + m_target + "\": the file was not opened."};
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
        return FileError("Cannot write", m_target, error);
    }
    m_finished = true;
    return Success();
}

Status AtomicFileWriter::Commit()
{
    if (auto finished = Finish(); !finished) {
        return finished;
    }
    std::error_code ec;
    fs::rename(NativePath(m_temporary), NativePath(m_target), ec);
    if (ec) {
        Abandon();
        return Error{"Cannot replace \"" + m_target + "\": " + ec.message() + "."};
    }
    m_temporary.clear();
    m_finished = false;
    SyncFolder(NativePath(m_target));
    return Success();
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
        return FileError("Cannot read", from, errno);
    }
    std::FILE *copy = CreateNewFile(to);
    if (!copy) {
        int error = errno;
        std::fclose(source);
        return FileError("Cannot write", to, error);
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
        return FileError("Cannot copy to", to, error);
    }
    return Success();
}

Result<std::string> ReadWholeFile(const std::string &path)
{
    std::FILE *file = OpenFile(path, "rb");
    if (!file) {
        return FileError("Cannot read", path, errno);
    }
    std::string content;
    char buffer[1 << 16];
    std::size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, file)) > 0) {
        content.append(buffer, got);
    }
    bool failed = std::ferror(file) != 0;
    int error = errno;
    std::fclose(file);
    if (failed) {
        return FileError("Cannot read", path, error);
    }
    return content;
}

bool FileExists(const std::string &path)
{
    std::error_code ec;
    return !path.empty() && fs::is_regular_file(NativePath(path), ec);
}

} // namespace qor
