#pragma once

#include "result.h"
#include "tool_table.h"

#include <string>

namespace qor {

struct WriteOptions
{
    std::string title;      // the file's title line text (catalogue "Str80")
    std::string magIniText; // the initial magazine number as the user typed it
};

// Saves the table as a tool list file. A foreign file is first kept as
// "<name>_org<n>.TTL" (the next free n). The new content replaces the file
// only when completely written; on failure the old file is untouched and the
// error names the file and the reason. Repairs an unknown `LengthMode` to 0.
Status WriteToolListFile(ToolTable &table, const std::string &path, const WriteOptions &options);

// The file's bytes as WriteToolListFile writes them (no backup, no file).
std::string FormatToolList(ToolTable &table, const WriteOptions &options);

} // namespace qor
