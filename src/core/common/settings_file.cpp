#include "settings_file.h"

#include "atomic_file.h"
#include "native_file.h"
#include "profile_file.h"

namespace qor {

namespace fs = std::filesystem;

#ifdef _WIN32

std::string SettingsFile::Read(std::string_view section, std::string_view key)
{
    return ReadProfileEntry(m_path, section, key);
}

bool SettingsFile::Write(std::string_view section, std::string_view key, std::string_view value)
{
    return WriteProfileEntry(m_path, section, key, value);
}

#else

SettingsFile::Stamp SettingsFile::Current() const
{
    std::error_code ec;
    const fs::path file = NativePath(m_path);
    Stamp stamp;
    const auto size = fs::file_size(file, ec);
    if (ec) {
        // Missing, or not a regular file (then it exists, and is never
        // replaced).
        stamp.exists = fs::exists(file, ec);
        return stamp;
    }
    stamp.exists = true;
    stamp.size = size;
    stamp.time = fs::last_write_time(file, ec);
    return stamp;
}

const std::string &SettingsFile::Content()
{
    if (!m_content || Current() != m_stamp) {
        m_stamp = Current();
        auto read = ReadWholeFile(m_path, MaxProfileBytes);
        m_content = read ? std::move(read.value()) : std::string();
        m_document = ProfileDocument(*m_content);
    }
    return *m_content;
}

std::string SettingsFile::Read(std::string_view section, std::string_view key)
{
    Content();
    return m_document.Find(section, key);
}

bool SettingsFile::Write(std::string_view section, std::string_view key, std::string_view value)
{
    const std::string &content = Content();
    if (m_stamp.exists && !FileExists(m_path)) {
        return false; // a pipe, a device or a folder: never replaced
    }
    if (m_stamp.size > MaxProfileBytes) {
        return false;
    }
    std::string changed = SetProfileValue(content, section, key, value);
    if (!WriteFileAtomically(m_path, changed).ok()) {
        return false;
    }
    m_content = std::move(changed);
    m_document = ProfileDocument(*m_content);
    m_stamp = Current();
    return true;
}

#endif

} // namespace qor
