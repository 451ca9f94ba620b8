#include "numeric_text.h"
#include "tool_list_reader.h"
#include "tool_list_writer.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <initializer_list>
#include <random>
#include <vector>

namespace qor {
namespace {

ToolTable EmptyTable(std::int16_t slots)
{
    ToolTable table;
    SizeToolTable(table, slots);
    table.KindNames = {"", "CUT", "BAL", "TAP", "FLA", "BUL", "VER", "KEG", "OVA", "RAD", "T-T"};
    return table;
}

// Random tables of what the file can carry: every value has at most six
// significant digits (so seven written digits read back the same single), and
// fields that a kind or an item form does not write stay empty.
class TableGenerator
{
public:
    explicit TableGenerator(unsigned seed) : m_random(seed) {}

    ToolTable Table()
    {
        ToolTable table = EmptyTable(static_cast<std::int16_t>(Between(1, 120)));
        table.InitialMagazine = static_cast<std::int16_t>(Between(0, table.MagazineMax));
        table.DefaultArborType = static_cast<std::int16_t>(Between(0, 3));
        if (table.DefaultArborType > 0) {
            table.DefaultArbor = Arbor(table.DefaultArborType, Between(0, 10));
        }
        for (ToolSlot &slot : table.Slots) {
            if (Chance(70)) {
                slot = Tool();
            }
        }
        return table;
    }

private:
    int Between(int low, int high) { return std::uniform_int_distribution(low, high)(m_random); }
    bool Chance(int percent) { return Between(1, 100) <= percent; }
    static float Thousandths(int k) { return static_cast<float>(k) / 1000.0f; }

    float Value()
    {
        switch (Between(0, 9)) {
        case 0:
            return 0;
        case 1:
        case 2:
            return static_cast<float>(Between(-100, 1000));
        case 3:
            return static_cast<float>(Between(-9999, 9999)) / 10.0f;
        default:
            return Thousandths(Between(-999999, 999999));
        }
    }

    void Fill(ToolSlot &tool, std::initializer_list<float ToolSlot::*> fields)
    {
        for (auto field : fields) {
            tool.*field = Value();
        }
    }

    // Ascending thousandths from `first`, as the sections and breakpoints are.
    std::vector<float> Ascending(int count, int first)
    {
        std::vector<float> values;
        for (int k = first; static_cast<int>(values.size()) < count; k += Between(0, 40000)) {
            values.push_back(Thousandths(k));
        }
        return values;
    }

    ArborSections Arbor(std::int16_t type, int count)
    {
        ArborSections arbor;
        std::vector<float> diameters = Ascending(count, Between(1, 60000));
        for (int i = 0; i < count; ++i) {
            arbor.Dia[i] = diameters[i];
            arbor.Len[i] = Value();
            arbor.Flag[i] = type == 3 ? static_cast<std::uint8_t>(Between(0, 255)) : 0;
        }
        return arbor;
    }

    std::string Comment()
    {
        static const std::string letters = "abcXYZ019 ,.;/-+()#*=_'\x80\xA9\xE4\xFF";
        std::string text;
        for (int n = Between(1, 30); n > 0; --n) {
            text +=
                letters[static_cast<std::size_t>(Between(0, static_cast<int>(letters.size()) - 1))];
        }
        return std::string(TrimSpaces(text));
    }

