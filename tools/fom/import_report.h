#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "fom/fill_list.h"
#include "fom/importer.h"

namespace command {

/// What an import found.
struct ImportReport {
    std::size_t files = 0;        ///< that were opened
    std::size_t failedFiles = 0;  ///< of these, that contributed nothing
    std::size_t shapes = 0;
    std::size_t distinctFills = 0;
    /// Distinct fills by the name of their kind; a kind without fills is not named.
    std::map<std::string, std::size_t> kinds;
    std::size_t paintTexts = 0;
    std::size_t paintColors = 0;
    std::size_t paintReferences = 0;
    std::size_t unusedDefinitions = 0;
    /// Empty when the heap was not measured or there is no fill.
    std::optional<double> bytesPerFill;
    /// Shapes with an outline.
    std::size_t strokedShapes = 0;
    /// Of these, with a gradient or a pattern: the document has a fill for the stroke too.
    std::size_t filledStrokes = 0;
    std::size_t distinctOutlines = 0;
    /// Distinct outlines by the name of their pen's kind; a kind without outlines is not named.
    std::map<std::string, std::size_t> penKinds;
    /// Distinct outlines with an arrowhead at one end at least.
    std::size_t arrowOutlines = 0;
    /// Empty when the heap was not measured or there is no outline.
    std::optional<double> bytesPerOutline;
    double seconds = 0;
    /// What fills and outlines cannot say, or the reader cannot take into account, by name.
    std::map<std::string, std::size_t> omissions;

    /// Shapes that share one fill, on average.
    double Sharing() const { return distinctFills == 0 ? 0 : double(shapes) / double(distinctFills); }
    /// Stroked shapes that share one outline, on average.
    double OutlineSharing() const {
        return distinctOutlines == 0 ? 0 : double(strokedShapes) / double(distinctOutlines);
    }
};

/// "uniform", "fountain", …
const char* FillKindName(CgeFillType kind) noexcept;
/// "solid", "dot-dash", …
const char* PenKindName(CgeOutlineType kind) noexcept;

/// Fills in what the importer knows. Distinct fills and outlines are counted by going
/// through the pools.
ImportReport MakeReport(const Importer& importer);

/// A table for people.
std::string ToText(const ImportReport& report);
/// One object for programs, indented.
std::string ToJson(const ImportReport& report);

}  // namespace command
