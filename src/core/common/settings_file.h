#pragma once

#include "profile_file.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace qor {

// One settings file, read once and kept in memory: every look-up after the
// first is answered from there, and a write changes the copy and replaces the
// file once. When the file changed on disk since (another program wrote it),
// it is read again before a write, so that nothing written there is lost. On
// Windows every call goes to the system's profile functions, which keep their
// own copy.
class SettingsFile
{
public:
    explicit SettingsFile(std::string path = {}) : m_path(std::move(path)) {}

    const std::string &Path() const { return m_path; }

    // "" when the file, the section or the key is missing, and when the file
    // is not a regular file or is larger than any settings file.
    std::string Read(std::string_view section, std::string_view key);

    // False when the file cannot be written.
    bool Write(std::string_view section, std::string_view key, std::string_view value);

private:
    struct Stamp
    {
        bool exists = false;
        std::uintmax_t size = 0;
        std::filesystem::file_time_type time{};
        bool operator==(const Stamp &) const = default;
    };

    Stamp Current() const;
    const std::string &Content();

    std::string m_path;
    std::optional<std::string> m_content;
    ProfileDocument m_document; // m_content parsed
    Stamp m_stamp;
};

} // namespace qor
