#pragma once

#include "table_change.h"

#include <cstdint>
#include <vector>

namespace qor {

// What differs from the tool list file as it was read or saved last: the
// positions touched since, and whether the file-level arbor and the initial
// magazine number were. A position touched and later set back still counts;
// writing it again costs little and is never wrong.
class UnsavedChanges
{
public:
    // A change was made or taken back in the table.
    void Note(const TableChange &change);

    // The table now matches the file (it was read or saved).
    void Clear();

    bool Any() const { return !m_slots.empty() || m_fileArbor || m_initialMagazine; }

    // The touched positions (slot indices), ascending.
    std::vector<int> Slots() const;

    bool FileArborChanged() const { return m_fileArbor; }
    bool InitialMagazineChanged() const { return m_initialMagazine; }

private:
    std::vector<int> m_slots;         // in the order first touched
    std::vector<std::uint8_t> m_seen; // by slot index
    bool m_fileArbor = false;
    bool m_initialMagazine = false;
};

} // namespace qor
