// Runs the built ttltool as a user would: a copy of the program in a folder of
// its own, with the catalogue beside it as the build puts it, started through
// the shell from that folder so that file names stay short in the output.
#include "catalogue_keys.h"
#include "message_catalogue.h"
#include "temp_dir.h"
#include "text_decoding.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <sys/wait.h>
#include <vector>

#if TTLTOOL_RENDERS
#include <QImage>
#endif

namespace qor::test {
namespace {

namespace fs = std::filesystem;

struct Outcome
{
    int status = -1;
    std::string out;
    std::string err;
};

const std::string RuntimeCatalogue = std::string(QOR_RUNTIME_DIR) + "/QORTool.msg";

class ToolFolder
{
public:
    explicit ToolFolder(bool withCatalogue = true)
    {
        fs::create_directory(dir.file("bin"));
        fs::copy_file(TTLTOOL_PATH, dir.file("bin/ttltool"));
        if (withCatalogue) {
            fs::copy_file(RuntimeCatalogue, dir.file("bin/QORTool.msg"));
        }
    }

    void AddSample(const std::string &name, const std::string &as = {}) const
    {
        dir.write(as.empty() ? name : as, SourceFile("data/samples/" + name));
    }

    Outcome operator()(const std::vector<std::string> &args) const
    {
        std::string command = "cd";
        auto addQuoted = [&command](const std::string &word) {
            command.append(" '").append(std::regex_replace(word, std::regex("'"), "'\\''")) += '\'';
        };
        addQuoted(dir.path());
        command += " && ./bin/ttltool";
        for (const std::string &arg : args) {
            addQuoted(arg);
        }
        command += " >.out 2>.err";
        const int wait = std::system(command.c_str());
        return {WIFEXITED(wait) ? WEXITSTATUS(wait) : -1, dir.read(".out"), dir.read(".err")};
    }

