// Feeds arbitrary bytes to the settings-file parser: reading any key and
// writing one back must never crash, a written value must read back, writing
// it again must change nothing (in UTF-16 files too), and every line the
// write did not change must survive it byte for byte.
#include "profile_file.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

// Lines with their ends, split at CR LF, LF and a lone CR.
std::vector<std::string_view> Lines(std::string_view text)
{
    std::vector<std::string_view> lines;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\n' || (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n'))) {
            lines.push_back(text.substr(begin, i + 1 - begin));
            begin = i + 1;
        }
    }
    if (begin < text.size()) {
        lines.push_back(text.substr(begin));
    }
    return lines;
}

// Between what the original and the written text share at their start and at
// their end, at most one line of the original is gone: the key's line, which
// was replaced, or the last line, which gained a line end.
bool KeepsUntouchedLines(std::string_view original, std::string_view written)
{
    const auto before = Lines(original);
    const auto after = Lines(written);
    std::size_t prefix = 0;
    while (prefix < before.size() && prefix < after.size() && before[prefix] == after[prefix]) {
        ++prefix;
    }
    std::size_t suffix = 0;
    while (suffix < before.size() - prefix && suffix < after.size() - prefix &&
           before[before.size() - 1 - suffix] == after[after.size() - 1 - suffix]) {
        ++suffix;
    }
    return before.size() - prefix - suffix <= 1;
}

} // namespace

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
    const bool plain = !content.starts_with("\xFF\xFE") && !content.starts_with("\xEF\xBB\xBF");
    if (plain && !KeepsUntouchedLines(content, written)) {
        std::abort();
    }
    return 0;
}
