#include "fom/import_tally.h"

#include <bit>

namespace command {

void PaintTexts::AddColor(const svg::Color& color) {
    const std::uint64_t value = std::uint64_t{std::bit_cast<std::uint32_t>(color.alpha)} << 24 |
                                std::uint64_t{color.r} << 16 | std::uint64_t{color.g} << 8 | color.b;
    if (value == m_lastColor) return;
    m_colors.insert(value);
    m_lastColor = value;
}

void PaintTexts::Add(const svg::PaintValue& value, const svg::Color& current) {
    switch (value.kind) {
        case svg::PaintValue::Kind::None:
        case svg::PaintValue::Kind::ContextStroke:
            m_hasNone = true;
            return;
        case svg::PaintValue::Kind::Color:
            return AddColor(value.color);
        case svg::PaintValue::Kind::CurrentColor:
            return AddColor(current);
        case svg::PaintValue::Kind::Reference:
            if (m_references.find(value.reference) == m_references.end())
                m_references.emplace(value.reference);
            return;
    }
}

void PaintTexts::Add(const PaintTexts& other) {
    m_hasNone = m_hasNone || other.m_hasNone;
    m_colors.insert(other.m_colors.begin(), other.m_colors.end());
    m_references.insert(other.m_references.begin(), other.m_references.end());
}

void ImportTally::Add(const ImportTally& other) {
    unusedDefinitions += other.unusedDefinitions;
    filledStrokes += other.filledStrokes;
    fillBytes += other.fillBytes;
    outlineBytes += other.outlineBytes;
    omissions.Add(other.omissions);
    texts.Add(other.texts);
}

}  // namespace command
