#include "fom/rewrite_report.h"

#include <algorithm>
#include <functional>
#include <nlohmann/json.hpp>
#include <numeric>

#include "fom/grouped.h"

namespace command {
namespace {

std::size_t Sum(const RewriteReport& report, std::size_t RewriteReport::Drawing::*number) {
    return std::transform_reduce(report.drawings.begin(), report.drawings.end(), std::size_t{0}, std::plus(),
                                 [number](const RewriteReport::Drawing& drawing) { return drawing.*number; });
}

}  // namespace

std::size_t RewriteReport::Shapes() const {
    return Sum(*this, &Drawing::shapes);
}

std::size_t RewriteReport::Painted() const {
    return Sum(*this, &Drawing::painted);
}

std::string ToText(const RewriteReport& report) {
    const auto failed = std::count_if(report.drawings.begin(), report.drawings.end(),
                                      [](const RewriteReport::Drawing& d) { return !d.error.empty(); });
    const std::size_t rewritten = report.drawings.size() - static_cast<std::size_t>(failed);
    std::string text = Grouped(rewritten) + " of " + Grouped(report.drawings.size()) +
                       " drawings rewritten; " + Grouped(report.Painted()) + " of " +
                       Grouped(report.Shapes()) + " shapes painted from the document alone\n";
    svg::Omissions reasons;
    for (const RewriteReport::Drawing& drawing : report.drawings)
        reasons.Add(drawing.reasons);
    for (const auto& [name, times] : reasons.Counts())
        text += "  " + name + ": " + Grouped(times) + "\n";
    return text;
}

std::string ToJson(const RewriteReport& report) {
    nlohmann::ordered_json json;
    nlohmann::ordered_json& drawings = json["drawings"] = nlohmann::ordered_json::array();
    for (const RewriteReport::Drawing& drawing : report.drawings) {
        nlohmann::ordered_json& entry = drawings.emplace_back();
        entry["name"] = drawing.name;
        entry["shapes"] = drawing.shapes;
        entry["painted"] = drawing.painted;
        entry["omissions"] = drawing.omissions.Counts();
        entry["reasons"] = drawing.reasons.Counts();
        entry["error"] =
            drawing.error.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(drawing.error);
    }
    json["shapes"] = report.Shapes();
    json["painted"] = report.Painted();
    return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace command
