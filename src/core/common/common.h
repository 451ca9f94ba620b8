#pragma once

#include "settings_file.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace qor {

// Access to the program's settings file and the path helpers every window
// uses.
class Common
{
public:
    explicit Common(std::string iniPath = {}) : m_file(std::move(iniPath)) {}

    const std::string &IniPath() const { return m_file.Path(); }
    void SetIniPath(std::string iniPath) { m_file = SettingsFile(std::move(iniPath)); }

    // The value of `key` in `section`. A missing or empty value is replaced in
    // the file by `defaultValue`, which is returned; if the file cannot be
    // written the default is returned all the same, without a message.
    std::string GetIniString(std::string_view section, std::string_view key,
                             std::string_view defaultValue) const;

    // The value of `key` in `section`; "" when missing. Writes nothing, for
    // keys that only a window writes.
    std::string ReadIniString(std::string_view section, std::string_view key) const;

    // Writes a value (at most 256 characters of it); 1 when written, 0 when
    // the file could not be written.
    std::int16_t WriteIniString(std::string_view section, std::string_view key,
                                std::string_view value) const;

    // The value of `key` in `section` of any profile file; "" when missing.
    static std::string GetProfileValue(std::string_view section, std::string_view key,
                                       const std::string &file);

private:
    // Read once and kept; look-ups do not change what the program sees.
    mutable SettingsFile m_file;
};

// `path` up to and including its last separator ("\" or "/"); "" when it has
// none.
std::string DirOfPath(std::string_view path);

// What follows the last separator of `path`; "" when it has none.
std::string FileOfPath(std::string_view path);

// The separator this system uses in paths: "\" on Windows, "/" elsewhere.
char PathSeparator();

} // namespace qor
