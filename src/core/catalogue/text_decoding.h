#pragma once

#include <string>
#include <string_view>

namespace qor {

// True when the bytes are well-formed UTF-8 (no overlong forms, no surrogates,
// nothing above U+10FFFF).
bool IsValidUtf8(std::string_view bytes);

// Converts Windows-1252 bytes to UTF-8. The five bytes that code page leaves
// undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) become U+0081 etc., as Windows
// converts them.
std::string Windows1252ToUtf8(std::string_view bytes);

// Text file bytes as UTF-8: a UTF-8 BOM is removed; valid UTF-8 is kept as it
// is; anything else is taken as Windows-1252. A file that starts with a BOM
// but holds malformed sequences stays UTF-8, each bad sequence becoming U+FFFD.
// The result is always valid UTF-8.
std::string DecodeTextFile(std::string_view bytes);

} // namespace qor
