#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "svg/content_graph.h"
#include "svg/reading.h"

namespace svg {

/// Writes the content of a pattern as canonical SVG text that stands on its own.
///
/// Prefixes, comments, blanks between elements, art of other languages and editors' attributes are left out;
/// attributes are sorted; styles from attributes, style sheets and style attributes become attributes; what
/// is referred to follows in a "defs" element, under ids that number the references in the order in which
/// they are met. Properties that the content or a definition inherits from where it stood in the document
/// stand on a group around it.
class ContentWriter {
public:
    ContentWriter(Reading& reading, host::XmlNode owner);

    /// The text; empty after a fault: content that refers back to itself, or repeats itself without measure.
    std::string Write();

    /// How many steps of filters the text that was written takes to draw, repetitions included.
    double FilterSteps() const { return m_filterSteps; }

private:
    using Attributes = std::map<std::string, std::string, std::less<>>;

    void WriteTree(host::XmlNode top, bool withInherited);
    void WriteStart(host::XmlNode element, bool withInherited);
    /// The first of the node and its later siblings that is written; text on the way is written at once.
    host::XmlNode SkipToWritten(host::XmlNode node, host::XmlNode top);
    void WriteAttributes(const Attributes& attributes);
    bool IsWritten(host::XmlNode element, host::XmlNode top) const;

    void CollectInherited(host::XmlNode element, Attributes& attributes);
    void CollectDeclared(host::XmlNode element, bool inheritedOnly, Attributes& attributes);
    void CollectOwn(host::XmlNode element, Attributes& attributes);
    std::string RenameUrls(std::string_view value, ContentGraph::Reach reach);
    std::string RenameReference(std::string_view reference, ContentGraph::Reach reach);
    void CheckRepetition();

    Reading& m_reading;
    host::XmlNode m_owner;
    std::string m_out;
    std::vector<host::XmlNode> m_targets;
    std::unordered_map<const void*, std::size_t> m_numbers;
    // The owner and the targets under their numbers.
    ContentGraph m_graph;
    double m_filterSteps = 0;
};

}  // namespace svg
