#include "catalogue_keys.h"
#include "message_catalogue.h"

#include <gtest/gtest.h>
#include <set>
#include <utility>

namespace qor {
namespace {

// A catalogue that defines each listed key under its own section answers
// every one of them: the list names real sections, holds no key twice and no
// key that a catalogue cannot define.
TEST(CatalogueKeys, AreDistinctAndEachIsAnsweredByACatalogueThatDefinesIt)
{
    std::set<std::pair<std::string_view, std::string>> seen;
    std::string text = "[Config]\r\nVersion=1.70\r\n";
    std::string_view section;
    for (const CatalogueKey &key : CatalogueKeys()) {
        EXPECT_NE(SectionNumber(key.section), 0) << key.section;
        EXPECT_TRUE(seen.insert({key.section, key.key}).second)
            << "listed twice: " << key.section << ' ' << key.key;
        if (key.section != section) {
            section = key.section;
            text.append("[").append(section).append("]\r\n");
        }
        text.append(key.key).append("=").append(key.section).append(" ").append(key.key);
        text.append("\r\n");
    }
    MessageCatalogue catalogue;

    Status loaded = catalogue.LoadFromBytes(text, "generated.msg");

    ASSERT_TRUE(loaded) << loaded.error().message;
    for (const CatalogueKey &key : CatalogueKeys()) {
        EXPECT_FALSE(catalogue.GetText(key.section, key.key).empty())
            << key.section << ' ' << key.key;
    }
}

} // namespace
} // namespace qor
