// A flat table from hashes to numbers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace mxovshare {

/// Open addressing; what makes two entries the same is the caller's question.
class IniHashTable {
public:
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    void Insert(std::uint32_t hash, std::uint32_t number);

    /// The first number inserted under `hash` that `matches` accepts; kNone when there is none.
    template <typename Matches>
    std::uint32_t Find(std::uint32_t hash, Matches matches) const {
        if (m_slots.empty()) {
            return kNone;
        }
        for (std::size_t at = Start(hash); m_slots[at].number != kNone; at = Next(at)) {
            if (m_slots[at].hash == hash && matches(m_slots[at].number)) {
                return m_slots[at].number;
            }
        }
        return kNone;
    }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t number = kNone;
    };

    std::size_t Start(std::uint32_t hash) const { return (hash ^ hash >> 16) & (m_slots.size() - 1); }
    std::size_t Next(std::size_t at) const { return (at + 1) & (m_slots.size() - 1); }
    void Place(Slot slot);

    std::vector<Slot> m_slots; // its size is zero or a power of two, at least twice the number of entries
    std::size_t m_used = 0;
};

} // namespace mxovshare