    TempDir dir;
};

// The dump prints one member a line: it is UTF-8 without control characters
// but line ends, its brackets balance, and a line ends in a comma unless a
// bracket opens on it or closes on the next.
void ExpectJsonShape(const std::string &json)
{
    auto count = [&](char c) { return std::count(json.begin(), json.end(), c); };

    EXPECT_TRUE(IsValidUtf8(json));
    EXPECT_TRUE(json.starts_with("{\n") && json.ends_with("}\n")) << json;
    EXPECT_EQ(count('{'), count('}'));
    EXPECT_EQ(count('['), count(']'));
    EXPECT_FALSE(
        std::regex_search(json, std::regex(R"(,\s*[\]}]|[^,{\[]\n\s*["{\[]|[\x00-\x09\x0b-\x1f])")))
        << json;
}

bool Contains(const std::string &text, const std::string &part)
{
    return text.find(part) != std::string::npos;
}

// One slot's object in a dump: from its magazine number to the next one.
std::string SlotText(const std::string &json, int magazineNumber)
{
    const auto begin = json.find("\"MagazineNumber\": " + std::to_string(magazineNumber) + ",");
    if (begin == std::string::npos) {
        return {};
    }
    return json.substr(begin, json.find("\"MagazineNumber\"", begin + 1) - begin);
}

TEST(Ttltool, CheckAndDumpExitWithTheReadersOutcome)
{
    ToolFolder tool;
    tool.AddSample("machining_centre.TTL");
    tool.AddSample("broken.TTL");

    Outcome good = tool({"check", "machining_centre.TTL"});
    Outcome missing = tool({"check", "nothing_here.TTL"});
    Outcome broken = tool({"check", "broken.TTL"});
    Outcome brokenDump = tool({"dump", "broken.TTL"});

    EXPECT_EQ(good.status, 0) << good.err;
    EXPECT_EQ(good.out, "machining_centre.TTL: read, 16 of 100 positions hold a tool\n");
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "nothing_here.TTL: no such file\n");
    for (const Outcome &failed : {broken, brokenDump}) {
        EXPECT_EQ(failed.status, 2);
        EXPECT_EQ(failed.out, "");
        EXPECT_TRUE(failed.err.starts_with("broken.TTL:7: ")) << failed.err;
        EXPECT_TRUE(failed.err.ends_with("\nMAGAZINE03 = FLA 8,30,\"D8 flat\"\n")) << failed.err;
    }
}

TEST(Ttltool, DumpGivesEveryToolAsJsonWithCommentsInUtf8)
{
    ToolFolder tool;
    tool.AddSample("machining_centre.TTL");
    tool.dir.write("comments.TTL", "MAGAZINE01 = FLA/6,20,\"C:\\cam\\a\tb\"\r\n"
                                   "MAGAZINE02 = FLA/6,20,\"\xC3\x98"
                                   "6 UTF-8\"\r\n");

    Outcome dump = tool({"dump", "machining_centre.TTL"});
    Outcome comments = tool({"dump", "comments.TTL"});

    ASSERT_EQ(dump.status, 0) << dump.err;
    ExpectJsonShape(dump.out);
    const std::string &json = dump.out;
    EXPECT_TRUE(Contains(json, R"("InitialMagazine": 1,)"));
    EXPECT_TRUE(Contains(json, R"("ForeignFile": true,)"));
    EXPECT_TRUE(Contains(json, R"("DefaultArborSecDia": [50, 63],)"));
    EXPECT_TRUE(SlotText(json, 5).empty()) << "the empty position 5 is listed";
    const std::string cut = SlotText(json, 3);
    for (const char *field :
         {R"("KindWord": "CUT",)", R"("CornerRad": 0.3,)", R"("Param6": 2,)", R"("Param7": 12,)",
          R"("ToolLength": 18,)", R"("LengthMode": 3,)", R"("Len1": 90,)", R"("Len2": 10,)",
          R"("ArborMode": 3,)", R"("ArborSecFlag": [1, 0, 0],)", R"("ShiftValue": 0.05,)"}) {
        EXPECT_TRUE(Contains(cut, field)) << field << " not in\n" << cut;
    }
    const std::string ball = SlotText(json, 6);
    EXPECT_TRUE(Contains(ball, R"("OptFeedOn": {"A": 1, "V": 1, "U": 0, "D": 0},)")) << ball;
    EXPECT_TRUE(Contains(ball, R"("A": [0, 5, 12, 20, 0,)")) << ball;
    EXPECT_TRUE(Contains(SlotText(json, 10), R"("LimitValues": [40, 45, 50, 55])"));
    // Windows-1252 in the sample, UTF-8 in the dump.
    EXPECT_TRUE(Contains(SlotText(json, 18), "\"ToolComment\": \"\xC3\x98"
                                             "20 x 4 T-slot\""));

    ASSERT_EQ(comments.status, 0) << comments.err;
    ExpectJsonShape(comments.out);
    EXPECT_TRUE(Contains(comments.out, R"("ToolComment": "C:\\cam\\a\tb",)")) << comments.out;
    // UTF-8 bytes in a Windows-1252 file: what the CAM system shows.
    EXPECT_TRUE(Contains(comments.out, "\"ToolComment\": \"\xC3\x83\xCB\x9C"
                                       "6 UTF-8\","));
}

TEST(Ttltool, NormalizeKeepsTheForeignOriginalAndWritesAFileThatReadsBackTheSame)
{
    ToolFolder tool;
    tool.AddSample("machining_centre.TTL", "Atc.TTL");
    const std::string original = tool.dir.read("Atc.TTL");
    std::string before = tool({"dump", "Atc.TTL"}).out;
    before.replace(before.find("\"ForeignFile\": true"), 19, "\"ForeignFile\": false");

    Outcome first = tool({"normalize", "Atc.TTL"});
    const std::string written = tool.dir.read("Atc.TTL");
    Outcome after = tool({"dump", "Atc.TTL"});
    Outcome second = tool({"normalize", "Atc.TTL"});

    ASSERT_EQ(first.status, 0) << first.err;
    EXPECT_TRUE(Contains(first.out, "Atc_org1.TTL")) << first.out;
    EXPECT_EQ(tool.dir.read("Atc_org1.TTL"), original);
    EXPECT_EQ(after.out, before);
    // Now the file is our own: no second backup, and the same bytes again.
    EXPECT_EQ(second.status, 0) << second.err;
    EXPECT_FALSE(fs::exists(tool.dir.file("Atc_org2.TTL")));
    EXPECT_EQ(tool.dir.read("Atc.TTL"), written);
}

TEST(Ttltool, NormalizeToAnOutputFileLeavesTheInputAloneAndFailuresWriteNothing)
{
    ToolFolder tool;
    tool.AddSample("machining_centre.TTL", "in.TTL");
    tool.AddSample("machining_centre.TTL", "same.TTL");
    tool.AddSample("broken.TTL");
    tool.dir.write("out.TTL", "an older output\r\n");
    const std::string in = tool.dir.read("in.TTL");
    const std::string broken = tool.dir.read("broken.TTL");
    MessageCatalogue texts;
    ASSERT_TRUE(texts.Load(RuntimeCatalogue));
    auto msg = [&texts](const char *key) { return texts.GetText("MSG", key); };

    Outcome unread = tool({"normalize", "in.TTL", "-o", "out.TTL"});
    const std::string outBefore = tool.dir.read("out.TTL");
    Outcome toOutput = tool({"normalize", "in.TTL", "-o", "out.TTL", "--overwrite"});
    Outcome sameFile = tool({"normalize", "same.TTL", "-o", "./same.TTL"});
    Outcome unreadable = tool({"normalize", "broken.TTL"});
    Outcome unwritable = tool({"normalize", "in.TTL", "-o", "no/such/folder/x.TTL"});

    EXPECT_EQ(unread.status, 4);
    EXPECT_EQ(unread.err,
              "out.TTL: " + msg("MSG26-1") + " " + msg("MSG26-5") + " " + msg("MSG26-6") + "\n");
    EXPECT_EQ(unread.out, "");
    EXPECT_EQ(outBefore, "an older output\r\n");
    // The input itself under another name: written, with its backup.
    EXPECT_EQ(sameFile.status, 0) << sameFile.err;
    EXPECT_TRUE(fs::exists(tool.dir.file("same_org1.TTL")));
    ASSERT_EQ(toOutput.status, 0) << toOutput.err;
    EXPECT_EQ(tool.dir.read("in.TTL"), in);
    EXPECT_FALSE(fs::exists(tool.dir.file("in_org1.TTL")));
    EXPECT_FALSE(fs::exists(tool.dir.file("out_org1.TTL")));
    EXPECT_EQ(SlotText(tool({"dump", "out.TTL"}).out, 18),
              SlotText(tool({"dump", "in.TTL"}).out, 18));
    EXPECT_EQ(unreadable.status, 2);
    EXPECT_EQ(tool.dir.read("broken.TTL"), broken);
    EXPECT_FALSE(fs::exists(tool.dir.file("broken_org1.TTL")));
    EXPECT_EQ(unwritable.status, 3);
    EXPECT_FALSE(unwritable.err.empty());
}

TEST(Ttltool, CsvExportImportGivesTheSameFileAndDiffSaysWhatChanged)
{
    ToolFolder tool;
    tool.AddSample("machining_centre.TTL", "in.TTL");
    ASSERT_EQ(tool({"normalize", "in.TTL", "-o", "Atc.TTL"}).status, 0);
    const std::string atc = tool.dir.read("Atc.TTL");

    Outcome exported = tool({"export-csv", "Atc.TTL", "-o", "atc.csv"});
    std::string csv = tool.dir.read("atc.csv");
    Outcome unasked = tool({"import-csv", "atc.csv", "-o", "Atc.TTL"});
    Outcome imported = tool({"import-csv", "atc.csv", "-o", "Atc.TTL", "--overwrite"});
    const std::string back = tool.dir.read("Atc.TTL");
    Outcome same = tool({"diff", "in.TTL", "Atc.TTL"});
    tool.dir.write("edit.csv", std::regex_replace(csv, std::regex("\r\n1,CUT,"), "\r\n99,CUT,"));
    tool.dir.write("moved.TTL", atc); // its long tool names then pass unchanged
    Outcome moved = tool({"import-csv", "edit.csv", "-o", "moved.TTL", "--overwrite"});
    Outcome changed = tool({"diff", "Atc.TTL", "moved.TTL"});
    tool.dir.write("bad.csv", csv + "99,BAL,,-3\r\n");
    Outcome refused = tool({"import-csv", "bad.csv", "-o", "Atc.TTL", "--overwrite"});
    Outcome missing = tool({"diff", "Atc.TTL", "nothing.TTL"});

    ASSERT_EQ(exported.status, 0) << exported.err;
    EXPECT_TRUE(csv.starts_with("\xEF\xBB\xBFMagazine,Kind,Name,Diameter,")) << csv;
    EXPECT_EQ(unasked.status, 4);
    ASSERT_EQ(imported.status, 0) << imported.err;
    EXPECT_EQ(back, atc);
    EXPECT_EQ(same.status, 0) << same.err;
    EXPECT_EQ(same.out, "no differences\n");
    ASSERT_EQ(moved.status, 0) << moved.err;
    EXPECT_EQ(changed.status, 1) << changed.err;
    EXPECT_TRUE(changed.out.starts_with("MAGAZINE01: removed CUT/10,0.5,")) << changed.out;
    EXPECT_TRUE(Contains(changed.out, "\nMAGAZINE99: added CUT/10,0.5,")) << changed.out;
    EXPECT_EQ(refused.status, 2);
    EXPECT_TRUE(refused.err.starts_with("bad.csv: Row 19, column \"Diameter\": ")) << refused.err;
    EXPECT_EQ(tool.dir.read("Atc.TTL"), atc);
    EXPECT_EQ(missing.status, 2);
}

TEST(Ttltool, CatalogueCheckListsEmptyTextsAndNeedsNoCatalogueBesideTheProgram)
{
    ToolFolder tool(false);
    // Entry numbers must stay below the file's line count: hence the padding.
    tool.dir.write("small.msg", "[Config]\r\nVersion=1.70\r\n[MSG]\r\nMSG1=Enter a number.\r\n"
                                "[frmEditor]\r\nText51=Open\r\n" +
                                    std::string(60, '\n'));
    tool.dir.write("empty.msg", "");

    Outcome shipped = tool({"catalogue-check", std::string(QOR_SOURCE_DIR) + "/data/QORTool.msg"});
    Outcome small = tool({"catalogue-check", "small.msg"});
    Outcome empty = tool({"catalogue-check", "empty.msg"});

    EXPECT_EQ(shipped.status, 0) << "empty texts:\n" << shipped.out << shipped.err;
    EXPECT_EQ(shipped.out, "Version: 1.70\n");
    EXPECT_EQ(small.status, 1) << small.err;
    EXPECT_TRUE(small.out.starts_with("Version: 1.70\n")) << small.out;
    for (const char *line : {"\nMSG MSG2\n", "\nfrmEditor Text51-2\n", "\nString Str80\n"}) {
        EXPECT_TRUE(Contains(small.out, line)) << line;
    }
    EXPECT_FALSE(Contains(small.out, "\nMSG MSG1\n"));
    EXPECT_FALSE(Contains(small.out, "\nfrmEditor Text51-1\n")) << "Text51-1 is Text51";
    EXPECT_EQ(std::count(small.out.begin(), small.out.end(), '\n'),
              static_cast<long>(CatalogueKeys().size()) - 1);
    EXPECT_EQ(empty.status, 2);
    EXPECT_FALSE(empty.err.empty());
}

TEST(Ttltool, CatalogueCheckWarnsOfATitleTheConfiguredCodePageCannotHold)
{
    struct Case
    {
        const char *settings; // "" for no settings file: 1252
        bool shiftJis;        // the catalogue in Shift-JIS instead of UTF-8
        bool warns;
    };
    const Case cases[] = {{"", false, true},
                          {"[Files]\r\nCode Page=932\r\n", false, false},
                          {"[Files]\r\nCode Page=932\r\n", true, false}};
    const std::string shipped = SourceFile("data/QORTool.msg");
    const std::size_t title = shipped.find("Str80=") + 6;
    const std::string ascii = "ATC ";
    MessageCatalogue texts;
    ASSERT_TRUE(texts.Load(RuntimeCatalogue));

    for (const Case &c : cases) {
        ToolFolder tool;
        if (*c.settings != '\0') {
            tool.dir.write("bin/QorTool.INI", c.settings);
        }
        // "ツール" after "ATC "
        const std::string name =
            c.shiftJis ? "\x83\x63\x81\x5B\x83\x8B" : "\xE3\x83\x84\xE3\x83\xBC\xE3\x83\xAB";
        std::string catalogue = shipped;
        catalogue.replace(title, shipped.find('\r', title) - title, ascii + name);
        tool.dir.write("ja.msg", catalogue);

        Outcome check = tool({"catalogue-check", "ja.msg"});

        EXPECT_EQ(check.status, 0) << check.err;
        const std::string warning =
            c.warns ? "ja.msg: warning: Str80 \"ATC \xE3\x83\x84\xE3\x83\xBC\xE3\x83\xAB\": " +
                          texts.GetText("MSG", "MSG27-4") +
                          " 1252: \"\xE3\x83\x84\" (U+30C4), \"\xE3\x83\xBC\" (U+30FC), "
                          "\"\xE3\x83\xAB\" (U+30EB)\n"
                    : "";
        EXPECT_EQ(check.err, warning) << c.settings;
        // A check changes nothing, the settings included.
        EXPECT_EQ(fs::exists(tool.dir.file("bin/QorTool.INI")), *c.settings != '\0');
    }
}

TEST(Ttltool, ReadsSettingsAndCatalogueBesideTheProgramUnlessTheCommandLineSaysOtherwise)
{
    ToolFolder tool;
    ToolFolder bare(false);
    tool.AddSample("machining_centre.TTL");
    bare.AddSample("machining_centre.TTL");
    tool.dir.write("bin/QorTool.INI", "[Config]\r\nMagazine Max=12\r\n");

    Outcome fromSettings = tool({"dump", "machining_centre.TTL"});
    Outcome overridden = tool({"--magazine-max", "5", "check", "machining_centre.TTL"});
    const std::string file = tool.dir.read("machining_centre.TTL");
    Outcome refused = tool({"normalize", "machining_centre.TTL"});
    Outcome noCatalogue = bare({"check", "machining_centre.TTL"});
    Outcome namedCatalogue =
        bare({"check", "machining_centre.TTL", "--catalogue", RuntimeCatalogue});

    ASSERT_EQ(fromSettings.status, 0) << fromSettings.err;
    EXPECT_TRUE(Contains(fromSettings.out, R"("MagazineMax": 12,)"));
    EXPECT_FALSE(SlotText(fromSettings.out, 12).empty());
    EXPECT_TRUE(SlotText(fromSettings.out, 13).empty()) << "position 13 lies beyond the table";
    EXPECT_EQ(overridden.out, "machining_centre.TTL: read, 4 of 5 positions hold a tool\n");
    EXPECT_EQ(overridden.err, "machining_centre.TTL: magazine positions up to 20 lie beyond the "
                              "table of 5 positions; use --magazine-max to keep them\n");
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(Contains(refused.err, "up to 20 lie beyond the table of 12 ")) << refused.err;
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(tool.dir.read("machining_centre.TTL"), file);
    EXPECT_EQ(noCatalogue.status, 2);
    EXPECT_TRUE(Contains(noCatalogue.err, "QORTool.msg\" is not found.")) << noCatalogue.err;
    EXPECT_EQ(namedCatalogue.status, 0) << namedCatalogue.err;
}

#if TTLTOOL_RENDERS

// The spot drill of the showcase in a 400 × 300 picture: white, its outline antialiased, and the
// red SHIFT marker on the axis 2.5 mm above the tip, which the fitted scale puts 2.5 % of the
// height above the bottom edge.
TEST(Ttltool, RenderDrawsTheToolAndItsShiftMarkerOnWhite)
{
    ToolFolder tool;
    tool.AddSample("drawing_showcase.TTL");

    Outcome png = tool(
        {"render", "drawing_showcase.TTL", "--slot", "2", "--size", "400x300", "-o", "spot.png"});
    Outcome svg = tool({"render", "drawing_showcase.TTL", "--slot=2", "-o", "spot.svg"});
    tool.dir.write("markup.TTL", "MAGAZINE01 = FLA/6,20,\"<D6> & \xD8 fast\"\r\n");
    Outcome markup = tool({"render", "markup.TTL", "--slot", "1", "--format=svg", "-o", "m"});

    ASSERT_EQ(png.status, 0) << png.err;
    EXPECT_EQ(png.out, "wrote spot.png\n");
    const QImage image(QString::fromStdString(tool.dir.file("spot.png")));
    ASSERT_EQ(image.size(), QSize(400, 300));
    int ink = 0;
    int grey = 0;
    double redX = 0.0;
    double redY = 0.0;
    int red = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            if (c.red() > 200 && c.green() < 100 && c.blue() < 100) {
                redX += x;
                redY += y;
                ++red;
            } else if (c.lightness() < 100) {
                ++ink;
            } else if (c.lightness() < 250) {
                ++grey;
            }
        }
    }
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(399, 299), QColor(Qt::white));
    EXPECT_GT(ink, 1000);
    EXPECT_GT(grey, 100) << "not antialiased";
    ASSERT_GT(red, 0) << "no SHIFT marker";
    // Tool and arbor are 70 + 35 + 25 + 16 = 146 mm long, drawn over 95 % of the height.
    EXPECT_NEAR(redX / red, 199.5, 1.0);
    EXPECT_NEAR(redY / red, 300.0 * (0.975 - 0.95 * 2.5 / 146.0), 1.0);

