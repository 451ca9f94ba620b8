#include "atomic_file.h"

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
        m_errno = other.m_errno;
        other.m_file = nullptr;
        other.m_temporary.clear();
    }
    return *this;
}

AtomicFileWriter::~AtomicFileWriter() { Abandon(); }

Status AtomicFileWriter::Open(const std::string &path)
{
    Abandon();
    m_target = path;
    m_failed = false;
    m_errno = 0;
    std::error_code ec;
    fs::path target(path);
    if (path.empty() || fs::is_directory(target, ec)) {
        return Error{"Cannot write \"" + path + "\": the name is a folder, not a file."};
    }
    static std::atomic<unsigned> counter{0};
    fs::path folder = target.parent_path();
    for (int attempt = 0; attempt < 100; ++attempt) {
        std::string name(1, '.');
        name.append(target.filename().string())
            .append(1, '.')
            .append(std::to_string(QOR_GETPID()))
            .append(1, '.')
            .append(std::to_string(counter++))
            .append(".tmp");
        fs::path candidate = folder.empty() ? fs::path(name) : folder / name;
        errno = 0;
        m_file = std::fopen(candidate.string().c_str(), "wbx");
        if (m_file) {
            m_temporary = candidate.string();
            break;
        }
        if (errno != EEXIST) {
            return FileError("Cannot write", path, errno);
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
    if (!m_file || m_failed || bytes.empty()) {
        return;
    }
    if (std::fwrite(bytes.data(), 1, bytes.size(), m_file) != bytes.size()) {
        m_failed = true;
        m_errno = errno;
    }
}

Status AtomicFileWriter::Commit()
{
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
    std::error_code ec;
    fs::rename(m_temporary, m_target, ec);
    if (ec) {
        Abandon();
        return Error{"Cannot replace \"" + m_target + "\": " + ec.message() + "."};
    }
    m_temporary.clear();
    return Success();
}

void AtomicFileWriter::Abandon()
{
    if (m_file) {
        std::fclose(m_file);
        m_file = nullptr;
    }
    if (!m_temporary.empty()) {
        std::error_code ec;
        fs::remove(m_temporary, ec);
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

Result<std::string> ReadWholeFile(const std::string &path)
{
    std::FILE *file = std::fopen(path.c_str(), "rb");
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
    return !path.empty() && fs::is_regular_file(fs::path(path), ec);
}

} // namespace qor
