#include "fom/demo_selfcheck.h"

#include <cstdint>
#include <cstdio>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "host/base/wstring.h"

#include "fom/demo_compare.h"
#include "fom/demo_rewrite.h"
#include "fom/document_file.h"
#include "fom/picture_pixels.h"

namespace command {
namespace {

/// 0xAARRGGBB, opaque, as pixels are.
using Argb = std::uint32_t;

constexpr std::size_t kMostTried = 200;
/// A colour is seen well when one pixel of so many has it: well above what the tolerance lets pass.
constexpr std::size_t kPixelsPerSeen = 50;

std::optional<Argb> ToArgb(const CLR_COLORSPEC* color) {
    if (!color || color->GetModel() != ClrModel::RGB) return std::nullopt;
    return 0xff000000u | Argb{color->GetComponent(0)} << 16 | Argb{color->GetComponent(1)} << 8 |
           Argb{color->GetComponent(2)};
}

/// The run of shapes of one drawing.
struct Run {
    const PaintDocument& document;
    const SourceDrawing& drawing;
    std::size_t first;

    template <class Visit>
    void ForEach(Visit&& visit) const {
        for (std::size_t i = first; i < first + drawing.shapes; ++i)
            visit(document.Shape(i));
    }
};

std::optional<Run> FindRun(const PaintDocument& document, const std::string& name) {
    std::size_t first = 0;
    for (const SourceDrawing& drawing : document.Drawings()) {
        if (drawing.name == name) return Run{document, drawing, first};
        first += drawing.shapes;
    }
    return std::nullopt;
}

/// The colour of a uniform fill of the drawing that most of its picture has. No stroke may have it: what is
/// seen of it must come from the fill.
std::optional<Argb> ColorSeen(const Run& run, CairoSurface& picture) {
    std::unordered_map<Argb, std::size_t> counts;
    const Pixels pixels(picture);
    for (std::size_t y = 0; y < pixels.Height(); ++y)
        for (const Argb pixel : pixels.Row(y))
            ++counts[pixel];
    std::unordered_set<Argb> strokes;
    run.ForEach([&](const ShapePaints& shape) {
        if (const auto color = ToArgb(shape.outline.GetColorspec())) strokes.insert(*color);
    });
    std::optional<Argb> seen;
    std::size_t most = pixels.Width() * pixels.Height() / kPixelsPerSeen;
    run.ForEach([&](const ShapePaints& shape) {
        const auto color = ToArgb(shape.fill.GetUniformColorspec());
        if (!color || strokes.contains(*color) || counts[*color] <= most) return;
        most = counts[*color];
        seen = color;
    });
    return seen;
}

Argb Damaged(Argb color) {
    return color ^ 0x808080u;
}

/// A document of that drawing alone, in which the fills of one colour have another.
PaintDocument Damage(const Run& run, Argb color) {
    PaintDocument copy;
    run.ForEach([&](const ShapePaints& shape) {
        WFillHandle& fill = copy.AddShape(shape.fill.GetCGEFill(), copy.Pool());
        fill.SetTilingMatrix(shape.fill.GetTilingMatrix());
        if (const CGE_OUTLINE* outline = shape.outline.GetCGEOutline())
            copy.LastShape().outline.SetCGEOutline(outline);
        if (shape.strokeFill) {
            copy.LastShape().strokeFill =
                std::make_unique<WFillHandle>(shape.strokeFill->GetCGEFill(), copy.Pool());
            copy.LastShape().strokeFill->SetTilingMatrix(shape.strokeFill->GetTilingMatrix());
        }
        if (ToArgb(fill.GetUniformColorspec()) != color) return;
        const Argb to = Damaged(color);
        CLR_COLORSPEC wrong;
        wrong.MakeRGB(static_cast<int>(to >> 16 & 255), static_cast<int>(to >> 8 & 255),
                      static_cast<int>(to & 255));
        fill.SetUniformColorspec(&wrong);
    });
    copy.AddDrawing(run.drawing);
    return copy;
}

std::string Describe(Argb color) {
    char text[64];
    std::snprintf(text, sizeof text, "The fill #%06x was saved as #%06x", color & 0xffffffu,
                  Damaged(color) & 0xffffffu);
    return text;
}

class Check {
public:
    explicit Check(const SelfCheckRequest& request) : m_request(request) {}

    SelfCheck Make() {
        host::Error error;
        m_document = LoadDocument(m_request.folder.Document(), error);
        if (!m_document) return Fail(error.what + ": " + error.reason);
        std::size_t tried = 0;
        for (const Outcome wanted : {Outcome::Identical, Outcome::Within})
            for (const DemoDrawing& drawing : m_request.drawings)
                if (drawing.outcome == wanted && tried++ < kMostTried && Try(drawing.name)) return m_check;
        return Fail("no drawing that came out right shows a uniform fill");
    }

private:
    SelfCheck Fail(const std::string& reason) {
        m_check.text = reason;
        return m_check;
    }

    /// False when the drawing shows no uniform fill.
    bool Try(const std::string& name) {
        const std::optional<Run> run = FindRun(*m_document, name);
        const Rendering before = RenderDrawing(m_request.originals.at(name), m_request.size);
        if (!run || !before.picture) return false;
        const std::optional<Argb> color = ColorSeen(*run, *before.picture);
        if (!color) return false;
        m_check.drawing = name;
        m_check.text = Describe(*color);
        Compare(Damage(*run, *color), before);
        return true;
    }

    void Compare(const PaintDocument& damaged, const Rendering& before) {
        const DemoFolder& folder = m_request.folder;
        host::Error error;
        const auto fail = [this](const std::string& reason) { m_check.text += "; " + reason; };
        if (!SaveDocument(damaged, folder.DamagedDocument(), DocumentVersion::Current, error))
            return fail(error.reason);
        const auto entries = RewriteInNewProcess({.document = folder.DamagedDocument(),
                                                  .sources = m_request.sources,
                                                  .folder = folder.Damaged(),
                                                  .report = folder.RewriteReport()},
                                                 error);
        if (!entries) return fail(error.reason);
        const auto entry = entries->find(m_check.drawing);
        if (entry == entries->end() || !entry->second.fault.empty())
            return fail("the drawing was not rewritten");
        const Rendering after =
            RenderDrawing(folder.Damaged() / host::ToPath(host::FromUtf8(m_check.drawing)), m_request.size);
        if (!after.picture) return fail("the rewrite is not drawn: " + after.fault);
        m_check.difference = ComparePictures(*before.picture, *after.picture);
        m_check.passed = !m_check.difference.IsWithin();
        if (!m_check.passed) fail("the comparison does not notice");
        WritePictures(before, after, "self-check", folder.Pictures());
        m_check.pictures = "self-check";
    }

    const SelfCheckRequest& m_request;
    std::optional<PaintDocument> m_document;
    SelfCheck m_check;
};

}  // namespace

SelfCheck CheckSelf(const SelfCheckRequest& request) {
    return Check(request).Make();
}

}  // namespace command
