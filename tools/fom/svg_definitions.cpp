#include "fom/svg_definitions.h"

#include <utility>

#include "fom/free_prefix.h"

namespace command {
namespace {

void AppendWithId(std::string& out, std::string_view text, std::string_view id) {
    for (;;) {
        const std::size_t mark = text.find(kIdMark);
        out.append(text.substr(0, mark));
        if (mark == std::string_view::npos) return;
        out += id;
        text.remove_prefix(mark + 1);
    }
}

}  // namespace

SvgDefinitions::SvgDefinitions(std::string_view drawing) : m_prefix(FreePrefix(drawing, "paint")) {}

std::optional<std::size_t> SvgDefinitions::Add(std::string definition) {
    const auto found = m_numbers.find(definition);
    if (found != m_numbers.end()) return found->second;
    if (definition.size() > kMostBytes - m_bytes) return std::nullopt;
    m_bytes += definition.size();
    const auto added = m_numbers.emplace(std::move(definition), m_texts.size()).first;
    m_texts.push_back(&added->first);
    m_used.push_back(false);
    return added->second;
}

void SvgDefinitions::Refer(std::string_view property, std::size_t definition, ElementPaint& paint) const {
    paint.Declare(property, "url(#" + IdOf(definition) + ")");
    paint.definitions.push_back(definition);
}

void SvgDefinitions::Use(const ElementPaint& paint) {
    for (const std::size_t definition : paint.definitions)
        m_used[definition] = true;
}

std::string SvgDefinitions::IdOf(std::size_t definition) const {
    return m_prefix + std::to_string(definition + 1);
}

std::string SvgDefinitions::Element() const {
    std::string text;
    for (std::size_t i = 0; i < m_texts.size(); ++i)
        if (m_used[i]) AppendWithId(text, *m_texts[i], IdOf(i));
    if (text.empty()) return text;
    return "<defs xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\">" + text +
           "</defs>";
}

}  // namespace command
