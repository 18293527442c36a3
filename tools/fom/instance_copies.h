#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "fom/instance_kinds.h"
#include "fom/instance_versions.h"

#include "svg/drawing_text.h"
#include "svg/namespaces.h"
#include "svg/splice.h"
#include "svg/start_tags.h"

namespace command {

/// Puts copies of what instances show beside the originals, where nothing is drawn: the same text with other
/// paints, under identifiers that the drawing does not have.
class InstanceCopies {
public:
    /// Makes one part of a copy what it is to be, `shapes` of which are drawn. False when its tag cannot be
    /// it.
    using Edit = std::function<bool(svg::Splice&, const svg::StartTag&, host::XmlNode element,
                                    const InstancePart&, std::size_t shapes)>;

    /// Uses all of them later on.
    InstanceCopies(const svg::DrawingText& text, const svg::Namespaces& namespaces,
                   const InstanceKinds& kinds, const InstanceVersions& versions);

    /// Leads a "use" to the copy for a kind, which is copied. False when its tag has no reference.
    bool Lead(svg::Splice& splice, const svg::StartTag& tag, std::size_t kind) const;

    /// Adds the copies of the element, if it has any. `starts` are the places of the tags of all elements
    /// around it, outermost first, and its own. False when the text is not what was read.
    bool Insert(svg::Splice& splice, host::XmlNode element, const std::vector<std::size_t>& starts,
                const Edit& edit) const;

private:
    std::string IdOf(std::size_t kind) const { return m_prefix + std::to_string(kind + 1); }
    std::optional<std::string> Copy(std::size_t kind, std::size_t start, const Edit& edit) const;
    bool IsAboutWhole(host::XmlNode element) const;

    const svg::DrawingText& m_text;
    const svg::Namespaces& m_namespaces;
    const InstanceKinds& m_kinds;
    const std::string m_prefix;
    /// The kinds that each element is copied for.
    std::unordered_map<const void*, std::vector<std::size_t>> m_copied;
};

}  // namespace command
