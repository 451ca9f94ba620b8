#include "arguments.h"

#include <gtest/gtest.h>
#include <vector>

namespace qor::cli {
namespace {

using Args = std::vector<std::string>;

Invocation Make(CommandKind command, std::string file, std::optional<std::string> output = {},
                std::optional<std::string> catalogue = {},
                std::optional<std::int16_t> magazineMax = {})
{
    Invocation invocation{command, std::move(file), std::move(output), {}};
    invocation.overrides = {std::move(catalogue), magazineMax};
    return invocation;
}

TEST(ParseArguments, TakesOptionsBeforeAndAfterTheFile)
{
    const std::vector<std::pair<Args, Invocation>> cases = {
        {{"check", "Atc.ttl"}, Make(CommandKind::Check, "Atc.ttl")},
        {{"--magazine-max", "20", "dump", "Atc.ttl"},
         Make(CommandKind::Dump, "Atc.ttl", {}, {}, 20)},
        {{"dump", "Atc.ttl", "--catalogue", "de.msg", "--magazine-max", "32767"},
         Make(CommandKind::Dump, "Atc.ttl", {}, "de.msg", 32767)},
        {{"normalize", "-o", "out.ttl", "Atc.ttl"},
         Make(CommandKind::Normalize, "Atc.ttl", "out.ttl")},
        {{"normalize", "Atc.ttl", "--output=out.ttl", "--catalogue=de.msg"},
         Make(CommandKind::Normalize, "Atc.ttl", "out.ttl", "de.msg")},
        {{"check", "--", "-odd.ttl"}, Make(CommandKind::Check, "-odd.ttl")},
        {{"catalogue-check", "QORTool.msg"}, Make(CommandKind::CatalogueCheck, "QORTool.msg")},
        {{"nonsense", "--bogus", "--help"}, Invocation{}},
        {{"check", "Atc.ttl", "-h"}, Invocation{}},
    };
    for (const auto &[args, expected] : cases) {
        auto parsed = ParseArguments(args);

        ASSERT_TRUE(parsed) << args[0] << ": " << parsed.error().message;
        EXPECT_EQ(parsed.value(), expected) << args[0] << " " << args[1];
    }
}

TEST(ParseArguments, NamesTheFirstMistakeInOneLine)
{
    const std::vector<std::pair<Args, std::string>> cases = {
        {{}, "no command"},
        {{"list", "Atc.ttl"}, "unknown command 'list'"},
        {{"check"}, "needs a tool list file"},
        {{"--magazine-max", "20", "catalogue-check"}, "needs a catalogue file"},
        {{"check", "a.ttl", "b.ttl"}, "unexpected argument 'b.ttl'"},
        {{"check", "a.ttl", "--verbose"}, "unknown option '--verbose'"},
        {{"check", "-x", "a.ttl"}, "unknown option '-x'"},
        {{"check", "a.ttl", "--magazine-max"}, "needs a value"},
        {{"check", "a.ttl", "--catalogue="}, "needs a file name"},
        {{"check", "a.ttl", "--magazine-max", "0"}, "from 1 to 32767, not '0'"},
        {{"check", "a.ttl", "--magazine-max", "32768"}, "from 1 to 32767"},
        {{"check", "a.ttl", "--magazine-max=12.5"}, "from 1 to 32767"},
        {{"check", "a.ttl", "--magazine-max", "20x"}, "from 1 to 32767"},
        {{"dump", "a.ttl", "-o", "b.ttl"}, "-o is for normalize only"},
        {{"catalogue-check", "x.msg", "--catalogue", "y.msg"}, "neither"},
    };
    for (const auto &[args, fragment] : cases) {
        auto parsed = ParseArguments(args);

        ASSERT_FALSE(parsed) << fragment;
        const std::string line = UsageErrorLine(parsed.error());
        EXPECT_NE(line.find(fragment), std::string::npos) << line;
        EXPECT_TRUE(line.starts_with("ttltool: ")) << line;
        EXPECT_TRUE(line.ends_with(" (try 'ttltool --help')")) << line;
        EXPECT_EQ(line.find('\n'), std::string::npos) << line;
    }
}

} // namespace
} // namespace qor::cli
