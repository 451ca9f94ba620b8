#include "atomic_file.h"
#include "line_reader.h"
#include "native_file.h"
#include "profile_file.h"
#include "temp_dir.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace qor {
namespace {

namespace fs = std::filesystem;

int FilesIn(const std::string &folder)
{
    return static_cast<int>(std::distance(fs::directory_iterator(folder), {}));
}

TEST(AtomicFile, ReplacesTheTargetOnlyOnCommitAndLeavesNoTemporaryFile)
{
    test::TempDir dir;
    dir.write("Atc.ttl", "old");
    {
        AtomicFileWriter abandoned;
        ASSERT_TRUE(abandoned.Open(dir.file("Atc.ttl")).ok());
        abandoned.Write("half");
    }
    AtomicFileWriter writer;

    ASSERT_TRUE(writer.Open(dir.file("Atc.ttl")).ok());
    writer.Write("new content");
    EXPECT_EQ(dir.read("Atc.ttl"), "old");
    ASSERT_TRUE(writer.Commit().ok());

    EXPECT_EQ(dir.read("Atc.ttl"), "new content");
    EXPECT_EQ(FilesIn(dir.path()), 1);
}

TEST(AtomicFile, ReadWholeFileAndFileExistsTellMissingFilesApart)
{
    test::TempDir dir;
    dir.write("a.txt", std::string("x\0y", 3));

    EXPECT_EQ(ReadWholeFile(dir.file("a.txt")).value(), std::string("x\0y", 3));
    EXPECT_FALSE(ReadWholeFile(dir.file("b.txt")).ok());
    EXPECT_TRUE(FileExists(dir.file("a.txt")));
    EXPECT_FALSE(FileExists(dir.file("b.txt")));
    EXPECT_FALSE(FileExists(dir.path()));
}

TEST(NewFile, IsNeverMadeOverAnExistingFile)
{
    // The C runtime on Windows ignores fopen's "x"; each way of making a new
    // file must still leave an existing one alone.
    const std::vector<std::pair<const char *, std::function<bool(const std::string &)>>> makers = {
        {"CreateNewFile",
         [](const std::string &path) {
             std::FILE *file = CreateNewFile(path);
             if (file != nullptr) {
                 std::fclose(file);
                 return true;
             }
             return errno != EEXIST;
         }},
        {"CopyToNewFile",
         [](const std::string &path) {
             test::TempDir source;
             source.write("s", "copied");
             return CopyToNewFile(source.file("s"), path).ok();
         }},
    };
    for (const auto &[name, make] : makers) {
        test::TempDir dir;
        dir.write("Atc_org1.TTL", "the original");

        EXPECT_FALSE(make(dir.file("Atc_org1.TTL"))) << name;

        EXPECT_EQ(dir.read("Atc_org1.TTL"), "the original") << name;
        EXPECT_EQ(FilesIn(dir.path()), 1) << name;
    }
}

TEST(NewFile, NamesWithAnyCharactersReachTheSystemAsTheyAre)
{
    test::TempDir dir;
    const std::string name = "J\xC3\xBCrgen \xE5\xB7\xA5\xE5\x85\xB7.TTL";

    ASSERT_TRUE(WriteFileAtomically(dir.file(name), "content").ok());
    ASSERT_TRUE(CopyToNewFile(dir.file(name), dir.file("copy " + name)).ok());

    EXPECT_TRUE(FileExists(dir.file(name)));
    EXPECT_EQ(ReadWholeFile(dir.file("copy " + name)).value(), "content");
    std::vector<std::string> listed;
    for (const auto &entry : fs::directory_iterator(NativePath(dir.path()))) {
        listed.push_back(Utf8Path(entry.path().filename()));
    }
    std::sort(listed.begin(), listed.end());
    EXPECT_EQ(listed,
              (std::vector<std::string>{"J\xC3\xBCrgen \xE5\xB7\xA5\xE5\x85\xB7.TTL",
                                        "copy J\xC3\xBCrgen \xE5\xB7\xA5\xE5\x85\xB7.TTL"}));
}

TEST(NewFile, ASettingsFileNamedWithoutAFolderLiesInTheCurrentFolder)
{
    // Windows' profile functions would look a bare name up in the Windows
    // folder.
    test::TempDir dir;
    const fs::path before = fs::current_path();
    fs::current_path(NativePath(dir.path()));

    const bool written = WriteProfileEntry("bare.ini", "Config", "Version", "1.70");
    const std::string read = ReadProfileEntry("bare.ini", "Config", "Version");
    fs::current_path(before);

    EXPECT_TRUE(written);
    EXPECT_EQ(read, "1.70");
    EXPECT_TRUE(FileExists(dir.file("bare.ini")));
}

// The lines of a file, each with "!" in front when it was cut for being too long.
std::vector<std::string> ReadLines(const std::string &content, std::size_t limit)
{
    test::TempDir dir;
    dir.write("f", content);
    std::FILE *file = std::fopen(dir.file("f").c_str(), "rb");
    LineReader reader(file, limit);
    std::vector<std::string> lines;
    std::string line;
    for (LineReader::Status status; (status = reader.Next(line)) != LineReader::Status::End;) {
        lines.push_back((status == LineReader::Status::TooLong ? "!" : "") + line);
    }
    std::fclose(file);
    return lines;
}

TEST(LineReader, SplitsAtCrLfLfAndLoneCrEvenAcrossChunksAndCutsOverlongLines)
{
    using Lines = std::vector<std::string>;

    EXPECT_EQ(ReadLines("a\r\nb\nc\rd", 100), (Lines{"a", "b", "c", "d"}));
    EXPECT_EQ(ReadLines("a\r\n\r\n", 100), (Lines{"a", ""}));
    EXPECT_EQ(ReadLines(std::string("n\0ul\n", 5), 100), Lines{std::string("n\0ul", 4)});
    EXPECT_EQ(ReadLines(std::string(65535, 'x') + "\r\nnext\r\n", 1 << 20),
              (Lines{std::string(65535, 'x'), "next"}));
    EXPECT_EQ(ReadLines(std::string(200000, 'y') + "\nshort\n", 1000),
              (Lines{"!" + std::string(1000, 'y'), "short"}));
}

} // namespace
} // namespace qor
