#include "atomic_file.h"
#include "line_reader.h"
#include "temp_dir.h"

#include <cstdio>
#include <filesystem>
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

TEST(AtomicFile, RefusesFoldersAndMissingFoldersWithTheNameInTheMessage)
{
    test::TempDir dir;
    fs::create_directory(dir.file("folder"));

    Status onFolder = WriteFileAtomically(dir.file("folder"), "x");
    Status inMissing = WriteFileAtomically(dir.file("missing/Atc.ttl"), "x");

    ASSERT_FALSE(onFolder.ok());
    EXPECT_NE(onFolder.error().message.find("folder"), std::string::npos);
    ASSERT_FALSE(inMissing.ok());
    EXPECT_NE(inMissing.error().message.find("missing/Atc.ttl"), std::string::npos);
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
