#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "host/base/error.h"
#include "host/xml/xml_document.h"

#include "svg/omissions.h"
#include "svg/shape.h"
#include "svg/walker.h"

namespace svg {

/// One SVG drawing and what its shapes are painted with.
///
/// Nothing outside the file is ever opened. A drawing with an error is to contribute nothing: some errors,
/// such as circles among references, show only while shapes are visited, so what a visitor gathered counts
/// when ForEachShape has answered true.
class Document {
public:
    Document();
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    /// Reads a file, or a text that `name` stands for in errors. Answers false on an error; the document is
    /// then empty.
    bool LoadFile(const std::filesystem::path& path);
    bool LoadText(std::string_view text, std::string_view name = {});

    /// Shows each painted shape in drawing order. False on an error; the document is then empty.
    /// Gradients, patterns and markers of the shapes stay valid until the next load, also afterwards.
    bool ForEachShape(const ShapeVisitor& visit);

    /// Whether the style sheet has rules for elements of that id.
    bool AsksForId(std::string_view id) const;

    /// Why the last call answered false: file, line (0 when not known) and reason.
    const host::Error& GetError() const { return m_error; }

    /// What could not be taken into account, complete after ForEachShape.
    const Omissions& GetOmissions() const { return m_omissions; }

private:
    struct Content;

    bool Start(std::string name);
    bool Fail();

    host::XmlDocument m_xml;
    std::unique_ptr<Content> m_content;
    std::string m_name;
    host::Error m_error;
    Omissions m_omissions;
};

}  // namespace svg