    ToolSlot Tool()
    {
        ToolSlot tool;
        tool.ToolKind = static_cast<std::int16_t>(Between(0, KindCount - 1));
        using T = ToolSlot;
        switch (tool.ToolKind) {
        case KindCut:
            Fill(tool, {&T::ToolDia, &T::CornerRad, &T::Param3, &T::Param4, &T::Param5, &T::Param6,
                        &T::ToolLength});
            break;
        case KindTap:
            Fill(tool, {&T::CornerRad, &T::Param6, &T::ToolLength});
            break;
        case KindBul:
            Fill(tool, {&T::ToolDia, &T::CornerRad, &T::ToolLength});
            break;
        case KindVer:
            Fill(tool, {&T::ToolDia, &T::Param7, &T::ToolLength});
            break;
        case KindOva:
            Fill(tool, {&T::ToolDia, &T::CornerRad, &T::Param7, &T::ToolLength});
            break;
        case KindRad:
            Fill(tool, {&T::ToolDia, &T::CornerRad, &T::Param7});
            break;
        case KindTT:
            Fill(tool, {&T::ToolDia, &T::ToolLength, &T::CornerRad, &T::Param5, &T::Param7});
            break;
        default:
            Fill(tool, {&T::ToolDia, &T::ToolLength});
            break;
        }
        // Param7 rides behind a positive Param6 only.
        if ((tool.ToolKind == KindCut || tool.ToolKind == KindTap) && tool.Param6 > 0 &&
            Chance(70)) {
            tool.Param7 = Value();
        }
        if (Chance(50)) {
            tool.ToolComment = Comment();
        }

        constexpr int lengthCounts[] = {0, 1, 4, 6};
        tool.LengthMode = static_cast<std::int16_t>(Between(0, 3));
        for (int i = 0; i < lengthCounts[tool.LengthMode]; ++i) {
            tool.Len[i] = Value();
        }
        tool.ArborMode = static_cast<std::int16_t>(Between(0, 3));
        if (tool.ArborMode > 0) {
            tool.Arbor = Arbor(tool.ArborMode, Between(1, 10));
        }
        if (Chance(30)) {
            tool.ShiftOn = 1;
            tool.ShiftValue = Value();
        }
        tool.PenNo = static_cast<std::int16_t>(Chance(50) ? Between(1, 32767) : 0);

        for (int letter = 0; letter < OptFeedLetterCount; ++letter) {
            if (Chance(40)) {
                int count = Between(1, OptFeedPointCount);
                std::vector<float> points = Ascending(count, Between(-100000, 100000));
                tool.OptFeedOn[letter] = 1;
                for (int k = 0; k < count; ++k) {
                    tool.OptFeedPos[letter][k] = points[k];
                    if (k + 1 < count) {
                        tool.OptFeedVal[letter][k] = Value();
                    }
                }
            }
        }

        // "LIMITP/" is left out: it reads back as flags 128, which carry no
        // limit, so that form does not survive a save.
        constexpr std::uint8_t limitForms[] = {0, 1, 2, 1 | 64, 2 | 64, 2 | 128, 2 | 64 | 128};
        tool.LimitFlags = limitForms[Between(0, 6)];
        if (tool.LimitFlags != 0) {
            tool.LimitValues[0] = Value();
            if (tool.LimitFlags & LimitFourValues) {
                tool.LimitValues = {tool.LimitValues[0], Value(), Value(), Value()};
            }
        }
        return tool;
    }

    std::mt19937 m_random;
};

// The written lines of one magazine position, for failure messages.
std::string LinesOf(const std::string &text, std::size_t slot)
{
    std::string head =
        "MAGAZINE" + std::string(slot < 9 ? "0" : "") + std::to_string(slot + 1) + " =";
    auto begin = text.find(head);
    if (begin == std::string::npos) {
        return "(not written)";
    }
    return text.substr(begin, text.find("\r\nMAGAZINE", begin) - begin);
}

ReadResult ReadText(ToolTable &table, const std::string &text)
{
    std::FILE *file = std::tmpfile();
    if (!file) {
        return {ReadOutcome::NotFound, Error("no temporary file for the written text")};
    }
    std::fwrite(text.data(), 1, text.size(), file);
    std::rewind(file);
    ReadResult result = ReadToolListStream(table, file);
    std::fclose(file);
    return result;
}

TEST(ToolListRoundTrip, WrittenTablesReadBackEqualAndWriteTheSameBytes)
{
    TableGenerator generator(20240611);
    for (int round = 0; round < 400; ++round) {
        ToolTable table = generator.Table();
        WriteOptions options{"Round trip", std::to_string(table.InitialMagazine)};
        std::string written = FormatToolList(table, options);

        ToolTable read = EmptyTable(table.MagazineMax);
        ReadResult result = ReadText(read, written);

        ASSERT_EQ(result.outcome, ReadOutcome::Read)
            << "round " << round << ": " << result.error.message;
        ASSERT_FALSE(read.ForeignFile);
        ASSERT_EQ(read.InitialMagazine, table.InitialMagazine) << "round " << round;
        ASSERT_EQ(read.CurrentSlot, table.InitialMagazine - 1);
        ASSERT_EQ(read.DefaultArborType, table.DefaultArborType) << "round " << round;
        ASSERT_EQ(read.DefaultArbor, table.DefaultArbor) << "round " << round;
        for (std::size_t slot = 0; slot < table.Slots.size(); ++slot) {
            ASSERT_TRUE(read.Slots[slot] == table.Slots[slot])
                << "round " << round << ", slot " << slot << " reads back otherwise; written:\n"
                << LinesOf(written, slot);
        }
        ASSERT_EQ(FormatToolList(read, options), written) << "round " << round;
    }
}

} // namespace
} // namespace qor
