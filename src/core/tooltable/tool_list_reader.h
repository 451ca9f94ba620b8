#pragma once

#include "result.h"
#include "tool_table.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace qor {

// Outcome of reading a tool list file; the values are the program's result
// codes 0, 1 and 2.
enum class ReadOutcome
{
    Read = 0,
    NotFound = 1,
    FormatError = 2
};

// What a file that was read seems to be, when it does not look like a tool
// list: readers still read it by the usual rules, and then say so.
enum class FileLooks
{
    ToolList,
    Utf16Text, // starts with a UTF-16 byte order mark
    Binary,    // holds NUL bytes
    NoItems    // not empty, but no tool list item was recognised
};

struct ReadResult
{
    ReadOutcome outcome = ReadOutcome::Read;
    // For FormatError: what is wrong, the 1-based line number and the line.
    Error error;
    // Positions beyond the table are skipped; these say how many distinct
    // magazine numbers beyond it held a tool, and the highest (0 for none),
    // so that a caller can warn before a save drops those tools.
    int skippedPositions = 0;
    int highestSkippedMagazine = 0;
    // After Read and FormatError.
    FileLooks looks = FileLooks::ToolList;
};

// Reads a tool list file into the table. `ForeignFile` is set first, and
// cleared again when the file carries the "edited with QORTool" mark.
// NotFound (no such file, a folder, a path that cannot be probed, or a file
// that cannot be opened; `error` says which, naming the file) leaves the rest
// of the table as it was. Otherwise the table is cleared first; on FormatError it
// keeps what the items before the faulty one gave, and `error` holds the
// sentence, the 1-based line and the line's text (cut for display). After
// Read and FormatError `CurrentSlot` is `InitialMagazine` - 1; a file without
// an "INI" line leaves `InitialMagazine` as it was.
ReadResult ReadToolListFile(ToolTable &table, const std::string &path);

// The same on an open file (used by the above, tests and fuzzing); never
// NotFound.
ReadResult ReadToolListStream(ToolTable &table, std::FILE *file);

// The same on text in memory; never NotFound.
ReadResult ReadToolListText(ToolTable &table, std::string_view text);

} // namespace qor
