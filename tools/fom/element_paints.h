#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "fom/element_paint.h"

namespace command {

/// The paints of one drawing's elements, equal ones once.
class ElementPaints {
public:
    struct Entry {
        ElementPaint paint;
        /// Nothing of the drawing's own paint stays beside it.
        bool isWhole = false;
    };

    /// The number of a paint.
    std::size_t Add(ElementPaint paint, bool isWhole) {
        const auto [known, isNew] =
            m_numbers.try_emplace((isWhole ? "+" : "-") + paint.declarations, m_entries.size());
        if (isNew) m_entries.push_back({std::move(paint), isWhole});
        return known->second;
    }

    const Entry& operator[](std::size_t number) const { return m_entries[number]; }

private:
    std::unordered_map<std::string, std::size_t> m_numbers;
    std::vector<Entry> m_entries;
};

}  // namespace command
