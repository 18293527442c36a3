#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "fom/element_paint.h"

namespace command {

/// Stands in the text of a definition where its own identifier goes: XML text never holds it.
inline constexpr char kIdMark = '\x01';

/// The definitions that are added to one drawing, equal ones once, under identifiers that the drawing does
/// not have.
class SvgDefinitions {
public:
    /// All together, in bytes.
    static constexpr std::size_t kMostBytes = std::size_t{256} << 20;

    /// `drawing` is the text of the drawing.
    explicit SvgDefinitions(std::string_view drawing);

    /// The number of a definition, which is one element. Empty for one that would lead beyond kMostBytes.
    std::optional<std::size_t> Add(std::string definition);
    /// Declares the property as what the definition draws.
    void Refer(std::string_view property, std::size_t definition, ElementPaint& paint) const;
    /// Paints some element: its definitions are needed.
    void Use(const ElementPaint& paint);

    /// An element that holds the needed definitions, for anywhere within the drawing's document element;
    /// empty when there are none.
    std::string Element() const;

private:
    std::string IdOf(std::size_t definition) const;

    std::string m_prefix;
    std::unordered_map<std::string, std::size_t> m_numbers;
    std::vector<const std::string*> m_texts;
    std::vector<bool> m_used;
    std::size_t m_bytes = 0;
};

}  // namespace command
