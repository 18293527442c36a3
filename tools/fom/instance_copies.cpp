#include "fom/instance_copies.h"

#include <utility>

#include "fom/free_prefix.h"

#include "svg/tree_walk.h"

namespace command {

InstanceCopies::InstanceCopies(const svg::DrawingText& text, const svg::Namespaces& namespaces,
                               const InstanceKinds& kinds, const InstanceVersions& versions)
    : m_text(text), m_namespaces(namespaces), m_kinds(kinds), m_prefix(FreePrefix(text.Units(), "copy")) {
    for (std::size_t i = 0; i < kinds.Kinds().size(); ++i)
        if (versions.IsCopied(i)) m_copied[kinds.Kinds()[i].target.Identity()].push_back(i);
}

bool InstanceCopies::Lead(svg::Splice& splice, const svg::StartTag& tag, std::size_t kind) const {
    for (const svg::TagAttribute& href : {tag.href, tag.prefixedHref})
        if (href) splice.Replace(href.value, href.end, "#" + IdOf(kind));
    return tag.href || tag.prefixedHref;
}

bool InstanceCopies::Insert(svg::Splice& splice, host::XmlNode element,
                            const std::vector<std::size_t>& starts, const Edit& edit) const {
    const auto found = m_copied.find(element.Identity());
    if (found == m_copied.end()) return true;
    std::string copies;
    for (const std::size_t kind : found->second) {
        const std::optional<std::string> copy = Copy(kind, starts.back(), edit);
        if (!copy) return false;
        copies += *copy;
    }
    std::size_t depth = starts.size() - 1;
    host::XmlNode around = element.Parent();
    // It could choose definitions.
    for (; m_namespaces.TagOf(around) == svg::Tag::Switch; around = around.Parent())
        --depth;
    const bool isUndrawn = m_namespaces.TagOf(around) == svg::Tag::Definitions;
    const std::string_view name = element.Name();
    const std::string wrapper = std::string(name.substr(0, name.find(':') + 1)) + "defs>";
    if (!isUndrawn) splice.Insert(starts[depth], "<" + wrapper);
    splice.InsertBytes(starts[depth], std::move(copies));
    if (!isUndrawn) splice.Insert(starts[depth], "</" + wrapper);
    return true;
}

/// Nothing when the text is not what was read.
std::optional<std::string> InstanceCopies::Copy(std::size_t kind, std::size_t start, const Edit& edit) const {
    const InstanceKind& copied = m_kinds.Kinds()[kind];
    auto part = copied.parts.begin();
    svg::StartTagReader tags(m_text.Units(), start);
    svg::Splice splice;
    bool good = true;
    svg::WalkElements(copied.target, [&](host::XmlNode element, unsigned depth) {
        const std::optional<svg::StartTag> tag = good ? tags.Next() : std::nullopt;
        good = tag && tag->name == element.Name() && (depth > 0 || tag->id);
        if (!good) return false;
        if (IsAboutWhole(element)) {
            const std::optional<std::size_t> end = tags.Leave(depth);
            if (end) splice.Replace(tag->start, *end, {});
            good = end.has_value();
            return false;
        }
        if (depth == 0) {
            splice.Replace(tag->id.value, tag->id.end, IdOf(kind));
        } else if (tag->id) {
            splice.Replace(tag->id.begin, tag->id.end + 1, {});
        }
        if (part != copied.parts.end() && part->element == element.Identity())
            good = edit(splice, *tag, element, *part++, copied.times);
        return good;
    });
    const std::optional<std::size_t> end = good && part == copied.parts.end() ? tags.Leave(0) : std::nullopt;
    if (!end) return std::nullopt;
    return splice.Apply(m_text, start, *end);
}

/// What would count twice, wherever it stands.
bool InstanceCopies::IsAboutWhole(host::XmlNode element) const {
    const svg::Tag tag = m_namespaces.TagOf(element);
    return tag == svg::Tag::StyleSheet || tag == svg::Tag::Script;
}

}  // namespace command
