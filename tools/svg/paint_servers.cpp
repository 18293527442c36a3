#include "svg/paint_servers.h"

namespace svg {

PaintServers::PaintServers(Reading& reading)
    : m_reading(reading),
      m_definitions(reading),
      m_gradients(reading, m_definitions),
      m_patterns(reading, m_definitions) {}

const Paint* PaintServers::Find(std::string_view reference) {
    const host::XmlNode element = m_reading.ids.FindDefinition(reference);
    if (!element) return nullptr;
    const auto [paint, isNew] = m_paints.try_emplace(element.Identity());
    if (isNew) {
        const bool pattern = m_reading.namespaces.TagOf(element) == Tag::Pattern;
        paint->second = pattern ? m_patterns.Read(element) : m_gradients.Read(element);
    }
    return &paint->second;
}

Paint PaintServers::Resolve(const PaintValue& value, const Style& style) {
    PaintValue::Kind kind = value.kind;
    if (kind == PaintValue::Kind::Reference) {
        if (const Paint* paint = Find(value.reference)) return *paint;
        m_reading.CountUnresolved(value.reference);
        kind = value.fallback;
    }
    switch (kind) {
        case PaintValue::Kind::Color:
            return {.kind = Paint::Kind::Solid, .color = value.color};
        case PaintValue::Kind::CurrentColor:
            return {.kind = Paint::Kind::Solid, .color = style.color};
        default:
            return {};
    }
}

void PaintServers::Touch(std::string_view reference) {
    host::XmlNode element = m_reading.ids.FindDefinition(reference);
    while (element && !m_reading.IsUsed(element)) {
        m_reading.MarkUsed(element);
        element = m_reading.ids.FindDefinition(HrefOf(element));
    }
}

}  // namespace svg
