#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fom/demo_result.h"

namespace command {

/// The result for programs: one JSON object, whose "results" are the drawings in their order; a line for each
/// of these, so that two of them are easily told apart.
std::string ToJson(const DemoResult& result);
/// The result for people: a table.
std::string ToText(const DemoResult& result);

/// The summary of a demo that is not finished: it marks the folder as a demo's, with the drawings it is
/// about.
std::string UnfinishedSummary(const std::vector<std::string>& names);
/// The names of the drawings that a summary is about; empty when the text is no summary of a demo.
std::optional<std::vector<std::string>> NamesOfSummary(std::string_view json);

}  // namespace command
