#include "recording_surface.h"
#include "tool_drawing.h"

#include <benchmark/benchmark.h>
#include <string>

namespace {

// One redraw of the editor's picture: a cutter with a rounded corner on a tapered flank, a neck
// and a shoulder, in a holder of ten stepped and tapered sections, onto a 400 × 300 picture.
void RedrawToolWithTenSectionArbor(benchmark::State &state)
{
    qor::Workspace ws;
    qor::SizeToolTable(ws.Table, 1);
    ws.Table.Slots[0].ToolKind = qor::KindCut;
    ws.Table.CurrentSlot = 0;

    qor::EditorForm form;
    form.MagNo.Text = std::string("1");
    form.Tool.Index = qor::KindCut;
    const char *para[qor::ParaCount] = {"10", "0.5", "0", "4.5", "0", "1.5", "25", "0"};
    for (std::size_t i = 0; i < qor::ParaCount; ++i) {
        form.Para[i].Text = std::string(para[i]);
    }
    form.LenDef.Index = 2;
    const char *lengths[qor::LengthBoxCount] = {"60", "10", "35", "30", "0", "0"};
    for (std::size_t i = 0; i < qor::LengthBoxCount; ++i) {
        form.Lengths[i].Text = std::string(lengths[i]);
    }
    form.Shift.Text = std::string("12");
    form.Arbor.Index = 3;
    for (std::size_t i = 0; i < qor::ArborSectionCount; ++i) {
        form.Sections.Dia[i] = 16.0f + 4.0f * static_cast<float>(i);
        form.Sections.Len[i] = 8.0f;
        form.Sections.Flag[i] = i % 2;
    }

    qor::RecordingSurface surface(400, 300);
    for (auto _ : state) {
        const bool drawn = qor::RedrawTool(ws, form, surface);
        benchmark::DoNotOptimize(drawn);
        benchmark::DoNotOptimize(surface.Primitives().data());
    }
    state.counters["primitives"] = static_cast<double>(surface.Primitives().size());
}

BENCHMARK(RedrawToolWithTenSectionArbor)->Unit(benchmark::kMicrosecond);

} // namespace
