#include "common.h"
#include "profile_file.h"
#include "temp_dir.h"

#include <gtest/gtest.h>

namespace qor {
namespace {

TEST(ProfileRead, FindsKeysWithoutRegardToCaseTrimsUnquotesAndToleratesJunk)
{
    const std::string text = "garbage before any section\n"
                             "[Config]\r\n"
                             "key without equals\n"
                             "\x01\x02 binary \xff\n"
                             "  Magazine Max =  20  \r\n"
                             "Name=\"  quoted  \"\r\n"
                             "Single='x'\r\n"
                             "A=first\n"
                             "a=second\n"
                             "Long=" +
                             std::string(300, 'v') +
                             "\n"
                             "[Files]\r\n"
                             "TTL File=C:\\HOLBENMILL\\Atc.ttl\r\n"
                             "[config]\n"
                             "B=in the duplicate section\n"
                             "Last=no line break";

    EXPECT_EQ(FindProfileValue(text, "config", "MAGAZINE MAX"), "20");
    EXPECT_EQ(FindProfileValue(text, "Config", "Name"), "  quoted  ");
    EXPECT_EQ(FindProfileValue(text, "Config", "Single"), "x");
    EXPECT_EQ(FindProfileValue(text, "Config", "A"), "first");
    EXPECT_EQ(FindProfileValue(text, "Config", "B"), "");
    EXPECT_EQ(FindProfileValue(text, "Config", "Long"), std::string(254, 'v'));
    EXPECT_EQ(FindProfileValue(text, "FILES", "ttl file"), "C:\\HOLBENMILL\\Atc.ttl");
    EXPECT_EQ(FindProfileValue(text, "Files", "Magazine Max"), "");
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
    EXPECT_EQ(SetProfileValue("[Config]\nA=1", "Config", "B", "2"), "[Config]\nA=1\r\nB=2\r\n");
}

TEST(Common, FillsMissingAndEmptyKeysWithTheirDefaultAndCutsValuesTo256Characters)
{
    test::TempDir dir;
    dir.write("QorTool.INI", "[Config]\r\nCOLUMNHEADER FONT SIZE=\r\nTEXTBOX FONT SIZE=14\r\n");
    Common settings(dir.file("QorTool.INI"));

    EXPECT_EQ(settings.GetIniString("Config", "COLUMNHEADER FONT SIZE", "8"), "8");
    EXPECT_EQ(settings.GetIniString("Config", "TEXTBOX FONT SIZE", "11"), "14");
    EXPECT_EQ(settings.GetIniString("Exe", "Text Editer", "Notepad.exe"), "Notepad.exe");
    EXPECT_EQ(settings.WriteIniString("Files", "TTL File", std::string(300, 'p')), 1);

    EXPECT_EQ(dir.read("QorTool.INI"),
              "[Config]\r\nCOLUMNHEADER FONT SIZE=8\r\n"
              "TEXTBOX FONT SIZE=14\r\n[Exe]\r\nText Editer=Notepad.exe\r\n"
              "[Files]\r\nTTL File=" +
                  std::string(256, 'p') + "\r\n");
}

TEST(Common, GivesTheDefaultWhenTheFolderCannotBeWritten)
{
    test::TempDir dir;
    Common settings(dir.file("no such folder/QorTool.INI"));

    EXPECT_EQ(settings.GetIniString("Config", "Magazine Max", "100"), "100");
    EXPECT_EQ(settings.WriteIniString("Config", "Magazine Max", "5"), 0);
}

TEST(PathHelpers, SplitAtTheLastSeparatorOfEitherKind)
{
    EXPECT_EQ(DirOfPath("C:\\HOLBENMILL\\Atc.ttl"), "C:\\HOLBENMILL\\");
    EXPECT_EQ(FileOfPath("/home/cam/Atc.ttl"), "Atc.ttl");
    EXPECT_EQ(DirOfPath("Atc.ttl"), "");
    EXPECT_EQ(FileOfPath("Atc.ttl"), "");
    EXPECT_EQ(FileOfPath("C:\\folder\\"), "");
}

} // namespace
} // namespace qor
