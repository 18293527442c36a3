#pragma once

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "fom/drawing_rewriter.h"
#include "fom/importer.h"

#include "support/temp_folder.h"
#include "tools/fom/command_run.h"

namespace testing_support {

/// A drawing that was imported and painted again from the document.
class Rewritten {
public:
    /// May change a shape's paints before.
    using Edit = std::function<void(WFillHandle& fill, WOutlineHandle& outline)>;

    explicit Rewritten(std::string_view text, const Edit& edit = nullptr) : m_source(text) {
        WriteText(m_folder / "a.svg", text);
        host::Error error;
        if (!m_importer.ImportFile(m_folder / "a.svg", error)) throw std::runtime_error(error.reason);
        const command::PaintDocument& imported = m_importer.Document();
        for (std::size_t i = 0; i < imported.ShapeCount(); ++i) {
            WFillHandle& fill = m_document.AddShape(imported.Shape(i).fill);
            command::ShapePaints& paints = m_document.LastShape();
            paints.outline = imported.Shape(i).outline;
            if (const auto& own = imported.Shape(i).strokeFill)
                paints.strokeFill = std::make_unique<WFillHandle>(*own);
            if (edit) edit(fill, paints.outline);
        }
        m_result =
            command::RewriteDrawing(m_folder / "a.svg", m_document, imported.Drawings().front(), 0, error);
        if (!m_result) throw std::runtime_error(error.reason);
    }

    const std::string& Text() const { return m_result->text; }
    std::size_t Painted() const { return m_result->painted; }
    std::size_t Reasons(std::string_view name) const { return m_result->reasons.Of(name); }
    std::size_t ReasonCount() const { return m_result->reasons.Counts().size(); }
    bool Has(std::string_view part) const { return Text().find(part) != std::string::npos; }

    /// The source where everything that was put in is taken out again.
    bool KeepsSource() const {
        std::size_t at = 0;
        for (const char c : Text())
            if (at < m_source.size() && c == m_source[at]) ++at;
        return at == m_source.size();
    }

    const command::PaintDocument& Document() const { return m_document; }

private:
    std::string m_source;
    TempFolder m_folder;
    command::Importer m_importer;
    command::PaintDocument m_document;
    std::optional<command::RewrittenDrawing> m_result;
};

inline std::string InSvg(std::string_view content) {
    return "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' width='200' "
           "height='100'>" +
           std::string(content) + "</svg>";
}

}  // namespace testing_support
