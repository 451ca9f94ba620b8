#include "tool_list_reader.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>

#ifndef _WIN32
#include <sys/resource.h>
#endif

namespace {

constexpr std::int16_t ToolCount = 32767;

// A tool list with every position filled: all kinds in turn, three-part
// lengths, a ten-section tapered arbor, four option feeds of 20 breakpoints,
// a shift, a pen, a four-value limit and a comment.
class FullToolList
{
public:
    FullToolList()
    {
        m_path = (std::filesystem::temp_directory_path() /
                  ("qortool-reader-bench-" + std::to_string(std::random_device{}()) + ".ttl"))
                     .string();
        std::FILE *file = std::fopen(m_path.c_str(), "wb");
        std::fputs("#********************   Tool list                ********************\r\n"
                   "#********************     edited with QORTool   *******V1.70********\r\n"
                   "INI = MAGAZINE01\r\nARBOR2/40,20,50,30,63,40\r\n",
                   file);
        static const char *const tools[] = {"CUT/10,0.5,30,45,2.5,5;30,60",
                                            "BAL/10,50",
                                            "TAP/1.25,6;7,40",
                                            "FLA/6,40",
                                            "BUL/8,1,30",
                                            "VER/8,2.75,30",
                                            "KEG/3,9",
                                            "OVA/8,1,2,30",
                                            "RAD/8,1,2",
                                            "T-T/20,5,1,2,3"};
        for (int magazine = 1; magazine <= ToolCount; ++magazine) {
            std::fprintf(file, "MAGAZINE%02d = %s,\"Tool %d  ball-nose finishing\"\r\n", magazine,
                         tools[magazine % 10], magazine);
            std::fputs("LENGTH3/120.5,30,40.25,50,60,70\r\n"
                       "ARBOR3/20,5,0,25,5,1,30,10,0,35,10,0,40,10,1,45,10,0,50,10,0,55,10,1,"
                       "60,10,0,63,20,0\r\n"
                       "SHIFT/1.5\r\nPEN/3\r\n",
                       file);
            for (const char *letter : {"A", "V", "U", "D"}) {
                std::fprintf(file, "OPT-F(%s)/0", letter);
                for (int k = 1; k < 20; ++k) {
                    std::fprintf(file, ",%d,%g", 1000 + 25 * k, 0.5 * k);
                }
                std::fputs("\r\n", file);
            }
            std::fputs("LIMITSP/1.5,2.5,-3.5,4.5\r\n", file);
        }
        m_bytes = std::ftell(file);
        std::fclose(file);
    }
    ~FullToolList() { std::remove(m_path.c_str()); }

    const std::string &path() const { return m_path; }
    long bytes() const { return m_bytes; }

private:
    std::string m_path;
    long m_bytes = 0;
};

const FullToolList &TheFile()
{
    static FullToolList file;
    return file;
}

// The peak resident size of this process in KiB (0 where not available).
long PeakResidentKiB()
{
#ifndef _WIN32
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
#else
    return 0;
#endif
}

// Runs first: the peak resident size only grows, so a later benchmark would
// hide the reader's own growth.
void BM_ReadPeakMemory(benchmark::State &state)
{
    const FullToolList &file = TheFile();
    for (auto _ : state) {
        const long before = PeakResidentKiB();
        qor::ToolTable table;
        qor::SizeToolTable(table, ToolCount);
        auto result = qor::ReadToolListFile(table, file.path());
        const long after = PeakResidentKiB();
        if (result.outcome != qor::ReadOutcome::Read) {
            state.SkipWithError(result.error.message.c_str());
            return;
        }
        double tableBytes = static_cast<double>(table.Slots.size() * sizeof(qor::ToolSlot));
        for (const auto &slot : table.Slots) {
            if (slot.ToolComment.capacity() > 15) { // beyond the in-place buffer
                tableBytes += static_cast<double>(slot.ToolComment.capacity() + 1);
            }
        }
        const double growth = static_cast<double>(after - before) * 1024.0;
        state.counters["table_MB"] = tableBytes / 1e6;
        state.counters["peak_growth_MB"] = growth / 1e6;
        state.counters["growth_per_table"] = growth / tableBytes;
        std::fprintf(stderr, "table %.1f MB, peak resident growth while reading %.1f MB (%.2fx)\n",
                     tableBytes / 1e6, growth / 1e6, growth / tableBytes);
    }
}
BENCHMARK(BM_ReadPeakMemory)->Iterations(1)->Unit(benchmark::kMillisecond);

void BM_ReadToolListFile(benchmark::State &state)
{
    const FullToolList &file = TheFile();
    qor::ToolTable table;
    qor::SizeToolTable(table, ToolCount);
    for (auto _ : state) {
        auto result = qor::ReadToolListFile(table, file.path());
        if (result.outcome != qor::ReadOutcome::Read) {
            state.SkipWithError(result.error.message.c_str());
            return;
        }
        benchmark::DoNotOptimize(table.Slots.data());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) * file.bytes());
    state.counters["file_MB"] = static_cast<double>(file.bytes()) / 1e6;
}
BENCHMARK(BM_ReadToolListFile)->Unit(benchmark::kMillisecond);

} // namespace
