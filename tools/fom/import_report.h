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
    double seconds = 0;
    /// What fills cannot say, or the reader cannot take into account, by name.
    std::map<std::string, std::size_t> omissions;

    /// Shapes that share one fill, on average.
    double Sharing() const { return distinctFills == 0 ? 0 : double(shapes) / double(distinctFills); }
};

/// "uniform", "fountain", …
const char* FillKindName(CgeFillType kind) noexcept;

/// Fills in what the importer knows. Distinct fills are counted by going through the pool.
ImportReport MakeReport(const Importer& importer);

/// A table for people.
std::string ToText(const ImportReport& report);
/// One object for programs, indented.
std::string ToJson(const ImportReport& report);

}  // namespace command
