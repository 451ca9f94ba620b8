#pragma once

#include <string>
#include <string_view>

namespace qor {

// True when the bytes are well-formed UTF-8.
bool IsValidUtf8(std::string_view bytes);

// Converts Windows-1252 bytes to UTF-8.
std::string Windows1252ToUtf8(std::string_view bytes);

// Text file bytes as UTF-8: a UTF-8 BOM is removed; valid UTF-8 is kept as it
// is; anything else is taken as Windows-1252.
std::string DecodeTextFile(std::string_view bytes);

} // namespace qor
