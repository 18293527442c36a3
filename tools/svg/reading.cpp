#include "svg/reading.h"

#include <unordered_map>
#include <utility>

#include "svg/scanner.h"
#include "svg/tree_walk.h"

namespace svg {
namespace {

/// Steps of work that any document may cause, and more for each byte of it.
constexpr std::uint64_t kFreeSteps = std::uint64_t{32} << 20;
constexpr std::uint64_t kStepsPerByte = 16;

constexpr std::uint64_t kFreeContent = std::uint64_t{256} << 10;

}  // namespace

Reading::Reading(const host::XmlDocument& document)
    : xml(document),
      root(document.Root()),
      namespaces(root),
      viewport(RootViewport(root)),
      budget(kFreeSteps + kStepsPerByte * document.Size()),
      ids(root, namespaces),
      cascade(namespaces, sheet, omissions, budget),
      m_contentLeft(kFreeContent + document.Size()) {}

void Reading::Fail(host::XmlNode element, std::string reason) {
    if (!m_fault) m_fault = Fault{element, std::move(reason)};
}

void Reading::CountUnresolved(std::string_view reference) {
    omissions.Count(reference.starts_with('#') ? "unresolved reference" : "external reference");
}

void Reading::SpendContent(host::XmlNode element, std::size_t bytes) {
    if (bytes > m_contentLeft || budget.IsExhausted())
        return Fail(element, "pattern content repeats too much art");
    m_contentLeft -= bytes;
    budget.Spend(64 + bytes / 8);
}

void Reading::Survey() {
    for (host::XmlNode node = xml.Top().FirstChild(); node; node = node.NextSibling()) {
        if (node.Name() == "xml-stylesheet") omissions.Count("external style sheet");
    }
    std::vector<host::XmlNode> referring;
    WalkElements(root, [&](host::XmlNode element, unsigned depth) {
        if (depth >= kMaxDepth) {
            Fail(element, "elements nested deeper than " + std::to_string(kMaxDepth) + " levels");
            return false;
        }
        const Tag tag = namespaces.TagOf(element);
        if (tag == Tag::StyleSheet) AddStyleSheet(element);
        if (IsPaintServer(tag)) {
            ++m_definitionCount;
            const References references = ReferencesOf(element);
            if (!references.id.empty()) ids.AddDefinition(references.id, element);
            if (!references.href.empty()) referring.push_back(element);
        }
        return tag != Tag::Metadata;
    });
    if (!HasFailed()) CheckDefinitionCircles(referring);
}

void Reading::AddStyleSheet(host::XmlNode element) {
    const host::XmlAttribute type = element.Attribute("type");
    if (type && !type.Empty() && !EqualsNoCase(Trim(type.Value()), "text/css")) {
        omissions.Count("style language");
        return;
    }
    std::string text(element.Value());
    for (host::XmlNode node = element.FirstChild(); node; node = node.NextSibling()) {
        if (node.GetKind() == host::XmlNode::Kind::Text) text += node.Value();
    }
    sheet.Add(std::move(text), omissions);
}

void Reading::CheckDefinitionCircles(const std::vector<host::XmlNode>& definitions) {
    // The number of the chain in which a definition was first met: meeting one of the same chain again is a
    // circle.
    std::unordered_map<const void*, std::size_t> chains;
    for (std::size_t chain = 0; chain < definitions.size(); ++chain) {
        host::XmlNode at = definitions[chain];
        while (at) {
            const auto [met, isNew] = chains.emplace(at.Identity(), chain);
            if (!isNew) {
                if (met->second == chain) return Fail(at, "reference circle of gradients or patterns");
                break;
            }
            at = ids.FindDefinition(ReferencesOf(at).href);
        }
    }
}

}  // namespace svg
