#include "fom/drawing_rewriter.h"

#include <cstddef>
#include <string_view>
#include <utility>
#include <vector>

#include "host/base/atomic_file.h"

#include "fom/element_paints.h"
#include "fom/element_style.h"
#include "fom/instance_copies.h"
#include "fom/instance_kinds.h"
#include "fom/instance_limits.h"
#include "fom/instance_versions.h"
#include "fom/path_text.h"
#include "fom/svg_definitions.h"
#include "fom/svg_fill.h"
#include "fom/svg_stroke.h"

#include "svg/document.h"
#include "svg/splice.h"
#include "svg/start_tags.h"
#include "svg/tree_walk.h"

namespace command {
namespace {

/// One drawing while it is rewritten.
class Rewriting {
public:
    Rewriting(std::string bytes, const PaintDocument& document, const SourceDrawing& drawing,
              std::size_t first)
        : m_document(document),
          m_drawing(drawing),
          m_first(first),
          m_text(std::move(bytes)),
          m_definitions(m_text.Units()),
          m_fills(m_definitions),
          m_strokes(m_definitions, m_fills) {}

    /// Answers why the drawing cannot be used; nothing when the result is whole.
    std::optional<std::string> Run();
    RewrittenDrawing Take() { return std::move(m_result); }

private:
    bool IsSource() const;
    void Add(const svg::Shape& shape);
    bool PaintAll(const svg::Document& drawing);
    bool PaintElements(const InstanceVersions& versions, const InstanceCopies& copies,
                       const InstanceCopies::Edit& edit);
    void Paint(svg::Splice& splice, const svg::StartTag& tag, host::XmlNode element, std::size_t paint,
               std::size_t shapes);

    const PaintDocument& m_document;
    const SourceDrawing& m_drawing;
    const std::size_t m_first;
    std::size_t m_seen = 0;
    const svg::DrawingText m_text;
    SvgDefinitions m_definitions;
    SvgFills m_fills;
    SvgStrokes m_strokes;
    const host::XmlDocument* m_xml = nullptr;
    ElementPaints m_paints;
    InstanceKinds m_kinds;
    RewrittenDrawing m_result;
};

std::optional<std::string> Rewriting::Run() {
    if (!IsSource()) return "not the drawing that the document was made of";
    svg::Document drawing;
    if (!drawing.LoadText(m_text.Bytes()) || !drawing.ForEachShape([this](const svg::Shape& s) { Add(s); }))
        return drawing.GetError().reason;
    if (m_seen != m_drawing.shapes)
        return "has " + std::to_string(m_seen) + " shapes, and the document " +
               std::to_string(m_drawing.shapes) + " of them";
    if (m_seen == 0) {
        m_result.text = m_text.Bytes();
    } else if (!PaintAll(drawing)) {
        return "its markup cannot be followed";
    }
    return std::nullopt;
}

bool Rewriting::IsSource() const {
    const std::string& bytes = m_text.Bytes();
    if (bytes.size() != m_drawing.bytes) return false;
    host::Md5 md5;
    md5.Update(bytes.data(), bytes.size());
    return md5.Finish() == m_drawing.digest;
}

void Rewriting::Add(const svg::Shape& shape) {
    if (m_seen++ >= m_drawing.shapes) return;
    m_xml = shape.xml;
    const ShapePaints& paints = m_document.Shape(m_first + m_seen - 1);
    ElementPaint paint;
    const bool isFilled = m_fills.Declare(paints.fill, PaintedPart::Interior, shape, paint, m_result.reasons);
    const bool isStroked = m_strokes.Declare(paints, shape, paint, m_result.reasons);
    m_kinds.Add(shape, m_paints.Add(std::move(paint), isFilled && isStroked));
}

/// False when the text cannot be followed.
bool Rewriting::PaintAll(const svg::Document& drawing) {
    m_kinds.Finish();
    const svg::Namespaces namespaces(m_xml->Root());
    InstanceLimits limits(drawing, *m_xml, m_paints, m_text.Bytes().size() / m_text.Units().size());
    const InstanceVersions versions(m_kinds, limits.SharesOriginals(),
                                    [&](const InstanceKind& kind) { return limits.FindObstacle(kind); });
    const InstanceCopies copies(m_text, namespaces, m_kinds, versions);
    return PaintElements(versions, copies,
                         [&](svg::Splice& splice, const svg::StartTag& tag, host::XmlNode element,
                             const InstancePart& part, std::size_t shapes) {
                             if (part.isUse)
                                 return !versions.IsCopied(part.number) ||
                                        copies.Lead(splice, tag, part.number);
                             Paint(splice, tag, element, part.number, shapes);
                             return true;
                         });
}

/// Goes through the tags as they stand and through the elements as they were read, side by side. False when
/// the two part.
bool Rewriting::PaintElements(const InstanceVersions& versions, const InstanceCopies& copies,
                              const InstanceCopies::Edit& edit) {
    svg::Splice splice;
    svg::StartTagReader tags(m_text.Units());
    std::vector<std::size_t> starts;
    std::size_t inside = 0;
    bool good = true;
    svg::WalkElements(m_xml->Root(), [&](host::XmlNode element, unsigned depth) {
        const std::optional<svg::StartTag> tag = good ? tags.Next() : std::nullopt;
        good = tag.has_value();
        if (!good) return false;
        if (depth == 0) inside = tag->end;
        starts.resize(depth);
        starts.push_back(tag->start);
        good = copies.Insert(splice, element, starts, edit);
        const InstanceVersions::Original* original = good ? versions.Find(element) : nullptr;
        if (!original) return good;
        good = tag->name == element.Name();
        if (original->dispute.empty()) {
            good = good && edit(splice, *tag, element, original->part, original->shapes);
        } else if (!original->part.isUse) {
            m_result.reasons.Count(original->dispute, original->shapes);
        }
        return good;
    });
    if (!good || tags.Next()) return false;
    splice.Insert(inside, m_definitions.Element());
    m_result.text = splice.Apply(m_text);
    return true;
}

/// Paints one element; counts the shapes that keep their paints.
void Rewriting::Paint(svg::Splice& splice, const svg::StartTag& tag, host::XmlNode element, std::size_t paint,
                      std::size_t shapes) {
    const ElementPaints::Entry& entry = m_paints[paint];
    if (!InsertStyle(splice, tag, element.Attribute("style").Value(), entry.paint.declarations)) {
        m_result.reasons.Count("style that insists on its paint", shapes);
    } else {
        m_definitions.Use(entry.paint);
        if (entry.isWhole) m_result.painted += shapes;
    }
}

}  // namespace

std::optional<RewrittenDrawing> RewriteDrawing(const std::filesystem::path& file,
                                               const PaintDocument& document, const SourceDrawing& drawing,
                                               std::size_t first, host::Error& error) {
    const std::optional<std::vector<std::byte>> bytes = host::ReadWholeFile(file, error);
    if (!bytes) return std::nullopt;
    Rewriting rewriting(std::string(reinterpret_cast<const char*>(bytes->data()), bytes->size()), document,
                        drawing, first);
    const std::optional<std::string> obstacle = rewriting.Run();
    if (!obstacle) return rewriting.Take();
    error = {.what = PathText(file), .offset = 0, .line = 0, .reason = *obstacle};
    return std::nullopt;
}

}  // namespace command
