#include "fom/drawing_rewriter.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/base/atomic_file.h"

#include "fom/element_paint.h"
#include "fom/element_style.h"
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

/// What becomes of one element, which "use" may draw as several shapes.
struct Plan {
    ElementPaint paint;
    std::size_t shapes = 0;
    bool isDisputed = false;  ///< its shapes have different paints
    bool isPartial = false;   ///< some paint of the drawing stays
};

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
          m_strokes(m_definitions) {}

    /// Answers why the drawing cannot be used; nothing when the result is whole.
    std::optional<std::string> Run();
    RewrittenDrawing Take() { return std::move(m_result); }

private:
    bool IsSource() const;
    void Add(const svg::Shape& shape);
    void Paint(const Plan& plan, const svg::StartTag& tag, std::string_view style);
    bool PaintAll();

    const PaintDocument& m_document;
    const SourceDrawing& m_drawing;
    const std::size_t m_first;
    std::size_t m_seen = 0;
    const svg::DrawingText m_text;
    svg::Splice m_splice;
    SvgDefinitions m_definitions;
    SvgFills m_fills;
    SvgStrokes m_strokes;
    host::XmlNode m_root;
    std::unordered_map<const void*, Plan> m_plans;
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
    } else if (!PaintAll()) {
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
    if (!m_root) m_root = shape.xml->Root();
    const ShapePaints& paints = m_document.Shape(m_first + m_seen - 1);
    ElementPaint paint;
    const bool isFilled = m_fills.Declare(paints.fill, shape, paint, m_result.reasons);
    const bool isStroked = m_strokes.Declare(paints.outline.GetCGEOutline(), shape, paint, m_result.reasons);
    const auto [known, isNew] = m_plans.try_emplace(shape.node.Identity());
    Plan& plan = known->second;
    if (isNew) {
        plan.paint = std::move(paint);
    } else {
        plan.isDisputed = plan.isDisputed || plan.paint != paint;
    }
    plan.isPartial = plan.isPartial || !isFilled || !isStroked;
    ++plan.shapes;
}

/// Paints one element; counts the shapes that keep their paints.
void Rewriting::Paint(const Plan& plan, const svg::StartTag& tag, std::string_view style) {
    if (plan.isDisputed) {
        m_result.reasons.Count("drawn several times with different paints", plan.shapes);
    } else if (!InsertStyle(m_splice, tag, style, plan.paint.declarations)) {
        m_result.reasons.Count("style that insists on its paint", plan.shapes);
    } else {
        m_definitions.Use(plan.paint);
        if (!plan.isPartial) m_result.painted += plan.shapes;
    }
}

/// Goes through the tags as they stand and through the elements as they were read, side by side. False when
/// the two part.
bool Rewriting::PaintAll() {
    svg::StartTagReader tags(m_text.Units());
    std::size_t inside = 0;
    bool good = true;
    svg::WalkElements(m_root, [&](host::XmlNode element, unsigned depth) {
        const std::optional<svg::StartTag> tag = good ? tags.Next() : std::nullopt;
        good = tag.has_value();
        if (!good) return false;
        if (depth == 0) inside = tag->end;
        const auto plan = m_plans.find(element.Identity());
        if (plan == m_plans.end()) return true;
        good = tag->name == element.Name();
        if (good) Paint(plan->second, *tag, element.Attribute("style").Value());
        return good;
    });
    if (!good || tags.Next()) return false;
    m_splice.Insert(inside, m_definitions.Element());
    m_result.text = m_splice.Apply(m_text);
    return true;
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
