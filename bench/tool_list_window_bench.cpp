// The tool list window on Qt's offscreen platform: refilling the list of the
// largest magazine as the user sees it (model reset and one painted screen),
// a keystroke in the find box, and start-up until the main window is shown.
#include "full_workspace.h"
#include "startup.h"
#include "tool_list_model.h"
#include "tool_list_proxy.h"
#include "tool_list_window.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTableView>
#include <benchmark/benchmark.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

namespace {

using namespace qor;

class SilentMessages final : public MessageService
{
public:
    MessageAnswer Show(const std::string &, MessageIcon, MessageButtons buttons,
                       const std::string &) override
    {
        return buttons == MessageButtons::YesNo ? MessageAnswer::No : MessageAnswer::Ok;
    }
};

void BM_ListViewRefill(benchmark::State &state)
{
    Workspace ws;
    bench::FillWorkspace(ws);
    ToolListContents contents;
    ToolListModel model;
    model.SetRows(&contents.Rows);
    QTableView view;
    view.setModel(&model);
    view.resize(1000, 700);
    view.show();
    QCoreApplication::processEvents();
    for (auto _ : state) {
        model.Fill(ws, contents);
        view.viewport()->repaint();
    }
    state.counters["rows"] = model.rowCount();
}
BENCHMARK(BM_ListViewRefill)->Unit(benchmark::kMillisecond);

// One keystroke in the find box as the view sees it: the rows matched again,
// the proxy's mapping rebuilt and one screen painted. The query grows and
// shrinks by a character, as typing and backspace do.
void BM_FindKeystroke(benchmark::State &state)
{
    Workspace ws;
    bench::FillWorkspace(ws);
    ToolListContents contents;
    ToolListModel model;
    model.SetRows(&contents.Rows);
    model.Fill(ws, contents);
    ToolListProxy proxy;
    proxy.setSourceModel(&model);
    proxy.SetRows(&contents.Rows);
    QTableView view;
    view.setModel(&proxy);
    view.resize(1000, 700);
    view.show();
    QCoreApplication::processEvents();
    const QString queries[] = {"D<1", "D<10", "bal", "ba"};
    std::size_t next = 0;
    for (auto _ : state) {
        proxy.SetQuery(queries[next++ % std::size(queries)]);
        view.viewport()->repaint();
    }
    state.counters["rows"] = model.rowCount();
}
BENCHMARK(BM_FindKeystroke)->Unit(benchmark::kMillisecond);

std::string ReadFile(const std::string &path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

// A program folder with the catalogue and settings, and a tool list file.
struct ProgramFolder
{
    explicit ProgramFolder(const std::string &ini)
    {
        folder = std::filesystem::temp_directory_path() / "qortool-startup-bench";
        std::filesystem::create_directories(folder);
        std::ofstream(folder / "QORTool.msg", std::ios::binary)
            << ReadFile(std::string(QOR_SOURCE_DIR) + "/data/QORTool.msg");
        std::ofstream(folder / "QorTool.INI", std::ios::binary) << ini;
        std::ofstream(folder / "atc.TTL", std::ios::binary)
            << ReadFile(std::string(QOR_SOURCE_DIR) + "/data/samples/machining_centre.TTL");
    }
    ~ProgramFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(folder, error);
    }
    std::filesystem::path folder;
};

void BM_StartupUntilShown(benchmark::State &state)
{
    const bool largest = state.range(0) != 0;
    ProgramFolder program(largest ? "[Config]\r\nMagazine Max=32767\r\n" : "");
    SilentMessages messages;
    for (auto _ : state) {
        Workspace ws;
        if (RunStartup(ws, program.folder.string(), messages) != 0) {
            state.SkipWithError("start-up failed");
            break;
        }
        ws.DrawSuppressed = true;
        ToolListWindow window(ws, messages,
                              QString::fromStdString((program.folder / "atc.TTL").string()));
        window.show();
        QCoreApplication::processEvents();
        ws.DrawSuppressed = false;
        benchmark::DoNotOptimize(window.isVisible());
    }
    state.SetLabel(largest ? "Magazine Max 32767" : "Magazine Max 100");
}
BENCHMARK(BM_StartupUntilShown)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QElapsedTimer timer;
    timer.start();
    QApplication app(argc, argv);
    std::cout << "QApplication created in " << timer.elapsed() << " ms\n";
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
