#include "common.h"

#include "profile_file.h"

namespace qor {

namespace {

constexpr std::size_t WriteBufferLimit = 256;

std::size_t LastSeparator(std::string_view path)
{
    return path.find_last_of("\\/");
}

} // namespace

std::string Common::GetIniString(std::string_view section, std::string_view key,
                                 std::string_view defaultValue) const
{
    std::string value = m_file.Read(section, key);
    if (value.empty()) {
        m_file.Write(section, key, defaultValue);
        return std::string(defaultValue);
    }
    // The profile API hands back a C string: the text ends at the first NUL.
    return value.substr(0, value.find('\0'));
}

std::string Common::ReadIniString(std::string_view section, std::string_view key) const
{
    std::string value = m_file.Read(section, key);
    return value.substr(0, value.find('\0'));
}

std::int16_t Common::WriteIniString(std::string_view section, std::string_view key,
                                    std::string_view value) const
{
    return m_file.Write(section, key, value.substr(0, WriteBufferLimit)) ? 1 : 0;
}

std::string Common::GetProfileValue(std::string_view section, std::string_view key,
                                    const std::string &file)
{
    std::string value = ReadProfileEntry(file, section, key);
    return value.substr(0, value.find('\0'));
}

std::string DirOfPath(std::string_view path)
{
    auto separator = LastSeparator(path);
    return separator == std::string_view::npos ? std::string()
                                               : std::string(path.substr(0, separator + 1));
}

std::string FileOfPath(std::string_view path)
{
    auto separator = LastSeparator(path);
    return separator == std::string_view::npos ? std::string()
                                               : std::string(path.substr(separator + 1));
}

char PathSeparator()
{
#ifdef _WIN32
    return '\\';
#else
    return '/';
#endif
}

} // namespace qor
