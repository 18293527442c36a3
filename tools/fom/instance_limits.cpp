#include "fom/instance_limits.h"

#include "svg/tree_walk.h"

namespace command {
namespace {

/// What a copy and each part of it at most have more than the original, declarations apart.
constexpr std::size_t kMarkup = 24;

constexpr std::string_view kDisputed = "drawn several times with different paints";
constexpr std::string_view kTooMuch = "copies beyond 64 MiB";

}  // namespace

InstanceLimits::InstanceLimits(const svg::Document& drawing, const host::XmlDocument& xml,
                               const ElementPaints& paints, std::size_t bytesPerUnit)
    : m_drawing(drawing), m_xml(xml), m_paints(paints), m_bytesPerUnit(bytesPerUnit) {
    for (const char* unread : {"unsupported selector", "at-rule in style sheet", "external style sheet"})
        m_rulesLookAround = m_rulesLookAround || drawing.GetOmissions().Of(unread) > 0;
}

std::string_view InstanceLimits::FindObstacle(const InstanceKind& kind) {
    if (m_rulesLookAround) return kDisputed;
    const auto [known, isNew] = m_targets.try_emplace(kind.target.Identity());
    Target& target = known->second;
    if (isNew) target.length = LengthOf(kind.target);
    const std::size_t cost = CostOf(kind, target.length);
    if (cost > m_left) return kTooMuch;
    if (!target.isToldById) target.isToldById = IsToldById(kind.target);
    if (*target.isToldById) return kDisputed;
    m_left -= cost;
    return {};
}

/// With what follows up to the next node.
std::size_t InstanceLimits::LengthOf(host::XmlNode element) const {
    for (host::XmlNode at = element; at; at = at.Parent())
        if (const host::XmlNode next = at.NextSibling()) return next.Offset() - element.Offset();
    return m_xml.Size() - element.Offset();
}

std::size_t InstanceLimits::CostOf(const InstanceKind& kind, std::size_t length) const {
    std::size_t units = length + kMarkup;
    for (const InstancePart& part : kind.parts)
        units += kMarkup + (part.isUse ? 0 : m_paints[part.number].paint.declarations.size());
    return units * m_bytesPerUnit;
}

bool InstanceLimits::IsToldById(host::XmlNode element) const {
    bool isTold = false;
    svg::WalkElements(element, [&](host::XmlNode inner, unsigned) {
        isTold = isTold || m_drawing.AsksForId(inner.Attribute("id").Value());
        return !isTold;
    });
    return isTold;
}

}  // namespace command
