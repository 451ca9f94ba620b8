// Filling the tool list with the largest magazine: the copy the list keeps,
// and the cell texts of one screen of rows, which is all a view asks for.
#include "full_workspace.h"
#include "tool_list_rows.h"

#include <benchmark/benchmark.h>

namespace {

using namespace qor;

void BM_FillToolList(benchmark::State &state)
{
    Workspace ws;
    bench::FillWorkspace(ws);
    ToolListContents contents;
    constexpr int screenRows = 60;
    for (auto _ : state) {
        FillToolList(ws, contents);
        std::size_t size = 0;
        for (int row = 0; row < screenRows; ++row) {
            for (int column = 0; column < ListColumnCount; ++column) {
                size += contents.Rows.Cell(row, static_cast<ListColumn>(column)).size();
            }
        }
        benchmark::DoNotOptimize(size);
    }
    state.counters["rows"] = contents.Rows.RowCount();
}
BENCHMARK(BM_FillToolList)->Unit(benchmark::kMillisecond);

void BM_EveryCellOfEveryRow(benchmark::State &state)
{
    Workspace ws;
    bench::FillWorkspace(ws);
    ToolListContents contents;
    FillToolList(ws, contents);
    for (auto _ : state) {
        std::size_t size = 0;
        for (int row = 0; row < contents.Rows.RowCount(); ++row) {
            for (int column = 0; column < ListColumnCount; ++column) {
                size += contents.Rows.Cell(row, static_cast<ListColumn>(column)).size();
            }
        }
        benchmark::DoNotOptimize(size);
    }
}
BENCHMARK(BM_EveryCellOfEveryRow)->Unit(benchmark::kMillisecond);

} // namespace
