#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <unordered_map>

#include "fom/element_paints.h"
#include "fom/instance_kinds.h"

#include "svg/document.h"

namespace command {

/// Tells which instances of one drawing can have copies of their own. A copy has no identifiers within, so
/// that no rule of the style sheet may tell it from its original by them, or by what stands around it. And a
/// chain of "use" could multiply without end.
class InstanceLimits {
public:
    /// All copies together, in bytes, as reckoned before they are made.
    static constexpr std::size_t kMostBytes = std::size_t{64} << 20;

    /// The drawing, which is that of `xml`, has shown its shapes. All but the last are used later on.
    InstanceLimits(const svg::Document& drawing, const host::XmlDocument& xml, const ElementPaints& paints,
                   std::size_t bytesPerUnit);

    /// For InstanceVersions; when there is none, a copy counts.
    std::string_view FindObstacle(const InstanceKind& kind);

    /// A mask may show the drawing's own elements as well.
    bool SharesOriginals() const { return m_drawing.GetOmissions().Of("mask") == 0; }

private:
    struct Target {
        std::size_t length = 0;
        std::optional<bool> isToldById;
    };

    std::size_t LengthOf(host::XmlNode element) const;
    std::size_t CostOf(const InstanceKind& kind, std::size_t length) const;
    bool IsToldById(host::XmlNode element) const;

    const svg::Document& m_drawing;
    const host::XmlDocument& m_xml;
    const ElementPaints& m_paints;
    const std::size_t m_bytesPerUnit;
    bool m_rulesLookAround = false;
    std::size_t m_left = kMostBytes;
    std::unordered_map<const void*, Target> m_targets;
};

}  // namespace command
