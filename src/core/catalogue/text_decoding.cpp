#include "text_decoding.h"

namespace qor {

namespace {

constexpr std::string_view Utf8Bom = "\xEF\xBB\xBF";

std::string Utf8WithReplacement(std::string_view bytes)
{
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 8);
    std::size_t i = 0;
    while (i < bytes.size()) {
        const std::size_t length = Utf8SequenceLength(bytes, i);
        if (length == 0) {
            out += "\xEF\xBF\xBD";
            ++i;
        } else {
            out.append(bytes.substr(i, length));
            i += length;
        }
    }
    return out;
}

} // namespace

std::string DecodeTextFile(std::string_view bytes, int codePage)
{
    const bool bom = bytes.starts_with(Utf8Bom);
    if (bom) {
        bytes.remove_prefix(Utf8Bom.size());
    }
    if (IsValidUtf8(bytes)) {
        return std::string(bytes);
    }
    // A BOM says the file is meant as UTF-8: one damaged character should not
    // turn every other one into mojibake.
    return bom ? Utf8WithReplacement(bytes) : DecodeCodePage(bytes, codePage);
}

} // namespace qor
