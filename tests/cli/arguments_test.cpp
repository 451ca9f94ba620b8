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
    Invocation invocation;
    invocation.command = command;
    invocation.file = std::move(file);
    invocation.output = std::move(output);
    invocation.overrides = {std::move(catalogue), magazineMax};
    return invocation;
}

Invocation MakeRender(std::string output, RenderOptions render)
{
    Invocation invocation = Make(CommandKind::Render, "Atc.ttl", std::move(output));
    invocation.render = render;
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
        {{"normalize", "--overwrite", "Atc.ttl", "-o", "out.ttl"},
         [] {
             Invocation overwriting = Make(CommandKind::Normalize, "Atc.ttl", "out.ttl");
             overwriting.overwrite = true;
             return overwriting;
         }()},
        {{"check", "--", "-odd.ttl"}, Make(CommandKind::Check, "-odd.ttl")},
        {{"sheet", "Atc.ttl", "-o", "s.pdf"}, Make(CommandKind::Sheet, "Atc.ttl", "s.pdf")},
        {{"sheet", "--paper=letter", "Atc.ttl", "-o", "s.pdf"},
         [] {
             Invocation letter = Make(CommandKind::Sheet, "Atc.ttl", "s.pdf");
             letter.paper = PaperSize::Letter;
             return letter;
         }()},
        {{"export-csv", "Atc.ttl"}, Make(CommandKind::ExportCsv, "Atc.ttl")},
        {{"export-csv", "-o", "a.csv", "Atc.ttl", "--magazine-max=20"},
         Make(CommandKind::ExportCsv, "Atc.ttl", "a.csv", {}, 20)},
        {{"import-csv", "a.csv", "--overwrite", "--output=Atc.ttl"},
         [] {
             Invocation importing = Make(CommandKind::ImportCsv, "a.csv", "Atc.ttl");
             importing.overwrite = true;
             return importing;
         }()},
        {{"--catalogue", "de.msg", "diff", "a.ttl", "b.ttl"},
         [] {
             Invocation diff = Make(CommandKind::Diff, "a.ttl", {}, "de.msg");
             diff.secondFile = "b.ttl";
             return diff;
         }()},
        {{"catalogue-check", "QORTool.msg"}, Make(CommandKind::CatalogueCheck, "QORTool.msg")},
        {{"render", "Atc.ttl", "--slot", "3", "-o", "m3.png"},
         MakeRender("m3.png", {.magazine = 3})},
        {{"render", "--slot=32767", "Atc.ttl", "-o", "dir.svg/m.Svg"},
         MakeRender("dir.svg/m.Svg", {.magazine = 32767, .format = ImageFormat::Svg})},
        {{"render", "Atc.ttl", "--slot", "1", "--format", "png", "-o", "m.svg"},
         MakeRender("m.svg", {.magazine = 1})},
        {{"render", "--all", "Atc.ttl", "-o", "pictures", "--fixed", "--size=8192X1", "--format",
          "SVG"},
         MakeRender("pictures", {.magazine = std::nullopt,
                                 .all = true,
                                 .fixedScale = true,
                                 .width = 8192,
                                 .height = 1,
                                 .format = ImageFormat::Svg})},
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
        {{"normalize", std::string("Atc.TTL\0\x02", 9)}, "holds a NUL character"},
        {{"check", "a.ttl", "--verbose"}, "unknown option '--verbose'"},
        {{"check", "-x", "a.ttl"}, "unknown option '-x'"},
        {{"check", "a.ttl", "--magazine-max"}, "needs a value"},
        {{"check", "a.ttl", "--catalogue="}, "needs a file name"},
        {{"check", "a.ttl", "--magazine-max", "0"}, "from 1 to 32767, not '0'"},
        {{"check", "a.ttl", "--magazine-max", "32768"}, "from 1 to 32767"},
        {{"check", "a.ttl", "--magazine-max=12.5"}, "from 1 to 32767"},
        {{"check", "a.ttl", "--magazine-max", "20x"}, "from 1 to 32767"},
        {{"dump", "a.ttl", "-o", "b.ttl"}, "-o is for normalize, render, sheet, export-csv and"},
        {{"sheet", "a.ttl"}, "sheet needs -o OUT.pdf"},
        {{"sheet", "a.ttl", "-o", "s.pdf", "--paper", "a3"}, "a4 or letter, not 'a3'"},
        {{"check", "a.ttl", "--paper", "a4"}, "--paper is for sheet only"},
        {{"dump", "a.ttl", "--all"}, "--all is for render only"},
        {{"check", "a.ttl", "--overwrite"}, "--overwrite is for normalize and import-csv only"},
        {{"export-csv", "a.ttl", "--overwrite"}, "--overwrite is for normalize and import-csv"},
        {{"import-csv", "a.csv"}, "import-csv needs -o FILE"},
        {{"import-csv", "-o", "a.ttl"}, "import-csv needs a CSV file"},
        {{"diff", "a.ttl"}, "diff needs two tool list files"},
        {{"diff", "a.ttl", "b.ttl", "c.ttl"}, "unexpected argument 'c.ttl'"},
        {{"diff", "a.ttl", "b.ttl", "-o", "d"}, "-o is for normalize"},
        {{"check", "a.ttl", "--size=10x10", "--fixed"}, "--size is for render only"},
        {{"render", "a.ttl", "-o", "m.png"}, "render needs --slot N or --all"},
        {{"render", "a.ttl", "--all", "--slot", "2", "-o", "d"}, "either --slot or --all"},
        {{"render", "a.ttl", "--slot", "2"}, "render needs -o OUT"},
        {{"render", "a.ttl", "--all"}, "render --all needs -o FOLDER"},
        {{"render", "a.ttl", "--slot", "0", "-o", "m.png"}, "from 1 to 32767, not '0'"},
        {{"render", "a.ttl", "--slot", "2", "-o", "m.jpg"}, "format of 'm.jpg'"},
        {{"render", "a.ttl", "--slot", "2", "-o", "m.png/x"}, "format of 'm.png/x'"},
        {{"render", "a.ttl", "--all", "-o", "d", "--format", "gif"}, "png or svg, not 'gif'"},
        {{"render", "a.ttl", "--all", "-o", "d", "--size", "800"}, "WIDTHxHEIGHT"},
        {{"render", "a.ttl", "--all", "-o", "d", "--size", "0x600"}, "not '0x600'"},
        {{"render", "a.ttl", "--all", "-o", "d", "--size", "800x8193"}, "each from 1 to 8192"},
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
