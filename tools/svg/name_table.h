#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace svg {

/// Finds the place of a name in a fixed list, in about the time of one comparison. Built at compile time.
template <std::size_t kCount>
class NameTable {
public:
    static constexpr std::size_t kMissing = static_cast<std::size_t>(-1);

    constexpr explicit NameTable(const std::array<std::string_view, kCount>& names) : m_names(names) {
        for (std::size_t i = 0; i < kCount; ++i) {
            std::size_t slot = Hash(names[i]);
            while (m_slots[slot] != 0)
                slot = (slot + 1) % kSlots;
            m_slots[slot] = static_cast<unsigned short>(i + 1);
        }
    }

    constexpr std::size_t Find(std::string_view name) const {
        if (name.empty()) return kMissing;
        for (std::size_t slot = Hash(name); m_slots[slot] != 0; slot = (slot + 1) % kSlots) {
            const std::size_t index = m_slots[slot] - std::size_t{1};
            if (m_names[index] == name) return index;
        }
        return kMissing;
    }

private:
    static constexpr std::size_t kSlots = kCount * 4 + 1;

    static constexpr std::size_t Hash(std::string_view name) {
        const auto at = [name](std::size_t i) {
            return static_cast<std::size_t>(static_cast<unsigned char>(name[i]));
        };
        const std::size_t size = name.size();
        return (size * 131 + at(0) * 31 + at(size / 2) * 7 + at(size - 1) * 1031 + at(size / 3) * 257) %
               kSlots;
    }

    std::array<std::string_view, kCount> m_names;
    std::array<unsigned short, kSlots> m_slots{};
};

}  // namespace svg
