#include "svg/document.h"

#include <string>
#include <utility>

#include "svg/paint_servers.h"
#include "svg/reading.h"
#include "svg/stroke_reader.h"

namespace svg {

struct Document::Content {
    explicit Content(const host::XmlDocument& xml)
        : reading(xml), servers(reading), strokes(reading, servers) {}

    Reading reading;
    PaintServers servers;
    StrokeReader strokes;
};

Document::Document() = default;
Document::~Document() = default;

bool Document::LoadFile(const std::filesystem::path& path) {
    m_content.reset();
    m_omissions = {};
    if (!m_xml.LoadFile(path)) {
        m_error = m_xml.GetError();
        return false;
    }
    return Start(m_xml.GetError().what);
}

bool Document::LoadText(std::string_view text, std::string_view name) {
    m_content.reset();
    m_omissions = {};
    if (!m_xml.LoadText(text, name)) {
        m_error = m_xml.GetError();
        return false;
    }
    return Start(std::string(name));
}

bool Document::Start(std::string name) {
    m_name = std::move(name);
    m_error = {};
    m_content = std::make_unique<Content>(m_xml);
    Reading& reading = m_content->reading;
    const bool isSvg = reading.namespaces.TagOf(reading.root) == Tag::Svg;
    if (isSvg) {
        reading.Survey();
    } else {
        const std::string root(reading.root.Name().substr(0, 60));
        reading.Fail(reading.root, "not an SVG drawing: the root element is '" + root + "'");
    }
    return !reading.HasFailed() || Fail();
}

bool Document::ForEachShape(const ShapeVisitor& visit) {
    if (!m_content) return false;
    Reading& reading = m_content->reading;
    Walker(reading, m_content->servers, m_content->strokes, visit).Run();
    if (reading.HasFailed()) return Fail();
    reading.omissions.Count("unused definitions", reading.CountUnused());
    m_omissions = std::exchange(reading.omissions, Omissions());
    return true;
}

bool Document::AsksForId(std::string_view id) const {
    return m_content && m_content->reading.sheet.AsksForId(id);
}

bool Document::Fail() {
    const Fault fault = *m_content->reading.GetFault();
    m_error = {.what = m_name, .offset = 0, .line = 0, .reason = fault.reason};
    if (fault.element) {
        m_error.offset = fault.element.Offset();
        m_error.line = m_xml.LineOf(fault.element.Offset());
    }
    m_content.reset();
    return false;
}

}  // namespace svg
