// Feeds arbitrary bytes to the settings-file parser: reading any key and
// writing one back must never crash, a written value must read back, and
// writing it again must change nothing (in UTF-16 files too).
#include "profile_file.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::string_view content(reinterpret_cast<const char *>(data), size);
    // The first bytes choose the section and key names, so that the fuzzer
    // can reach the matching code with names it makes up.
    std::string_view section = content.substr(0, std::min<std::size_t>(size, 6));
    std::string_view key = content.substr(std::min<std::size_t>(size, 6), 6);

    qor::FindProfileValue(content, "Config", "Magazine Max");
    qor::FindProfileValue(content, section, key);

    std::string written = qor::SetProfileValue(content, "Config", "Magazine Max", "42");
    if (qor::FindProfileValue(written, "Config", "Magazine Max") != "42" ||
        qor::SetProfileValue(written, "Config", "Magazine Max", "42") != written) {
        std::abort();
    }
    return 0;
}
