#pragma once

#include <string>
#include <string_view>

namespace qor {

// Profile (INI) files of sections and key=value lines. On Windows these call
// GetPrivateProfileStringA and WritePrivateProfileStringA; elsewhere they do
// the same thing themselves: sections and keys compare without regard to
// case, the first match wins, values are trimmed and one pair of surrounding
// quotes is removed, and at most 254 characters of a value come back.

inline constexpr std::size_t ProfileValueLimit = 254;

// The value of `key` in `section` of `file`; "" when the file, the section or
// the key is missing.
std::string ReadProfileString(const std::string &file, std::string_view section,
                              std::string_view key);

// Writes `key=value` into `section` of `file`, replacing the key's line in
// place or adding it at the end of the section; a missing section is added at
// the end of the file and a missing file is created. Every other line is kept
// as it was. The file is replaced atomically. False when it cannot be written.
bool WriteProfileString(const std::string &file, std::string_view section, std::string_view key,
                        std::string_view value);

// The lookup on profile text already in memory (used by the above and by
// tests and fuzzing).
std::string FindProfileValue(std::string_view content, std::string_view section,
                             std::string_view key);

// The profile text with `key=value` set in `section`, as WriteProfileString
// writes it.
std::string SetProfileValue(std::string_view content, std::string_view section,
                            std::string_view key, std::string_view value);

} // namespace qor
