// Feeds arbitrary bytes to the recovery file parser: it must restore them or
// refuse them, never leave a position or value outside its bounds, and a
// restore it gives must be taken back exactly.
#include "recovery_file.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

void Check(bool condition)
{
    if (!condition) {
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const qor::Result<qor::Recovery> parsed =
        qor::ParseRecovery(std::string_view(reinterpret_cast<const char *>(data), size));
    if (!parsed) {
        Check(!parsed.error().message.empty());
        return 0;
    }
    const qor::Recovery &recovery = parsed.value();
    Check(recovery.Slots.size() == recovery.Contents.size());
    for (std::size_t i = 0; i < recovery.Slots.size(); ++i) {
        Check(recovery.Slots[i] >= 0 && recovery.Slots[i] < 32767);
        Check(i == 0 || recovery.Slots[i - 1] < recovery.Slots[i]);
        Check(recovery.Contents[i].ToolKind >= qor::KindNone &&
              recovery.Contents[i].ToolKind < qor::KindCount);
    }

    qor::ToolTable table;
    qor::SizeToolTable(table, 40);
    qor::NewDataSet(table, 3);
    const qor::ToolTable before = table;
    if (const auto change = qor::MakeRestoreChange(table, recovery)) {
        qor::ApplyChange(table, *change, qor::ChangeDirection::Redo);
        qor::ApplyChange(table, *change, qor::ChangeDirection::Undo);
        Check(table.Slots == before.Slots && table.DefaultArbor == before.DefaultArbor &&
              table.DefaultArborType == before.DefaultArborType &&
              table.InitialMagazine == before.InitialMagazine);
    }
    return 0;
}
