#pragma once

#include "draw_inputs.h"
#include "editor_form.h"
#include "picture_surface.h"
#include "tool_profiles.h"
#include "workspace.h"

#include <functional>
#include <optional>

namespace qor {

// Told of every box the redraw writes back into the form (while form.DerivedWrite is set), so
// that a window can refresh that widget.
using FormChangeListener = std::function<void(FormField)>;

// The scale that fits the tool and its whole arbor into a picture of W × H (absolute, in the
// picture's units) with a 5 % margin, the tool tip as far below the centre as the top of the
// arbor is above it. The width counts the outline as drawn (MagNo 1 or more), which a flank or
// a tip can make wider than D. False, with `view` untouched, when nothing could be drawn to such a
// scale: a zero total length together with a zero width, or a scale not positive or not finite.
bool FitScale(const DrawInputs &in, double width, double height, ViewTransform &view);

// True size: scale 1, centred on the tool and the first four arbor sections only, so that a long
// arbor runs off the top while the tool stays in view. False when a length is not finite.
bool FixedScale(const DrawInputs &in, ViewTransform &view);

// The outline of the tool by its kind: VER, OVA, RAD and T-T each have their own; every other
// kind (and none) the general outline, or the hollow-corner one for a negative corner radius.
void DrawProfile(PictureSurface &surface, const DrawInputs &in, const ViewTransform &view);

// The arbor sections bottom up from the tool length, in its style, with the closing top line.
void DrawArbor(PictureSurface &surface, const DrawInputs &in, const ViewTransform &view);

// What one DrawTool did: the inputs as drawn (DrawLength 0 for the arbor alone) and the scale,
// absent when nothing could be drawn.
struct ToolPicture
{
    DrawInputs Inputs;
    std::optional<ViewTransform> View;
};

// Draws the form's tool onto the surface, which the caller has cleared: origin in the centre of
// the picture, y up, the scale chosen by the ViewScale list, the profile of the tool's kind
// (unless MagNo is 0 or less), the arbor and the red SHIFT marker on the axis.
ToolPicture DrawTool(const Workspace &workspace, const EditorForm &form, PictureSurface &surface);

// The one entry into the drawing, for the editor and the list window alike. Does nothing while
// DrawSuppressed, EditorBusy or DrawHold is set or the current slot is outside the table; else
// clears the picture, and unless the slot is empty while ArborOnlyMode is set, writes the values
// that follow from the tool's kind back into the form (when MagNo is 1 or more) and draws it.
// EditorBusy is set for exactly that span. True when it went on to draw (which draws nothing for
// a tool and arbor without any size).
bool RedrawTool(Workspace &workspace, EditorForm &form, PictureSurface &surface,
                const FormChangeListener &changed = {});

} // namespace qor
