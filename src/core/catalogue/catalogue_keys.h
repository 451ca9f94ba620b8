#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qor {

// One text the program asks the catalogue for.
struct CatalogueKey
{
    std::string_view section; // as the windows spell it: "frmList", "MSG", "String" ...
    std::string key;          // "Text12", "Text51-2", "MSG15-3", "Str80" ...

    bool operator==(const CatalogueKey &) const = default;
};

// Every (section, key) that some window, the start-up or the tool list file
// writer asks for, grouped by section.
// A catalogue that defines all of them leaves no caption or message empty.
const std::vector<CatalogueKey> &CatalogueKeys();

} // namespace qor
