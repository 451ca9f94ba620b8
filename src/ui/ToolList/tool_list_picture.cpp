#include "editor_form.h"
#include "picture_surface.h"
#include "render_slot.h"
#include "tool_drawing.h"
#include "tool_list_window.h"

namespace qor {

// The list's own picture: the selected tool as the editor would draw it, or,
// while the arbor button has the focus, the file-level arbor alone. It is
// painted whenever the widget needs it, so it does not wait for the redraw
// guards that keep the editor from drawing while it fills its boxes.
void ToolListWindow::DrawPicture(PictureSurface &surface)
{
    surface.Clear();
    if (m_arborPicture) {
        EditorForm form;
        form.MagNo.Text.assign(1, '0');
        form.Arbor.Index = 0; // with ArborOnlyMode: the file's arbor type
        form.Sections = m_ws.Table.DefaultArbor;
        const bool arborOnly = m_ws.ArborOnlyMode;
        m_ws.ArborOnlyMode = true;
        DrawTool(m_ws, form, surface);
        m_ws.ArborOnlyMode = arborOnly;
        return;
    }
    const int slot = m_ws.Table.CurrentSlot;
    if (slot >= 0 && slot < static_cast<int>(m_ws.Table.Slots.size()) &&
        m_ws.Table.Slots[static_cast<std::size_t>(slot)].HasTool()) {
        RenderSlot(m_ws, slot, surface, false);
    }
}

} // namespace qor
