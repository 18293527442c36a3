#include "fom/importer.h"

#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "host/base/atomic_file.h"
#include "host/base/md5.h"

#include "fom/document_units.h"
#include "fom/gradient_mapping.h"
#include "fom/outline_mapping.h"
#include "fom/path_text.h"
#include "fom/pattern_mapping.h"

#include "svg/document.h"

namespace command {
namespace {

/// From the space of a gradient's or a pattern's fill to the page.
MATRIX FillMatrix(const svg::Paint& paint, const svg::Shape& shape) {
    const bool isGradient = paint.kind == svg::Paint::Kind::Gradient;
    return ToDocumentUnits(
        ToMatrix(isGradient ? shape.transform : shape.transform * paint.pattern->transform));
}

}  // namespace

/// One drawing while it is read; what it adds stays only when it is kept.
class Importer::Drawing {
public:
    explicit Drawing(Importer& importer) : m_importer(importer), m_before(importer.m_document.ShapeCount()) {}
    ~Drawing() {
        if (!m_kept) m_importer.m_document.DropShapesAfter(m_before);
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;

    bool Read(const std::filesystem::path& path, const std::string& name, host::Error& error);

private:
    bool Load(const std::filesystem::path& path, host::Error& error);
    void Add(const svg::Shape& shape);
    void Count(const svg::Shape& shape);
    void AddFill(const svg::Shape& shape);
    void AddOutline(const svg::Shape& shape);
    const WFillHandle* FindServer(const svg::Paint& paint, const svg::Shape& shape);
    const WFillHandle& FindGradient(const svg::Gradient& gradient);
    const WFillHandle* FindPattern(const svg::Pattern& pattern, const svg::Shape& shape);
    const PooledPattern* PoolPattern(const svg::Pattern& pattern, const svg::Shape& shape,
                                     const std::optional<svg::Rect>& box, std::string key);
    void Keep(std::string name);

    /// Calls `make` and adds the heap that it took to `bytes`.
    template <class Make>
    auto Measure(std::int64_t& bytes, Make&& make);
    /// The same for what makes a fill.
    template <class Make>
    auto Measure(Make&& make) {
        return Measure(m_tally.fillBytes, std::forward<Make>(make));
    }

    Importer& m_importer;
    const std::size_t m_before;
    svg::Document m_svg;
    SourceDrawing m_source;
    ImportTally m_tally;
    // Gradients and patterns belong to the drawing: their addresses tell them apart.
    std::unordered_map<const void*, WFillHandle> m_servers;
    PatternMap m_patterns;
    OutlineMapper m_outlines;
    std::optional<host::Error> m_fault;
    bool m_kept = false;
};

template <class Make>
auto Importer::Drawing::Measure(std::int64_t& bytes, Make&& make) {
    const HeapGauge gauge = m_importer.m_gauge;
    const std::int64_t before = gauge ? gauge() : 0;
    auto result = make();
    if (gauge) bytes += gauge() - before;
    return result;
}

bool Importer::ImportFile(const std::filesystem::path& path, host::Error& error, const std::string& name) {
    try {
        return Drawing(*this).Read(path, name.empty() ? ToDrawingName(path.filename()) : name, error);
    } catch (const std::bad_alloc&) {
        error = {.what = PathText(path), .offset = 0, .line = 0, .reason = "not enough memory"};
        return false;
    }
}

bool Importer::Drawing::Read(const std::filesystem::path& path, const std::string& name, host::Error& error) {
    if (!Load(path, error)) return false;
    if (!m_svg.ForEachShape([this](const svg::Shape& shape) { Add(shape); })) {
        error = m_svg.GetError();
        return false;
    }
    if (m_fault) {
        error = *std::move(m_fault);
        error.what = PathText(path);
        return false;
    }
    Keep(name);
    return true;
}

/// The bytes are read once, so that the digest is that of the drawing which is shown.
bool Importer::Drawing::Load(const std::filesystem::path& path, host::Error& error) {
    const std::optional<std::vector<std::byte>> bytes = host::ReadWholeFile(path, error);
    if (!bytes || bytes->empty()) {
        if (!m_svg.LoadFile(path)) error = m_svg.GetError();
        return false;
    }
    const std::string_view text(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    if (!m_svg.LoadText(text, PathText(path))) {
        error = m_svg.GetError();
        return false;
    }
    host::Md5 digest;
    digest.Update(bytes->data(), bytes->size());
    m_source.bytes = bytes->size();
    m_source.digest = digest.Finish();
    return true;
}

void Importer::Drawing::Keep(std::string name) {
    constexpr std::string_view unused = "unused definitions";
    for (const auto& [omission, times] : m_svg.GetOmissions().Counts()) {
        if (omission == unused) {
            m_tally.unusedDefinitions += times;
        } else {
            m_tally.omissions.Count(omission, times);
        }
    }
    m_source.name = m_importer.m_names.Take(std::move(name));
    m_source.shapes = m_importer.m_document.ShapeCount() - m_before;
    m_source.omissions = m_tally.omissions;
    m_importer.m_tally.Add(m_tally);
    m_importer.m_patterns.merge(m_patterns);
    m_importer.m_document.AddDrawing(std::move(m_source));
    m_kept = true;
}

void Importer::Drawing::Add(const svg::Shape& shape) {
    if (m_fault) return;
    m_importer.m_document.ReserveShape();
    AddFill(shape);
    if (!m_fault && shape.stroke.paint.kind != svg::Paint::Kind::None) AddOutline(shape);
    if (!m_fault) Count(shape);
}

void Importer::Drawing::Count(const svg::Shape& shape) {
    m_tally.texts.Add(shape.style->fill, shape.style->color);
    const bool isFilled = shape.fill.kind != svg::Paint::Kind::None;
    const bool isStroked = shape.stroke.paint.kind != svg::Paint::Kind::None;
    if ((isFilled || isStroked) && shape.style->opacity < 1) m_tally.omissions.Count("shape opacity");
    if (!isFilled) return;
    if (shape.fillOpacity < 1) m_tally.omissions.Count("fill opacity");
    if (shape.fill.kind == svg::Paint::Kind::Solid && shape.fill.color.alpha < 1)
        m_tally.omissions.Count("transparency of a solid colour");
}

void Importer::Drawing::AddFill(const svg::Shape& shape) {
    PaintDocument& document = m_importer.m_document;
    if (shape.fill.kind == svg::Paint::Kind::None) {
        Measure([&] { return &document.AddShape(false, document.Pool()); });
    } else if (shape.fill.kind == svg::Paint::Kind::Solid) {
        const CLR_COLORSPEC color = ToColor(shape.fill.color);
        Measure([&] { return &document.AddShape(&color, document.Pool()); });
    } else if (const WFillHandle* fill = FindServer(shape.fill, shape)) {
        document.AddShape(*fill).SetTilingMatrix(FillMatrix(shape.fill, shape));
    }
}

void Importer::Drawing::AddOutline(const svg::Shape& shape) {
    PaintDocument& document = m_importer.m_document;
    const svg::Paint& paint = shape.stroke.paint;
    const CGE_OUTLINE record = m_outlines.Map(shape.stroke, shape.transform, m_tally.omissions);
    Measure(m_tally.outlineBytes, [&] {
        document.LastShape().outline.SetCGEOutline(&record);
        return true;
    });
    if (paint.kind == svg::Paint::Kind::Solid) return;
    const WFillHandle* fill = FindServer(paint, shape);
    if (!fill) return;
    ++m_tally.filledStrokes;
    document.LastShape().strokeFill = std::make_unique<WFillHandle>(*fill);
    document.LastShape().strokeFill->SetTilingMatrix(FillMatrix(paint, shape));
}

/// The fill of a gradient or a pattern. Null, with the fault noted, for a broken one.
const WFillHandle* Importer::Drawing::FindServer(const svg::Paint& paint, const svg::Shape& shape) {
    const bool isGradient = paint.kind == svg::Paint::Kind::Gradient;
    const void* const server = isGradient ? static_cast<const void*>(paint.gradient) : paint.pattern;
    if (const auto known = m_servers.find(server); known != m_servers.end()) return &known->second;
    return isGradient ? &FindGradient(*paint.gradient) : FindPattern(*paint.pattern, shape);
}

const WFillHandle& Importer::Drawing::FindGradient(const svg::Gradient& gradient) {
    CGE_FILL record(FillFountain);
    record.EditFountain() = MapGradient(gradient, m_tally.omissions);
    const WFillHandle pooled = Measure([&] { return WFillHandle(&record, m_importer.m_document.Pool()); });
    return m_servers.emplace(&gradient, pooled).first->second;
}

/// Vector fills with different temporary data differ for the pool, so that equal patterns are recognised
/// here, whichever drawing they are in. Null when the pattern is broken.
const WFillHandle* Importer::Drawing::FindPattern(const svg::Pattern& pattern, const svg::Shape& shape) {
    const std::optional<svg::Rect> box = shape.Bounds(m_tally.omissions);
    std::string key = PatternKey(pattern, box);
    const PooledPattern* pooled = nullptr;
    if (const auto found = m_importer.m_patterns.find(key); found != m_importer.m_patterns.end()) {
        pooled = &found->second;
    } else if (const auto own = m_patterns.find(key); own != m_patterns.end()) {
        pooled = &own->second;
    } else {
        pooled = PoolPattern(pattern, shape, box, std::move(key));
    }
    if (!pooled) return nullptr;
    m_tally.omissions.Add(pooled->omissions);
    return &m_servers.emplace(&pattern, pooled->fill).first->second;
}

const Importer::PooledPattern* Importer::Drawing::PoolPattern(const svg::Pattern& pattern,
                                                              const svg::Shape& shape,
                                                              const std::optional<svg::Rect>& box,
                                                              std::string key) {
    svg::Omissions omissions;
    host::Error error;
    const std::optional<WFillHandle> fill = Measure([&]() -> std::optional<WFillHandle> {
        const std::optional<CGE_FILL> record = MapPattern(pattern, box, omissions, error);
        if (!record) return std::nullopt;
        return std::optional<WFillHandle>(std::in_place, &*record, m_importer.m_document.Pool());
    });
    if (!fill) {
        error.line = shape.Line();
        m_fault = error;
        return nullptr;
    }
    return &m_patterns.emplace(std::move(key), PooledPattern{*fill, std::move(omissions)}).first->second;
}

}  // namespace command
