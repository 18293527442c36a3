#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <unordered_map>

#include "host/base/error.h"

#include "fom/drawing_name.h"
#include "fom/fill_handle.h"
#include "fom/heap_gauge.h"
#include "fom/import_tally.h"
#include "fom/paint_document.h"

#include "svg/shape.h"

namespace command {

/// Reads the fills and strokes of drawings into one document. A drawing with an error contributes nothing.
/// One thread.
class Importer {
public:
    /// Without a gauge the heap that fills and outlines take stays 0.
    explicit Importer(HeapGauge gauge = nullptr) : m_gauge(gauge) {}

    /// False, with `error` filled, when the drawing cannot be used. `name` is a drawing's (IsDrawingName);
    /// the document adds a number to one that it has already. Empty: the name of the file.
    bool ImportFile(const std::filesystem::path& path, host::Error& error, const std::string& name = {});
    /// Lets go of what is kept to recognise patterns in further drawings: from then on only shapes hold
    /// fills.
    void Finish() { m_patterns.clear(); }

    void CountOmission(std::string_view name, std::size_t times) { m_tally.omissions.Count(name, times); }

    const PaintDocument& Document() const noexcept { return m_document; }
    const ImportTally& Tally() const noexcept { return m_tally; }

private:
    /// A pattern that was mapped before, and what it cannot say.
    struct PooledPattern {
        WFillHandle fill;
        svg::Omissions omissions;
    };
    using PatternMap = std::unordered_map<std::string, PooledPattern>;
    class Drawing;

    PaintDocument m_document;
    DrawingNames m_names;
    PatternMap m_patterns;
    ImportTally m_tally;
    HeapGauge m_gauge;
};

}  // namespace command
