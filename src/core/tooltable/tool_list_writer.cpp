// Being written.
#include "tool_list_writer.h"
namespace qor {
Status WriteToolListFile(ToolTable &, const std::string &, const WriteOptions &) { return Success(); }
std::string FormatToolList(ToolTable &, const WriteOptions &) { return {}; }
} // namespace qor
