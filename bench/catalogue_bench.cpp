#include "message_catalogue.h"

#include <benchmark/benchmark.h>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr const char *Sections[] = {"frmList", "frmFSet", "frmEditor", "frmInfo",
                                    "MSG",     "String",  "frmLimit"};

std::string KeyPrefix(int section)
{
    return section == 4 ? "MSG" : section == 5 ? "Str" : "Text";
}

// A catalogue of exactly MaxLines lines laid out like a real one: every
// section with a comment block, captions, sub-keys, quoted and commented
// values, blank lines between groups.
std::string MakeCatalogue()
{
    std::vector<std::string> lines = {"## Tool table editor texts, English edition", "[Config]",
                                      "Version=1.70", ""};
    const int perSection = (qor::MessageCatalogue::MaxLines - 4) / 7;
    for (int s = 0; s < 7; ++s) {
        std::size_t end = lines.size() + static_cast<std::size_t>(perSection);
        lines.push_back(std::string("[") + Sections[s] + "]");
        lines.push_back("## captions and messages of " + std::string(Sections[s]));
        for (int n = 0; lines.size() < end; ++n) {
            std::string key = KeyPrefix(s) + std::to_string(n);
            switch (n % 10) {
            case 3:
                lines.push_back(key + "=\"  Diameter  \"");
                break;
            case 5:
                lines.push_back(key + "=Length of the cutting edge ## shown beside the picture");
                lines.push_back(key + "-2=Length of the neck");
                lines.push_back(key + "-3=Length of the shank");
                break;
            case 9:
                lines.push_back("");
                lines.push_back("## group " + std::to_string(n / 10));
                break;
            default:
                lines.push_back(key + "=Caption number " + std::to_string(n) + " of the window");
            }
        }
        lines.resize(end);
    }
    lines.resize(qor::MessageCatalogue::MaxLines, "");
    std::string bytes;
    for (const std::string &line : lines) {
        bytes += line;
        bytes += "\r\n";
    }
    return bytes;
}

void BM_LoadCatalogue(benchmark::State &state)
{
    const std::string bytes = MakeCatalogue();
    for (auto _ : state) {
        qor::MessageCatalogue catalogue;
        auto status = catalogue.LoadFromBytes(bytes, "QORTool.msg");
        if (!status.ok()) {
            state.SkipWithError(status.error().message.c_str());
            break;
        }
        benchmark::DoNotOptimize(catalogue);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}
BENCHMARK(BM_LoadCatalogue)->Unit(benchmark::kMillisecond);

// 1000 look-ups the way the windows make them: mostly plain keys, some
// sub-keys, a few keys the catalogue lacks.
void BM_GetText1000(benchmark::State &state)
{
    qor::MessageCatalogue catalogue;
    if (!catalogue.LoadFromBytes(MakeCatalogue(), "QORTool.msg").ok()) {
        state.SkipWithError("the catalogue did not load");
        return;
    }
    std::vector<std::pair<std::string, std::string>> lookups;
    for (int i = 0; i < 1000; ++i) {
        int s = i % 7;
        int n = (i * 37) % 1200;
        std::string key = KeyPrefix(s) + std::to_string(n);
        if (i % 5 == 0) {
            key += i % 10 == 0 ? "-2" : "-3";
        } else if (i % 50 == 1) {
            key = "Text9999";
        }
        lookups.emplace_back(Sections[s], key);
    }
    std::size_t found = 0;
    for (auto _ : state) {
        for (const auto &[section, key] : lookups) {
            std::string text = catalogue.GetText(section, key);
            found += !text.empty();
            benchmark::DoNotOptimize(text);
        }
    }
    state.counters["found"] = static_cast<double>(found) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_GetText1000)->Unit(benchmark::kMicrosecond);

} // namespace
