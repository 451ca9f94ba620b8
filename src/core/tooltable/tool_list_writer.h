#pragma once

#include "code_page.h"
#include "result.h"
#include "tool_table.h"

#include <string>
#include <vector>

namespace qor {

struct WriteOptions
{
    std::string title;      // the file's title line text (catalogue "Str80"), UTF-8
    std::string magIniText; // the initial magazine number as typed; when empty or not a
                            // 16-bit number, the table's InitialMagazine is written
    // The title is written in this code page; a character it cannot hold
    // becomes "?" (the line is a comment). Tool names are written as they are.
    int codePage = DefaultCodePage;
};

// Saves the table as a tool list file. The new content is written to a
// temporary file beside `path` and synced first; only then does it replace
// `path` (see AtomicFileWriter: links followed, owner and mode kept,
// read-only and hard-linked files refused). When the table came from a
// foreign file (`ForeignFile`, which stays set) and `path` exists, the old
// file itself is kept as "<path less 4 characters>_org<n>.TTL" (the first
// free n); when it cannot be kept, nothing is written and the error has the
// key KeyBackupFailed. On failure the old file is untouched, nothing of this
// attempt is left behind, and the error names the file and the reason.
// Resets a `LengthMode` outside 0..3 to 0 in the table.
Status WriteToolListFile(ToolTable &table, const std::string &path, const WriteOptions &options);

// The bytes WriteToolListFile writes, as one string (no backup, no file);
// repairs `LengthMode` the same way.
std::string FormatToolList(ToolTable &table, const WriteOptions &options);

// The lines WriteToolListFile writes for the file-level arbor (only when
// `fileArbor`) and for the positions `slots` (slot indices, in that order),
// appended to `out`: no header, nothing for a position without a tool or
// outside the table, and no repair.
void AppendToolListItems(const ToolTable &table, const std::vector<int> &slots, bool fileArbor,
                         std::string &out);

} // namespace qor
