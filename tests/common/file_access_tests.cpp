#include "atomic_file.h"
#include "line_reader.h"
#include "temp_dir.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <vector>

namespace qor {
namespace {

namespace fs = std::filesystem;

int FilesIn(const std::string &folder)
{
    int count = 0;
    for ([[maybe_unused]] auto &entry : fs::directory_iterator(folder)) {
        ++count;
    }
    return count;
}

TEST(AtomicFile, ReplacesTheTargetOnlyOnCommit)
{
    test::TempDir dir;
    dir.write("Atc.ttl", "old");
    AtomicFileWriter writer;

    ASSERT_TRUE(writer.Open(dir.file("Atc.ttl")).ok());
    writer.Write("new content");
    EXPECT_EQ(dir.read("Atc.ttl"), "old");
    ASSERT_TRUE(writer.Commit().ok());

    EXPECT_EQ(dir.read("Atc.ttl"), "new content");
    EXPECT_EQ(FilesIn(dir.path()), 1);
}

TEST(AtomicFile, AbandonedWriteLeavesTheTargetAndNoTemporaryFile)
{
    test::TempDir dir;
    dir.write("Atc.ttl", "old");

    {
        AtomicFileWriter writer;
        ASSERT_TRUE(writer.Open(dir.file("Atc.ttl")).ok());
        writer.Write("half");
    }

    EXPECT_EQ(dir.read("Atc.ttl"), "old");
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
    EXPECT_FALSE(FileExists(""));
}

std::vector<std::string> ReadLines(const std::string &content, std::size_t limit,
                                   std::vector<LineReader::Status> *statuses = nullptr)
{
    test::TempDir dir;
    dir.write("f", content);
    std::FILE *file = std::fopen(dir.file("f").c_str(), "rb");
    LineReader reader(file, limit);
    std::vector<std::string> lines;
    std::string line;
    for (;;) {
        auto status = reader.Next(line);
        if (status == LineReader::Status::End) {
            break;
        }
        if (statuses) {
            statuses->push_back(status);
        }
        lines.push_back(line);
    }
    std::fclose(file);
    return lines;
}

TEST(LineReader, SplitsAtCrLfLfAndLoneCr)
{
    using Lines = std::vector<std::string>;
    EXPECT_EQ(ReadLines("a\r\nb\nc\rd", 100), (Lines{"a", "b", "c", "d"}));
    EXPECT_EQ(ReadLines("a\r\n\r\n", 100), (Lines{"a", ""}));
    EXPECT_EQ(ReadLines("", 100), Lines{});
    EXPECT_EQ(ReadLines(std::string("n\0ul\n", 5), 100), Lines{std::string("n\0ul", 4)});
}

TEST(LineReader, KeepsCrLfTogetherAcrossChunkBoundaries)
{
    std::string content(65535, 'x');
    content += "\r\nnext\r\n";

    auto lines = ReadLines(content, 1 << 20);

    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].size(), 65535u);
    EXPECT_EQ(lines[1], "next");
}

TEST(LineReader, CutsOverlongLinesAndGoesOnWithTheNext)
{
    std::vector<LineReader::Status> statuses;
    std::string content = std::string(200000, 'y') + "\nshort\n";

    auto lines = ReadLines(content, 1000, &statuses);

    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], std::string(1000, 'y'));
    EXPECT_EQ(statuses[0], LineReader::Status::TooLong);
    EXPECT_EQ(lines[1], "short");
    EXPECT_EQ(statuses[1], LineReader::Status::Line);
}

} // namespace
} // namespace qor
