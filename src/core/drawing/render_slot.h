#pragma once

#include "picture_surface.h"
#include "workspace.h"

namespace qor {

// Draws a slot of the table exactly as the editor shows it after loading the slot: the form is
// filled as a load fills it, the ViewScale list set (fixedScale: true size, else fitted to the
// surface) and the tool redrawn with every redraw guard clear. The workspace is left as it was,
// the current slot and the guards included; the derived values the redraw writes go into a form
// of its own, never into the table. False, with the surface untouched, for a slot outside the
// table.
bool RenderSlot(Workspace &workspace, int slot, PictureSurface &surface, bool fixedScale);

} // namespace qor
