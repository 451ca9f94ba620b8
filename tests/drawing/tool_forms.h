#pragma once

#include "../editing/editor_fixture.h"
#include "workspace.h"

#include <string>

namespace qor::test {

// A tool as the editor's boxes hold it; the Para and length boxes as texts between blanks.
struct ToolBoxes
{
    int kind = 0;
    std::string para = "10 0 0 0 0 0 20 0";
    int lengthMode = 1;
    std::string lengths = "50 0 0 0 0 0";
    int arbor = 0;
    ArborSections sections{};
    std::string shift = "0";
};

inline EditorForm FormOf(const ToolBoxes &tool, const char *magNo = "1")
{
    EditorForm form;
    form.MagNo.Text = magNo;
    form.Tool.Index = tool.kind;
    Fill(form.Para, tool.para);
    form.LenDef.Index = tool.lengthMode;
    Fill(form.Lengths, tool.lengths);
    form.Arbor.Index = tool.arbor;
    form.Sections = tool.sections;
    form.Shift.Text = tool.shift;
    return form;
}

// A table whose current slot 0 holds a tool, so that no redraw guard is set.
inline Workspace WorkspaceWithTool()
{
    Workspace ws;
    SizeToolTable(ws.Table, 3);
    ws.Table.Slots[0].ToolKind = KindCut;
    ws.Table.CurrentSlot = 0;
    return ws;
}

} // namespace qor::test
