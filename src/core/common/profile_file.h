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
// the key is missing. On Windows this is GetPrivateProfileStringW, given the
// full path (a bare name would be looked up in the Windows folder); elsewhere
// ReadProfileEntryPortable. Values and paths are UTF-8.
std::string ReadProfileEntry(const std::string &file, std::string_view section,
                             std::string_view key);

// Writes `key=value` into `section` of `file`: WritePrivateProfileStringW on
// Windows, WriteProfileEntryPortable elsewhere. False when it cannot be
// written.
bool WriteProfileEntry(const std::string &file, std::string_view section, std::string_view key,
                       std::string_view value);

// Our own implementation, on every system. Replaces the key's line in place or
// adds it at the end of the section; a missing section is added at the end of
// the file and a missing file is created. Every other line is kept as it was,
// and the file is replaced atomically.
std::string ReadProfileEntryPortable(const std::string &file, std::string_view section,
                                     std::string_view key);
bool WriteProfileEntryPortable(const std::string &file, std::string_view section,
                               std::string_view key, std::string_view value);

// The lookup on profile text already in memory (used by the above and by
// tests and fuzzing).
std::string FindProfileValue(std::string_view content, std::string_view section,
                             std::string_view key);

// The profile text with `key=value` set in `section`, as
// WriteProfileEntryPortable writes it.
std::string SetProfileValue(std::string_view content, std::string_view section,
                            std::string_view key, std::string_view value);

} // namespace qor
