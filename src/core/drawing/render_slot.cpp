#include "render_slot.h"

#include "editor_rules.h"
#include "tool_drawing.h"

namespace qor {

bool RenderSlot(Workspace &workspace, int slot, PictureSurface &surface, bool fixedScale)
{
    if (slot < 0 || static_cast<std::size_t>(slot) >= workspace.Table.Slots.size()) {
        return false;
    }
    struct Saved
    {
        std::int16_t currentSlot;
        bool drawSuppressed, editorBusy, drawHold, arborOnlyMode;
    } const saved{workspace.Table.CurrentSlot, workspace.DrawSuppressed, workspace.EditorBusy,
                  workspace.DrawHold, workspace.ArborOnlyMode};
    workspace.DrawSuppressed = false;
    workspace.EditorBusy = false;
    workspace.DrawHold = false;
    workspace.ArborOnlyMode = false;

    EditorForm form = FillFormFromSlot(workspace, slot);
    form.ViewScale.Index = fixedScale ? 1 : 0;
    workspace.Table.CurrentSlot = static_cast<std::int16_t>(slot);
    RedrawTool(workspace, form, surface);

    workspace.Table.CurrentSlot = saved.currentSlot;
    workspace.DrawSuppressed = saved.drawSuppressed;
    workspace.EditorBusy = saved.editorBusy;
    workspace.DrawHold = saved.drawHold;
    workspace.ArborOnlyMode = saved.arborOnlyMode;
    return true;
}

} // namespace qor
