#pragma once

#include "editor_form.h"

class QComboBox;

namespace qor {

class NumericBox;

// Shows a list's state from the editor form: its position (changed only when
// it differs) and whether it is enabled.
void ShowList(QComboBox &list, const ListBox &state);

// Shows a box's state from the editor form: its text (left alone when it is
// already shown, so that the cursor stays) and whether it is enabled.
void ShowBox(NumericBox &box, const TextBox &state);

} // namespace qor
