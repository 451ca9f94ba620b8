#include "message_catalogue.h"
#include "text_decoding.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    std::string_view bytes(reinterpret_cast<const char *>(data), size);
    qor::MessageCatalogue catalogue;
    if (!catalogue.LoadFromBytes(bytes, "fuzz").ok()) {
        return 0;
    }
    constexpr std::string_view sections[] = {"frmList", "frmEditor", "MSG", "String", "frmLimit"};
    constexpr std::string_view keys[] = {"Text0", "Text1",  "Text1-2", "Text2-12", "Text12-1",
                                         "MSG1",  "MSG2-2", "Str0",    "Str5-2",   "text1--2"};
    for (std::string_view section : sections) {
        for (std::string_view key : keys) {
            // Every text is a piece of the decoded file, so it must be UTF-8.
            if (!qor::IsValidUtf8(catalogue.GetText(section, key))) {
                std::abort();
            }
        }
    }
    return 0;
}
