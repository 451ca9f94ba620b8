// Feeds arbitrary bytes to the tool list reader: it must read or refuse them,
// leave every field of the table within its bounds, and read the same bytes
// the same way twice. What it read is written and read back, and from the
// second write on the bytes no longer change.
#include "tool_list_reader.h"
#include "tool_list_writer.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

void Check(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

void CheckSections(const qor::ArborSections &sections)
{
    for (float v : sections.Dia) {
        Check(std::isfinite(v));
    }
    for (float v : sections.Len) {
        Check(std::isfinite(v));
    }
}

void CheckTable(const qor::ToolTable &table)
{
    Check(table.InitialMagazine >= 0);
    Check(table.CurrentSlot == table.InitialMagazine - 1);
    Check(table.DefaultArborType >= 0 && table.DefaultArborType <= 3);
    CheckSections(table.DefaultArbor);
    for (const qor::ToolSlot &s : table.Slots) {
        Check(s.ToolKind >= qor::KindNone && s.ToolKind < qor::KindCount);
        Check(s.LengthMode >= 0 && s.LengthMode <= 3);
        Check(s.ArborMode >= 0 && s.ArborMode <= 3);
        Check(s.ShiftOn == 0 || s.ShiftOn == 1);
        const int mode = s.LimitFlags & ~qor::LimitFourValues;
        Check(mode == 0 || mode == 1 || mode == 2 || mode == 128 || mode == 130);
        for (float v : {s.ToolDia, s.CornerRad, s.Param3, s.Param4, s.Param5, s.Param6,
                        s.ToolLength, s.Param7, s.ShiftValue}) {
            Check(std::isfinite(v));
        }
        for (float v : s.Len) {
            Check(std::isfinite(v));
        }
        for (float v : s.LimitValues) {
            Check(std::isfinite(v));
        }
        for (int letter = 0; letter < qor::OptFeedLetterCount; ++letter) {
            Check(s.OptFeedOn[letter] == 0 || s.OptFeedOn[letter] == 1);
            for (float v : s.OptFeedPos[letter]) {
                Check(std::isfinite(v));
            }
            for (float v : s.OptFeedVal[letter]) {
                Check(std::isfinite(v));
            }
        }
        CheckSections(s.Arbor);
        Check(s.ToolComment.size() <= 65536);
    }
}

qor::ReadResult ReadBytes(qor::ToolTable &table, const std::uint8_t *data, std::size_t size)
{
    // fmemopen refuses an empty buffer; a one-byte buffer opened for zero
    // bytes stands for the empty file.
    static const std::uint8_t empty = 0;
    std::FILE *file =
        fmemopen(const_cast<std::uint8_t *>(size ? data : &empty), size ? size : 1, "rb");
    Check(file != nullptr);
    if (size == 0) {
        std::fseek(file, 0, SEEK_END);
    }
    qor::ReadResult result = qor::ReadToolListStream(table, file);
    std::fclose(file);
    return result;
}

qor::ToolTable ReadBack(const std::string &bytes)
{
    qor::ToolTable table;
    qor::SizeToolTable(table, 40);
    const qor::ReadResult result =
        ReadBytes(table, reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
    Check(result.outcome == qor::ReadOutcome::Read);
    return table;
}

std::string Rewrite(qor::ToolTable table)
{
    return qor::FormatToolList(table, qor::WriteOptions{"Fuzzed", ""});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    qor::ToolTable table;
    qor::SizeToolTable(table, 40);
    qor::ReadResult result = ReadBytes(table, data, size);

    Check(result.outcome == qor::ReadOutcome::Read ||
          result.outcome == qor::ReadOutcome::FormatError);
    if (result.outcome == qor::ReadOutcome::FormatError) {
        Check(result.error.line >= 1 && !result.error.message.empty());
        Check(result.error.lineText.size() <= 203);
    }
    CheckTable(table);

    // A second read starts from a cleared table and ends the same way.
    qor::ToolTable again;
    qor::SizeToolTable(again, 40);
    NewDataSet(again, 0);
    again.InitialMagazine = table.InitialMagazine;
    qor::ReadResult second = ReadBytes(again, data, size);
    Check(second.outcome == result.outcome && second.error.line == result.error.line);
    Check(again.Slots == table.Slots && again.DefaultArbor == table.DefaultArbor &&
          again.DefaultArborType == table.DefaultArborType &&
          again.ForeignFile == table.ForeignFile);

    if (result.outcome == qor::ReadOutcome::Read) {
        // The first write may end an option feed early (at a breakpoint
        // followed by a smaller one), which reads back as zeros; from then
        // on writing and reading must agree byte for byte.
        const std::string first = Rewrite(table);
        const std::string second = Rewrite(ReadBack(first));
        Check(Rewrite(ReadBack(second)) == second);
    }
    return 0;
}
