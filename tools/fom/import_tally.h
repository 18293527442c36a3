#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#include "svg/omissions.h"
#include "svg/style.h"

namespace command {

/// The distinct values of fills as style sheets write them: "none", "#ff0000", "url(#id)". A reference counts
/// once for all drawings that use that id.
class PaintTexts {
public:
    void Add(const svg::PaintValue& value, const svg::Color& current);
    void Add(const PaintTexts& other);
    std::size_t Colors() const { return m_colors.size(); }
    std::size_t References() const { return m_references.size(); }
    /// All of them.
    std::size_t Count() const { return m_colors.size() + m_references.size() + (m_hasNone ? 1U : 0U); }

private:
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };

    void AddColor(const svg::Color& color);

    bool m_hasNone = false;
    std::uint64_t m_lastColor = ~std::uint64_t{0};
    std::unordered_set<std::uint64_t> m_colors;
    std::unordered_set<std::string, TextHash, std::equal_to<>> m_references;
};

/// What is counted while drawings are read.
struct ImportTally {
    std::size_t unusedDefinitions = 0;
    std::size_t filledStrokes = 0;  ///< by a gradient or a pattern
    std::int64_t fillBytes = 0;     ///< heap taken for fills
    std::int64_t outlineBytes = 0;  ///< heap taken for outlines
    svg::Omissions omissions;
    PaintTexts texts;

    void Add(const ImportTally& other);
};

}  // namespace command
