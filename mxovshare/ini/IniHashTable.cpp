#include "ini/IniHashTable.h"

#include <algorithm>

namespace mxovshare {

void IniHashTable::Insert(std::uint32_t hash, std::uint32_t number) {
    if (2 * ++m_used > m_slots.size()) {
        std::vector<Slot> old(std::max<std::size_t>(16, 4 * m_slots.size()));
        old.swap(m_slots);
        for (const Slot& slot : old) {
            if (slot.number != kNone) {
                Place(slot);
            }
        }
    }
    Place({hash, number});
}

void IniHashTable::Place(Slot slot) {
    std::size_t at = Start(slot.hash);
    while (m_slots[at].number != kNone) {
        at = Next(at);
    }
    m_slots[at] = slot;
}

} // namespace mxovshare
