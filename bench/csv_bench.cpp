#include "full_table.h"
#include "tool_table_csv.h"

#include <benchmark/benchmark.h>

namespace {

using namespace qor;

// The full table with angles and pens the import accepts.
const ToolTable &Table()
{
    static const ToolTable table = [] {
        ToolTable full = bench::FullTable();
        for (int s = 0; s < full.MagazineMax; ++s) {
            ToolSlot &tool = full.Slots[static_cast<std::size_t>(s)];
            tool.Param5 = static_cast<float>(s % 89);
            tool.Param6 = static_cast<float>(1 + s % 88) + 0.25f;
            tool.Len[2] = static_cast<float>(s % 89) + 0.5f;
            tool.Len[3] = static_cast<float>(s % 90);
        }
        return full;
    }();
    return table;
}

void BM_ExportCsv(benchmark::State &state)
{
    std::size_t bytes = 0;
    for (auto _ : state) {
        std::string csv = FormatToolTableCsv(Table(), 1252);
        bytes = csv.size();
        benchmark::DoNotOptimize(csv.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
    state.counters["csv_MB"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK(BM_ExportCsv)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_ImportCsv(benchmark::State &state)
{
    const std::string csv = FormatToolTableCsv(Table(), 1252);
    for (auto _ : state) {
        CsvImport imported = ParseToolTableCsv(csv, {32767, 1252, 32767});
        if (!imported.ok()) {
            state.SkipWithError(CsvRefusalEnglish(*imported.Refusal).c_str());
            return;
        }
        benchmark::DoNotOptimize(imported.Table.Slots.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * csv.size()));
    state.counters["csv_MB"] = static_cast<double>(csv.size()) / 1e6;
}
BENCHMARK(BM_ImportCsv)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
