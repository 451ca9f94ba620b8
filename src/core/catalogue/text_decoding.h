#pragma once

#include "code_page.h"

#include <string>
#include <string_view>

namespace qor {

// Text file bytes as UTF-8: a UTF-8 BOM is removed; valid UTF-8 is kept as it
// is; anything else is decoded from `codePage` (see DecodeCodePage). A file
// that starts with a BOM but holds malformed sequences stays UTF-8, each bad
// sequence becoming U+FFFD. The result is always valid UTF-8.
std::string DecodeTextFile(std::string_view bytes, int codePage);

} // namespace qor
