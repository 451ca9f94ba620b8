#pragma once

#include "result.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace qor {

// Writes a file so that it is never seen half-written: the bytes go to a
// temporary file in the same folder, which replaces the target only after it
// has been completely written and flushed to the disk. Without a Commit the
// temporary file is removed and the target stays as it was.
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
    // exist or cannot be written, or `path` names a folder.
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

    // Drops the temporary file; the target is untouched.
    void Abandon();

private:
    std::string m_target;
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

// Reads a whole file. Fails when it does not exist or cannot be read.
Result<std::string> ReadWholeFile(const std::string &path);

// True when `path` names an existing regular file (a path that cannot even be
// probed gives false).
bool FileExists(const std::string &path);

} // namespace qor