    ASSERT_EQ(svg.status, 0) << svg.err;
    const std::string text = tool.dir.read("spot.svg");
    EXPECT_TRUE(Contains(text, "<svg")) << text;
    EXPECT_TRUE(Contains(text, R"(viewBox="0 0 800 600")")) << text;
    EXPECT_TRUE(Contains(text, "<title>CUT D10 spot drill 90deg</title>")) << text;
    ASSERT_EQ(markup.status, 0) << markup.err;
    EXPECT_TRUE(Contains(tool.dir.read("m"), "<title>FLA &lt;D6&gt; &amp; \xC3\x98 fast</title>"));
}

TEST(Ttltool, RenderAllDrawsEveryToolAndRefusesEmptyPositionsAndUnwritableFiles)
{
    ToolFolder tool;
    tool.AddSample("drawing_showcase.TTL", "Atc.TTL");
    tool.AddSample("machining_centre.TTL");

    Outcome all = tool({"render", "Atc.TTL", "--all", "-o", "pictures/new"});
    Outcome svgs = tool({"render", "machining_centre.TTL", "--all", "--format", "svg", "-o", "."});
    Outcome empty = tool({"render", "machining_centre.TTL", "--slot", "5", "-o", "five.png"});
    Outcome beyond = tool({"render", "Atc.TTL", "--slot", "101", "-o", "far.png"});
    Outcome unwritable = tool({"render", "Atc.TTL", "--slot", "1", "-o", "no/such/x.png"});
    Outcome inTheWay = tool({"render", "Atc.TTL", "--all", "-o", "Atc.TTL"});

    ASSERT_EQ(all.status, 0) << all.err;
    std::vector<std::string> names;
    for (const auto &entry : fs::directory_iterator(tool.dir.file("pictures/new"))) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    ASSERT_EQ(names.size(), 14u);
    EXPECT_EQ(names.front(), "MAG01_CUT.png");
    EXPECT_EQ(names.back(), "MAG14_T-T.png");
    EXPECT_EQ(QImage(QString::fromStdString(tool.dir.file("pictures/new/MAG09_KEG.png"))).size(),
              QSize(800, 600));
    EXPECT_EQ(svgs.status, 0) << svgs.err;
    EXPECT_TRUE(fs::exists(tool.dir.file("MAG18_T-T.svg")));
    EXPECT_FALSE(fs::exists(tool.dir.file("MAG05_CUT.svg")));

    EXPECT_EQ(empty.status, 1);
    EXPECT_EQ(empty.err, "machining_centre.TTL: magazine 5 holds no tool\n");
    EXPECT_EQ(beyond.status, 1);
    EXPECT_EQ(beyond.err, "Atc.TTL: magazine 101 lies beyond the table of 100 positions\n");
    EXPECT_FALSE(fs::exists(tool.dir.file("five.png")) || fs::exists(tool.dir.file("far.png")));
    for (const Outcome &failed : {unwritable, inTheWay}) {
        EXPECT_EQ(failed.status, 3);
        EXPECT_TRUE(failed.err.starts_with("Cannot ")) << failed.err;
        EXPECT_EQ(std::count(failed.err.begin(), failed.err.end(), '\n'), 1) << failed.err;
    }
}

#else

TEST(Ttltool, RenderSaysItNeedsQt)
{
    ToolFolder tool;
    tool.AddSample("drawing_showcase.TTL");

    Outcome render = tool({"render", "drawing_showcase.TTL", "--slot", "1", "-o", "one.png"});

    EXPECT_EQ(render.status, 64);
    EXPECT_TRUE(Contains(render.err, "built without Qt")) << render.err;
    EXPECT_FALSE(fs::exists(tool.dir.file("one.png")));
}

#endif

TEST(Ttltool, HelpShowsEveryCommandAndOptionAndAWrongCommandLineExits64)
{
    ToolFolder tool;

    Outcome help = tool({"--help"});
    const std::vector<Outcome> mistakes = {tool({}), tool({"dump", "a.TTL", "b.TTL"})};

    EXPECT_EQ(help.status, 0);
    for (const char *word : {"check FILE", "dump FILE", "normalize FILE", "catalogue-check FILE",
                             "render FILE", "export-csv FILE", "import-csv CSV", "diff FILE1 FILE2",
                             "--catalogue FILE", "--magazine-max N", "-o, --output OUT", "--slot N",
                             "--all", "--fixed", "--size WxH", "--format png|svg", "--overwrite"}) {
        EXPECT_TRUE(Contains(help.out, word)) << word;
    }
    for (const Outcome &mistake : mistakes) {
        EXPECT_EQ(mistake.status, 64);
        EXPECT_TRUE(mistake.err.starts_with("ttltool: ")) << mistake.err;
        EXPECT_TRUE(mistake.err.ends_with(" (try 'ttltool --help')\n")) << mistake.err;
        EXPECT_EQ(std::count(mistake.err.begin(), mistake.err.end(), '\n'), 1) << mistake.err;
    }
}

} // namespace
} // namespace qor::test
