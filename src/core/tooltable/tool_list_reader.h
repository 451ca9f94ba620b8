#pragma once

#include "result.h"
#include "tool_table.h"

#include <cstdio>
#include <string>

namespace qor {

// Outcome of reading a tool list file; the values are the program's result
// codes 0, 1 and 2.
enum class ReadOutcome { Read = 0, NotFound = 1, FormatError = 2 };

struct ReadResult
{
    ReadOutcome outcome = ReadOutcome::Read;
    // For FormatError: what is wrong, the 1-based line number and the line.
    Error error;
};

// Reads a tool list file into the table. NotFound leaves the table as it
// was; otherwise the table is cleared first, and on FormatError it keeps what
// was read before the faulty item. `ForeignFile` is set unless the file
// carries the "edited with QORTool" mark; `CurrentSlot` ends at
// `InitialMagazine` - 1.
ReadResult ReadToolListFile(ToolTable &table, const std::string &path);

// The same on an open file (used by the above, tests and fuzzing).
ReadResult ReadToolListStream(ToolTable &table, std::FILE *file);

} // namespace qor
