// The tool sheet of a 100-tool table written as a PDF, on Qt's offscreen platform.
#include "tool_list_reader.h"
#include "tool_sheet_painter.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

// A started workspace as far as the sheet needs it: the English catalogue and its names, and
// every position of a 100-position magazine holding one of the sample's tools, each with its
// arbor, length definition, option feeds and limit.
bool FillWorkspace(qor::Workspace &ws)
{
    if (!ws.Catalogue.Load(QOR_SOURCE_DIR "/data/QORTool.msg")) {
        return false;
    }
    for (int i = 0; i <= 9; ++i) {
        ws.Table.KindNames[static_cast<std::size_t>(i)] =
            ws.Text("String", "Str" + std::to_string(i));
    }
    ws.Table.KindNames[10] = ws.Text("String", "Str15");
    for (int i = 0; i < 4; ++i) {
        ws.Table.ArborTypeNames[static_cast<std::size_t>(i)] =
            ws.Text("String", "Str" + std::to_string(10 + i));
    }
    std::ifstream file(QOR_SOURCE_DIR "/data/samples/machining_centre.TTL", std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    qor::ToolTable sample;
    qor::SizeToolTable(sample, 100);
    qor::ReadToolListText(sample, text.str());
    std::vector<qor::ToolSlot> tools;
    for (const qor::ToolSlot &tool : sample.Slots) {
        if (tool.HasTool()) {
            tools.push_back(tool);
        }
    }
    qor::SizeToolTable(ws.Table, 100);
    ws.Globals.MagazineMax = 100;
    ws.Table.InitialMagazine = 1;
    for (std::size_t slot = 0; slot < ws.Table.Slots.size(); ++slot) {
        ws.Table.Slots[slot] = tools[slot % tools.size()];
    }
    return !tools.empty();
}

void SheetOf100ToolsToPdf(benchmark::State &state)
{
    qor::Workspace ws;
    if (!FillWorkspace(ws)) {
        state.SkipWithError("the catalogue or the sample cannot be read");
        return;
    }
    const std::string path =
        (std::filesystem::temp_directory_path() / "qortool_sheet_bench.pdf").string();

    for (auto _ : state) {
        const qor::Status written =
            qor::WriteToolSheetPdf(ws, path, qor::PaperSize::A4, "Atc.ttl", "2026-11-25 14:03");
        if (!written) {
            state.SkipWithError(written.error().message.c_str());
            break;
        }
    }
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
    std::remove(path.c_str());
}
BENCHMARK(SheetOf100ToolsToPdf)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QGuiApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
