// ttltool sheet as a user runs it, its PDF read back with poppler's pdfinfo and pdftotext.
#include "temp_dir.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <sys/wait.h>

namespace qor::test {
namespace {

namespace fs = std::filesystem;

// Runs a shell command in `dir`; its standard output, or "" when it fails.
std::string Shell(const TempDir &dir, const std::string &command, int *status = nullptr)
{
    const int wait =
        std::system(("cd '" + dir.path() + "' && " + command + " >.out 2>.err").c_str());
    const int code = WIFEXITED(wait) ? WEXITSTATUS(wait) : -1;
    if (status != nullptr) {
        *status = code;
    }
    return code == 0 || status != nullptr ? dir.read(".out") : std::string();
}

struct SheetCase
{
    const char *what;
    std::string table;        // the tool list file
    std::string options;      // more of ttltool's command line
    std::string pageSize;     // as pdfinfo gives it
    std::string pageRegex;    // the page number in the header; $P the page, $N the count
    std::string headingRegex; // a tool block's heading; $M its magazine number
    int tools;
};

void PrintTo(const SheetCase &c, std::ostream *out)
{
    *out << c.what;
}

std::string LargeTable(int tools)
{
    std::string text = "INI = MAGAZINE01\r\n";
    const char *kinds[] = {"FLA", "BAL", "KEG"};
    for (int n = 1; n <= tools; ++n) {
        text += "MAGAZINE" + std::to_string(n) + " = " + kinds[n % 3] + "/" +
                std::to_string(2 + n % 20) + "," + std::to_string(n) + ",\"T" + std::to_string(n) +
                " cutter\"\r\n";
        if (n % 4 == 0) {
            text += "LENGTH/" + std::to_string(n + 40) + "\r\nOPT-F(A)/0,100,10,80,20\r\n";
        }
    }
    return text;
}

std::string Replace(std::string text, std::string_view place, const std::string &value)
{
    for (auto at = text.find(place); at != std::string::npos; at = text.find(place, at)) {
        text.replace(at, place.size(), value);
        at += value.size();
    }
    return text;
}

long Count(const std::string &text, const std::string &pattern)
{
    const std::regex regex(pattern);
    return std::distance(std::sregex_iterator(text.begin(), text.end(), regex),
                         std::sregex_iterator());
}

class TtltoolSheet : public testing::TestWithParam<SheetCase>
{};

TEST_P(TtltoolSheet, EveryToolOnItsOwnPageWithTheHeaderOnEveryPage)
{
    const SheetCase &c = GetParam();
    TempDir dir;
    fs::create_directory(dir.file("bin"));
    fs::copy_file(TTLTOOL_PATH, dir.file("bin/ttltool"));
    fs::copy_file(std::string(QOR_RUNTIME_DIR) + "/QORTool.msg", dir.file("bin/QORTool.msg"));
    dir.write("QORTool_ja.msg", SourceFile("data/QORTool_ja.msg"));
    dir.write("Atc.ttl", c.table);
    int status = -1;

    const std::string out =
        Shell(dir, "./bin/ttltool sheet Atc.ttl -o sheet.pdf " + c.options, &status);

    ASSERT_EQ(status, 0) << dir.read(".err");
    EXPECT_EQ(out, "wrote sheet.pdf\n");
    const std::string info = Shell(dir, "pdfinfo sheet.pdf");
    std::smatch pages;
    ASSERT_TRUE(std::regex_search(info, pages, std::regex("Pages:\\s+(\\d+)"))) << info;
    const int pageCount = std::stoi(pages[1]);
    EXPECT_TRUE(info.find("Page size:       " + c.pageSize) != std::string::npos) << info;

    // pdftotext ends each page with a form feed.
    const std::string all = Shell(dir, "pdftotext -enc UTF-8 sheet.pdf -");
    ASSERT_EQ(std::count(all.begin(), all.end(), '\f'), pageCount);
    int blocks = 0;
    std::size_t pageStart = 0;
    for (int page = 1; page <= pageCount; ++page) {
        const std::size_t pageEnd = all.find('\f', pageStart);
        const std::string text = all.substr(pageStart, pageEnd - pageStart);
        pageStart = pageEnd + 1;
        const std::string number = std::to_string(page);
        SCOPED_TRACE("page " + number);
        EXPECT_NE(text.find("Atc.ttl"), std::string::npos) << text;
        EXPECT_EQ(Count(text, Replace(Replace(c.pageRegex, "$P", number), "$N",
                                      std::to_string(pageCount))),
                  1)
            << text;
        // A block starts with its heading and ends with the scale under its picture: as many of
        // each on every page, unless a block runs over a page end.
        const long headings = Count(text, Replace(c.headingRegex, "$M", "\\d+"));
        EXPECT_EQ(headings, Count(text, "(Scale|縮尺) \\d+:\\d+")) << text;
        blocks += static_cast<int>(headings);
    }
    EXPECT_EQ(blocks, c.tools);

    // Each tool's row in the table (its number and kind) and its name, in the table and its block.
    const std::regex toolLine("MAGAZINE(\\d+) = ([A-Z-]+)/[^\"]*\"([ -~]*)\"");
    int tools = 0;
    for (auto it = std::sregex_iterator(c.table.begin(), c.table.end(), toolLine);
         it != std::sregex_iterator(); ++it, ++tools) {
        const std::string magazine = std::to_string(std::stoi((*it)[1]));
        const std::string name = (*it)[3];
        EXPECT_NE(all.find("\n" + magazine + " " + std::string((*it)[2]) + "\n"), std::string::npos)
            << magazine;
        const auto first = all.find(name);
        ASSERT_NE(first, std::string::npos) << name;
        EXPECT_NE(all.find(name, first + 1), std::string::npos) << name << " has no block";
    }
    // The sample has a tool without a name and one whose name is not ASCII.
    EXPECT_GE(tools, c.tools - 2);
}

const std::string Small = SourceFile("data/samples/machining_centre.TTL");

INSTANTIATE_TEST_SUITE_P(
    Tables, TtltoolSheet,
    testing::Values(SheetCase{"small", Small, "", "595 x 842 pts (A4)", "Page $P of $N",
                              "Magazine $M\\b", 16},
                    SheetCase{"japanese", Small, "--catalogue QORTool_ja.msg --paper a4",
                              "595 x 842 pts (A4)", "$P / $N ページ", "マガジン $M\\b", 16},
                    SheetCase{"large", LargeTable(500), "--magazine-max 500 --paper letter",
                              "612 x 792 pts (letter)", "Page $P of $N", "Magazine $M\\b", 500}),
    [](const testing::TestParamInfo<SheetCase> &info) { return std::string(info.param.what); });

} // namespace
} // namespace qor::test
