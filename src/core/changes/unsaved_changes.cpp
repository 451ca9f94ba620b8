#include "unsaved_changes.h"

#include <algorithm>

namespace qor {

void UnsavedChanges::Note(const TableChange &change)
{
    for (const SlotContents &slot : change.Slots) {
        if (slot.Slot < 0) {
            continue;
        }
        const auto index = static_cast<std::size_t>(slot.Slot);
        if (index >= m_seen.size()) {
            m_seen.resize(index + 1);
        }
        if (!m_seen[index]) {
            m_seen[index] = 1;
            m_slots.push_back(slot.Slot);
        }
    }
    m_fileArbor = m_fileArbor || change.Arbor.has_value();
    m_initialMagazine = m_initialMagazine || change.Initial.has_value();
}

void UnsavedChanges::Clear()
{
    *this = UnsavedChanges{};
}

std::vector<int> UnsavedChanges::Slots() const
{
    std::vector<int> slots = m_slots;
    std::sort(slots.begin(), slots.end());
    return slots;
}

} // namespace qor
