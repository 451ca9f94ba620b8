// Working on the largest magazine as a machinist does: finding rows on each
// keystroke of the find box, undoing and redoing a change, and keeping the
// unsaved changes in the recovery file.
#include "full_workspace.h"
#include "recovery_file.h"
#include "row_filter.h"
#include "table_change.h"
#include "tool_list_rows.h"

#include <benchmark/benchmark.h>
#include <filesystem>

namespace {

using namespace qor;

// What a find box holds after a keystroke: a kind, a name part, a number,
// conditions, several terms.
constexpr std::array<std::string_view, 7> Queries = {
    "b", "bal", "tool number", "12", "D<10", "D>=6 R=0,5 bal", "number 3276"};

void BM_FilterRows(benchmark::State &state)
{
    Workspace ws;
    bench::FillWorkspace(ws);
    ToolListContents contents;
    FillToolList(ws, contents);
    const std::string_view query = Queries[static_cast<std::size_t>(state.range(0))];
    std::size_t shown = 0;
    for (auto _ : state) {
        const std::vector<bool> matches = RowFilter(query).MatchAll(contents.Rows);
        shown = static_cast<std::size_t>(std::count(matches.begin(), matches.end(), true));
        benchmark::DoNotOptimize(shown);
    }
    state.SetLabel(std::string(query));
    state.counters["rows"] = contents.Rows.RowCount();
    state.counters["shown"] = static_cast<double>(shown);
}
BENCHMARK(BM_FilterRows)->DenseRange(0, Queries.size() - 1)->Unit(benchmark::kMillisecond);

// One undo or redo (alternating) of what the editor stored into a position
// in the middle of the full magazine.
void BM_UndoRedoStore(benchmark::State &state)
{
    Workspace ws;
    bench::FillWorkspace(ws);
    const int slot = 16000;
    ToolSlot edited = ws.Table.Slots[slot];
    edited.ToolDia = 6;
    edited.ToolComment = "edited carbide 4F long reach";
    const TableChange change = *MakeSlotChange(slot, ws.Table.Slots[slot], edited);
    ChangeDirection direction = ChangeDirection::Undo;
    for (auto _ : state) {
        ApplyChange(ws.Table, change, direction);
        direction =
            direction == ChangeDirection::Undo ? ChangeDirection::Redo : ChangeDirection::Undo;
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_UndoRedoStore)->Unit(benchmark::kMicrosecond);

// The recovery file of a full magazine with a number of positions changed
// (a day's moves and edits, or every position), written atomically.
void BM_WriteRecovery(benchmark::State &state)
{
    Workspace ws;
    bench::FillWorkspace(ws);
    UnsavedChanges unsaved;
    const int changed = static_cast<int>(state.range(0));
    for (int i = 0; i < changed; ++i) {
        const int slot = static_cast<int>(static_cast<long long>(i) * 32767 / changed);
        unsaved.Note(*MakeDelete(ws.Table, slot)); // noted only: the tools stay
    }
    unsaved.Note(*MakeInitialMagazineChange(ws.Table, 7));
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / "qor_recovery_bench";
    std::filesystem::create_directories(folder);
    const std::string path = (folder / "QorTool.recovery").string();
    const LastRead source{"C:\\HOLBENMILL\\Atc.ttl", {}};
    for (auto _ : state) {
        if (!WriteRecoveryFile(path, ws.Table, unsaved, source)) {
            state.SkipWithError("the recovery file could not be written");
            break;
        }
    }
    state.counters["file_MB"] =
        static_cast<double>(std::filesystem::file_size(path)) / (1024.0 * 1024.0);
    std::filesystem::remove_all(folder);
}
BENCHMARK(BM_WriteRecovery)->Arg(50)->Arg(32767)->Unit(benchmark::kMillisecond);

} // namespace
