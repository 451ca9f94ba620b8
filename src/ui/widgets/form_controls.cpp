#include "form_controls.h"

#include "numeric_box.h"
#include "qt_text.h"

#include <QComboBox>

namespace qor {

void ShowList(QComboBox &list, const ListBox &state)
{
    if (list.currentIndex() != state.Index) {
        list.setCurrentIndex(state.Index);
    }
    list.setEnabled(state.Enabled);
}

void ShowBox(NumericBox &box, const TextBox &state)
{
    box.ShowText(Qs(state.Text));
    box.setEnabled(state.Enabled);
}

} // namespace qor
