#include "random_table.h"
#include "temp_dir.h"
#include "tool_list_reader.h"
#include "tool_list_writer.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace qor {
namespace {

using test::RandomTable;

TEST(ToolListRoundTrip, WrittenTablesReadBackEqualAndWriteTheSameBytes)
{
    std::mt19937 random(20240611);
    test::ScratchStream scratch;
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        ToolTable table = RandomTable(random);
        WriteOptions options{"Round trip", std::to_string(table.InitialMagazine)};
        std::string written = FormatToolList(table, options);
        std::FILE *file = scratch.hold(written);
        ASSERT_TRUE(file);
        ToolTable read;
        SizeToolTable(read, table.MagazineMax);

        ReadResult result = ReadToolListStream(read, file);
        ASSERT_EQ(result.outcome, ReadOutcome::Read) << result.error.message;
        EXPECT_FALSE(read.ForeignFile);
        EXPECT_EQ(read.InitialMagazine, table.InitialMagazine);
        EXPECT_EQ(read.DefaultArborType, table.DefaultArborType);
        EXPECT_TRUE(read.DefaultArbor == table.DefaultArbor);
        for (std::size_t slot = 0; slot < table.Slots.size(); ++slot) {
            ASSERT_TRUE(read.Slots[slot] == table.Slots[slot]) << "slot " << slot;
        }
        EXPECT_EQ(FormatToolList(read, options), written);
    }
}

} // namespace
} // namespace qor
