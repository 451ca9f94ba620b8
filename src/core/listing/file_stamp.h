#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace qor {

// What a file looked like at one moment, enough to tell later whether it is
// still the same file with the same contents without reading it again: its
// size, its modification time and its identity on disk (device and inode, or
// volume and file index on Windows), so that a file replaced by another of
// the same size and time still counts as changed.
struct FileStamp
{
    bool exists = false;
    std::uintmax_t size = 0;
    std::filesystem::file_time_type modified{};
    std::uint64_t device = 0;
    std::uint64_t index = 0;

    bool operator==(const FileStamp &) const = default;
};

// The stamp of what `utf8Path` names now, a link followed. Nothing there (or
// a dangling link) gives `exists` false. Where the system cannot tell a value
// it stays 0, so two stamps of a file that cannot be probed compare equal.
FileStamp TakeFileStamp(const std::string &utf8Path);

// True when both paths name the same file: the same text, or the same file on
// disk reached by another name. False when either does not exist (and the
// texts differ).
bool SameFile(const std::string &a, const std::string &b);

// The file a program read last, as it was when reading began; `failed` when
// that read stopped at a format error.
struct LastRead
{
    std::string path;
    FileStamp stamp;
    bool failed = false;
};

// Why writing over a file would destroy something nobody has seen.
enum class OverwriteRisk
{
    None,          // nothing there yet, or the file read last, unchanged
    NotRead,       // another file than the one read last, or nothing was read
    ReadFailed,    // the file read last, but reading it stopped at an error
    ChangedOnDisk, // the file read last, changed since
};

// What writing over `path` now risks, given the file read last.
OverwriteRisk RiskOfOverwriting(const std::string &path, const std::optional<LastRead> &lastRead);

} // namespace qor
