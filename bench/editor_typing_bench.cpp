// Typing into the tool editor on Qt's offscreen platform: one character into
// the diameter box Para(0) until the tool picture is drawn anew and painted
// on the screen. Budget: below 5 ms.
#include "editor_picture.h"
#include "editor_windows.h"
#include "tool_editor_window.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <benchmark/benchmark.h>

namespace {

using namespace qor;

class SilentMessages final : public MessageService
{
public:
    MessageAnswer Show(const std::string &, MessageIcon, MessageButtons,
                       const std::string &) override
    {
        return MessageAnswer::Ok;
    }
};

// A cutter with a neck and a three-section arbor, the heaviest picture.
void PutTool(Workspace &ws)
{
    SizeToolTable(ws.Table, 10);
    ws.TenthKindOffered = true;
    ToolSlot &slot = ws.Table.Slots[0];
    slot.ToolKind = KindCut;
    slot.ToolDia = 10;
    slot.CornerRad = 0.5f;
    slot.Param5 = 30;
    slot.ToolLength = 22;
    slot.LengthMode = 3;
    slot.Len = {90, 12, 10, 45, 30, 12};
    slot.ArborMode = 3;
    slot.Arbor.Dia = {20, 34, 63};
    slot.Arbor.Len = {30, 40, 16};
    slot.Arbor.Flag = {1, 0, 0};
    ws.Table.CurrentSlot = 0;
}

void BM_TypeIntoDiameterUntilDrawn(benchmark::State &state)
{
    Workspace ws;
    PutTool(ws);
    SilentMessages messages;
    const EditorWindows windows = CreateEditorWindows(ws, nullptr, messages);
    ToolEditorWindow &editor = *windows.Editor;
    editor.resize(1100, 760);
    editor.ShowEditor();
    QCoreApplication::processEvents();
    auto *para0 = editor.findChild<QLineEdit *>("Para_0");
    auto *view = editor.findChild<EditorPicture *>("View");
    int redraws = 0;
    QObject::connect(&editor, &ToolEditorWindow::redrawn, [&redraws] { ++redraws; });
    para0->setFocus();
    int digit = 0;
    for (auto _ : state) {
        para0->selectAll();
        QTest::keyClick(para0, static_cast<char>('1' + digit)); // one new diameter
        view->repaint();
        digit = (digit + 1) % 9;
    }
    if (redraws != static_cast<int>(state.iterations())) {
        state.SkipWithError("not one redraw per keystroke");
    }
    state.counters["picture_px"] = view->width() * view->height();
    delete windows.Editor;
}
BENCHMARK(BM_TypeIntoDiameterUntilDrawn)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
