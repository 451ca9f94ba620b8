#include "common.h"
#include "profile_file.h"
#include "temp_dir.h"

#include <gtest/gtest.h>

namespace qor {
namespace {

TEST(ProfileRead, FindsKeysWithoutRegardToCaseAndTrimsAndUnquotes)
{
    const std::string text = "; settings\r\n"
                             "[Config]\r\n"
                             "  Magazine Max =  20  \r\n"
                             "Name=\"  quoted  \"\r\n"
                             "Single='x'\r\n"
                             "[Files]\r\n"
                             "TTL File=C:\\HOLBENMILL\\Atc.ttl\r\n";

    EXPECT_EQ(FindProfileValue(text, "config", "MAGAZINE MAX"), "20");
    EXPECT_EQ(FindProfileValue(text, "Config", "Name"), "  quoted  ");
    EXPECT_EQ(FindProfileValue(text, "Config", "Single"), "x");
    EXPECT_EQ(FindProfileValue(text, "FILES", "ttl file"), "C:\\HOLBENMILL\\Atc.ttl");
    EXPECT_EQ(FindProfileValue(text, "Files", "Magazine Max"), "");
    EXPECT_EQ(FindProfileValue(text, "Exe", "Text Editer"), "");
}

TEST(ProfileRead, ToleratesJunkDuplicatesLongValuesAndNoFinalLineBreak)
{
    const std::string longValue(300, 'v');
    const std::string text = "garbage before any section\n"
                             "[Config]\n"
                             "key without equals\n"
                             "\x01\x02 binary \xff\n"
                             "A=first\n"
                             "a=second\n"
                             "Long=" +
                             longValue +
                             "\n"
                             "[config]\n"
                             "B=in the duplicate section\n"
                             "Last=no line break";

    EXPECT_EQ(FindProfileValue(text, "Config", "A"), "first");
    EXPECT_EQ(FindProfileValue(text, "Config", "Long"), std::string(254, 'v'));
    EXPECT_EQ(FindProfileValue(text, "Config", "B"), "");
    EXPECT_EQ(FindProfileValue(text, "Config", "Last"), "");
    EXPECT_EQ(FindProfileValue("[S]\nLast=no line break", "S", "Last"), "no line break");
    EXPECT_EQ(FindProfileValue("\xEF\xBB\xBF[Config]\r\nVersion=1.70\r\n", "Config", "Version"),
              "1.70");
}

TEST(ProfileWrite, ReplacesInPlaceAndKeepsEveryOtherLine)
{
    const std::string text = "; my comment\r\n[Config]\r\nA=1\r\nB=2\r\n\r\n[Files]\r\nX=y\r\n";

    EXPECT_EQ(SetProfileValue(text, "config", "a", "9"),
              "; my comment\r\n[Config]\r\na=9\r\nB=2\r\n\r\n[Files]\r\nX=y\r\n");
    EXPECT_EQ(SetProfileValue(text, "Config", "C", "3"),
              "; my comment\r\n[Config]\r\nA=1\r\nB=2\r\nC=3\r\n\r\n[Files]\r\nX=y\r\n");
    EXPECT_EQ(SetProfileValue(text, "Exe", "Text Editer", "Notepad.exe"),
              text + "[Exe]\r\nText Editer=Notepad.exe\r\n");
    EXPECT_EQ(SetProfileValue("", "Config", "A", "1"), "[Config]\r\nA=1\r\n");
    EXPECT_EQ(SetProfileValue("[Config]\nA=1", "Config", "B", "2"), "[Config]\nA=1\r\nB=2\r\n");
}

TEST(ProfileFile, CreatesTheFileAndReadsBackWhatWasWritten)
{
    test::TempDir dir;
    const std::string ini = dir.file("QorTool.INI");

    EXPECT_TRUE(WriteProfileString(ini, "Config", "Magazine Max", "100"));
    EXPECT_TRUE(WriteProfileString(ini, "Files", "Auto Read", "1"));
    EXPECT_TRUE(WriteProfileString(ini, "Config", "Magazine Max", "20"));

    EXPECT_EQ(ReadProfileString(ini, "CONFIG", "magazine max"), "20");
    EXPECT_EQ(dir.read("QorTool.INI"), "[Config]\r\nMagazine Max=20\r\n[Files]\r\nAuto Read=1\r\n");
    EXPECT_EQ(ReadProfileString(dir.file("missing.ini"), "Config", "A"), "");
}

TEST(GetIniString, FillsMissingAndEmptyKeysWithTheirDefault)
{
    test::TempDir dir;
    dir.write("QorTool.INI", "[Config]\r\nCOLUMNHEADER FONT SIZE=\r\nTEXTBOX FONT SIZE=14\r\n");
    Common settings(dir.file("QorTool.INI"));

    EXPECT_EQ(settings.GetIniString("Config", "COLUMNHEADER FONT SIZE", "8"), "8");
    EXPECT_EQ(settings.GetIniString("Config", "TEXTBOX FONT SIZE", "11"), "14");
    EXPECT_EQ(settings.GetIniString("Exe", "Text Editer", "Notepad.exe"), "Notepad.exe");

    EXPECT_EQ(dir.read("QorTool.INI"), "[Config]\r\nCOLUMNHEADER FONT SIZE=8\r\n"
                                       "TEXTBOX FONT SIZE=14\r\n[Exe]\r\nText Editer=Notepad.exe\r\n");
}

TEST(GetIniString, GivesTheDefaultWhenTheFolderCannotBeWritten)
{
    test::TempDir dir;
    Common settings(dir.file("no such folder/QorTool.INI"));

    EXPECT_EQ(settings.GetIniString("Config", "Magazine Max", "100"), "100");
    EXPECT_EQ(settings.WriteIniString("Config", "Magazine Max", "5"), 0);
}

TEST(WriteIniString, WritesAtMost256Characters)
{
    test::TempDir dir;
    Common settings(dir.file("QorTool.INI"));

    EXPECT_EQ(settings.WriteIniString("Files", "TTL File", std::string(300, 'p')), 1);

    EXPECT_EQ(dir.read("QorTool.INI"), "[Files]\r\nTTL File=" + std::string(256, 'p') + "\r\n");
}

TEST(PathHelpers, SplitAtTheLastSeparatorOfEitherKind)
{
    EXPECT_EQ(DirOfPath("C:\\HOLBENMILL\\Atc.ttl"), "C:\\HOLBENMILL\\");
    EXPECT_EQ(FileOfPath("C:\\HOLBENMILL\\Atc.ttl"), "Atc.ttl");
    EXPECT_EQ(DirOfPath("/home/cam/Atc.ttl"), "/home/cam/");
    EXPECT_EQ(FileOfPath("/home/cam/Atc.ttl"), "Atc.ttl");
    EXPECT_EQ(DirOfPath("Atc.ttl"), "");
    EXPECT_EQ(FileOfPath("Atc.ttl"), "");
    EXPECT_EQ(FileOfPath("C:\\folder\\"), "");
}

} // namespace
} // namespace qor
