#include "full_table.h"
#include "tool_list_writer.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <filesystem>
#include <string>

#ifndef _WIN32
#include <sys/resource.h>
#endif

namespace {

using namespace qor;
using bench::FullTable;

std::size_t TableBytes(const ToolTable &table)
{
    std::size_t bytes = sizeof table + table.Slots.capacity() * sizeof(ToolSlot);
    for (const ToolSlot &slot : table.Slots) {
        if (slot.ToolComment.capacity() > std::string().capacity()) {
            bytes += slot.ToolComment.capacity() + 1;
        }
    }
    return bytes;
}

// The process's peak resident size so far, in bytes (0 where unknown).
double PeakResidentBytes()
{
#ifndef _WIN32
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024.0;
#else
    return 0;
#endif
}

ToolTable &Table()
{
    static ToolTable table = FullTable();
    return table;
}

// Registered first, so that no in-memory copy of a whole file has raised the
// peak before it is measured.
void BM_WriteToolListFile(benchmark::State &state)
{
    ToolTable &table = Table();
    std::string path =
        (std::filesystem::temp_directory_path() / "qortool-writer-bench.ttl").string();
    WriteOptions options{"Benchmark", "1"};
    double peakBefore = PeakResidentBytes();

    for (auto _ : state) {
        if (Status saved = WriteToolListFile(table, path, options); !saved) {
            state.SkipWithError(saved.error().message.c_str());
            return;
        }
    }

    double peakAfter = PeakResidentBytes();
    auto fileSize = std::filesystem::file_size(path);
    std::filesystem::remove(path);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fileSize));
    double tableBytes = static_cast<double>(TableBytes(table));
    state.counters["file_MB"] = static_cast<double>(fileSize) / 1e6;
    state.counters["table_MB"] = tableBytes / 1e6;
    state.counters["peak_MB"] = peakAfter / 1e6;
    state.counters["peak_growth_MB"] = (peakAfter - peakBefore) / 1e6;
    std::printf("table %.1f MB, file %.1f MB, process peak %.1f MB (%.2f x table), growth while "
                "writing %.2f MB\n",
                tableBytes / 1e6, static_cast<double>(fileSize) / 1e6, peakAfter / 1e6,
                peakAfter / tableBytes, (peakAfter - peakBefore) / 1e6);
}
BENCHMARK(BM_WriteToolListFile)->Unit(benchmark::kMillisecond)->UseRealTime();

// A save of a foreign file: the original is kept as the backup each time.
void BM_SaveForeignFileWithBackup(benchmark::State &state)
{
    ToolTable &table = Table();
    const auto folder = std::filesystem::temp_directory_path() / "qortool-backup-bench";
    std::filesystem::create_directories(folder);
    const std::string path = (folder / "Atc.TTL").string();
    WriteOptions options{"Benchmark", "1"};
    if (Status saved = WriteToolListFile(table, path, options); !saved) {
        state.SkipWithError(saved.error().message.c_str());
        return;
    }
    table.ForeignFile = true;

    for (auto _ : state) {
        if (Status saved = WriteToolListFile(table, path, options); !saved) {
            state.SkipWithError(saved.error().message.c_str());
            break;
        }
        state.PauseTiming();
        std::filesystem::remove((folder / "Atc_org1.TTL"));
        state.ResumeTiming();
    }

    table.ForeignFile = false;
    const auto fileSize = std::filesystem::file_size(path);
    std::filesystem::remove_all(folder);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * fileSize));
}
BENCHMARK(BM_SaveForeignFileWithBackup)->Unit(benchmark::kMillisecond)->UseRealTime();

// The formatting alone, without the disk.
void BM_FormatToolList(benchmark::State &state)
{
    ToolTable &table = Table();
    WriteOptions options{"Benchmark", "1"};
    std::size_t bytes = 0;
    for (auto _ : state) {
        std::string text = FormatToolList(table, options);
        bytes = text.size();
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}
BENCHMARK(BM_FormatToolList)->Unit(benchmark::kMillisecond);

} // namespace
