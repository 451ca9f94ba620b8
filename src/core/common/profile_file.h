#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace qor {

// Profile (INI) files of sections and key=value lines. On Windows these call
// GetPrivateProfileStringW and WritePrivateProfileStringW; elsewhere they do
// the same thing themselves, as a differential test under Wine holds them to:
// sections and keys compare without regard to case, the first match wins,
// values are trimmed and one pair of surrounding quotes is removed, and at
// most 254 characters (UTF-16 units) of a value come back. A section header
// names what stands between its "[" and its last "]"; the lines before the
// first header are the section "". A file may be ANSI/UTF-8 text, UTF-8 after
// a byte order mark, or UTF-16 LE after one; it is written back the same way.

inline constexpr std::size_t ProfileValueLimit = 254;

// Larger settings files are refused unread (read as empty, never written):
// no settings file comes near this.
inline constexpr std::uintmax_t MaxProfileBytes = std::uintmax_t(64) << 20;

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

// Our own implementation, on every system. Replaces the key's line in place
// (keeping the file's spelling of the key) or adds it after the section's last
// line; a missing section is added at the end of the file and a missing file
// is created. Written lines end in CR LF; every other line is kept as it was,
// and the file is replaced atomically.
std::string ReadProfileEntryPortable(const std::string &file, std::string_view section,
                                     std::string_view key);
bool WriteProfileEntryPortable(const std::string &file, std::string_view section,
                               std::string_view key, std::string_view value);

// Profile text parsed once, for many look-ups.
class ProfileDocument
{
public:
    explicit ProfileDocument(std::string_view content = {});

    // As FindProfileValue.
    std::string Find(std::string_view section, std::string_view key) const;

private:
    struct Parsed;
    std::shared_ptr<const Parsed> m_parsed; // immutable, so copies share it
};

// The lookup on profile text already in memory (used by the above and by
// tests and fuzzing).
std::string FindProfileValue(std::string_view content, std::string_view section,
                             std::string_view key);

// The profile text with `key=value` set in `section`, as
// WriteProfileEntryPortable writes it.
std::string SetProfileValue(std::string_view content, std::string_view section,
                            std::string_view key, std::string_view value);

} // namespace qor
