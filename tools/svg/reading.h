#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "host/xml/xml_document.h"

#include "svg/budget.h"
#include "svg/cascade.h"
#include "svg/id_index.h"
#include "svg/namespaces.h"
#include "svg/omissions.h"
#include "svg/style_sheet.h"
#include "svg/viewport.h"

namespace svg {

/// Why a document cannot be used, and at which element (null: no particular one).
struct Fault {
    host::XmlNode element;
    std::string reason;
};

/// What the parts of the reader share while they read one document.
class Reading {
public:
    /// Deepest nesting of elements, in the text and as drawn.
    static constexpr unsigned kMaxDepth = 1024;

    explicit Reading(const host::XmlDocument& xml);
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

    /// Looks over the whole tree: style sheets, paint definitions, nesting, and circles among definitions.
    void Survey();

    /// Keeps the first fault.
    void Fail(host::XmlNode element, std::string reason);
    bool HasFailed() const { return m_fault.has_value(); }
    const std::optional<Fault>& GetFault() const { return m_fault; }

    /// Charges bytes of pattern content, which one document may multiply by naming the same art in many
    /// patterns.
    void SpendContent(host::XmlNode element, std::size_t bytes);

    /// Counts a reference that leads nowhere, or out of the document.
    void CountUnresolved(std::string_view reference);

    /// Notes that a definition is reached from something painted.
    void MarkUsed(host::XmlNode definition) { m_used.insert(definition.Identity()); }
    bool IsUsed(host::XmlNode definition) const { return m_used.contains(definition.Identity()); }
    std::size_t CountUnused() const { return m_definitionCount - m_used.size(); }

    const host::XmlDocument& xml;
    const host::XmlNode root;
    const Namespaces namespaces;
    const Viewport viewport;
    Omissions omissions;
    Budget budget;
    IdIndex ids;
    StyleSheet sheet;
    Cascade cascade;

private:
    void AddStyleSheet(host::XmlNode element);
    void CheckDefinitionCircles(const std::vector<host::XmlNode>& definitions);

    std::optional<Fault> m_fault;
    std::unordered_set<const void*> m_used;
    std::size_t m_definitionCount = 0;
    std::uint64_t m_contentLeft;
};

}  // namespace svg
