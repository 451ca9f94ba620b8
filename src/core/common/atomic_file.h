#pragma once

#include "result.h"

#include <cstdint>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

namespace qor {

// Writes a file so that it is never seen half-written: the bytes go to a
// temporary file in the same folder, which replaces the target only after it
// has been completely written and flushed to the disk. Without a Commit the
// temporary file is removed and the target stays as it was. A symbolic link
// stays a link and its target gets the new content; the owner, group and mode
// of the file replaced are kept; a read-only or hard-linked file is refused
// (see ResolveSaveTarget). Temporary files that interrupted saves left in the
// folder are removed when a new one is made.
class AtomicFileWriter
{
public:
    AtomicFileWriter() = default;
    AtomicFileWriter(const AtomicFileWriter &) = delete;
    AtomicFileWriter &operator=(const AtomicFileWriter &) = delete;
    AtomicFileWriter(AtomicFileWriter &&other) noexcept;
    AtomicFileWriter &operator=(AtomicFileWriter &&other) noexcept;
    ~AtomicFileWriter();

    // Creates the temporary file beside `path`. Fails when the folder does not
    // exist or cannot be written, or `path` names a folder, a read-only or
    // hard-linked file, or a file whose owner the new file cannot keep.
    Status Open(const std::string &path);

    // Buffered; a failure is remembered and reported by Commit.
    void Write(std::string_view bytes);

    // Flushes the temporary file, syncs it to the disk and closes it, so that
    // every write error (a full disk too) is known before the target is
    // touched. On failure the temporary file is removed. Optional: Commit
    // finishes first when needed.
    Status Finish();

    // Finishes, then moves the temporary file over the target.
    Status Commit();

    // As Commit, but first keeps the file being replaced, unchanged, under the
    // first free name that `backupName(1)`, `backupName(2)` ... gives: a hard
    // link where the file system has them (on Windows ReplaceFileW does the
    // backup and the replacement in one call), else a complete copy made under
    // a temporary name and then given the backup's name. When no backup can be
    // made, nothing is replaced and the error has the key KeyBackupFailed.
    // Returns the backup's name ("" when there was no file to keep).
    Result<std::string> CommitKeepingOriginal(const std::function<std::string(int)> &backupName);

    // Drops the temporary file; the target is untouched.
    void Abandon();

private:
    Status Replace();

    std::string m_path;   // as the caller named it, for messages
    std::string m_target; // the file really replaced
    std::string m_temporary;
    std::FILE *m_file = nullptr;
    bool m_failed = false;
    bool m_finished = false;
    int m_errno = 0;
};

// Replaces the file at `path` with `content` as AtomicFileWriter does.
Status WriteFileAtomically(const std::string &path, std::string_view content);

// Copies the file `from` to `to`, which must not exist yet, and syncs the copy
// to the disk. On failure nothing is left at `to`.
Status CopyToNewFile(const std::string &from, const std::string &to);

// Reads a whole file. Fails when it does not exist or cannot be read, when
// it is not a regular file (a folder, a pipe, a device: refused without
// waiting on it), and when it is larger than `maxSize` bytes.
Result<std::string> ReadWholeFile(const std::string &path,
                                  std::uintmax_t maxSize = std::uintmax_t(-1));

// True when `path` names an existing regular file (a path that cannot even be
// probed gives false).
bool FileExists(const std::string &path);

} // namespace qor
