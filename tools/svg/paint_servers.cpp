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

void PaintServers::Touch(std::string_view reference) {
    host::XmlNode element = m_reading.ids.FindDefinition(reference);
    while (element && !m_reading.IsUsed(element)) {
        m_reading.MarkUsed(element);
        element = m_reading.ids.FindDefinition(HrefOf(element));
    }
}

}  // namespace svg
