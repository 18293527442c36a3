#include "fom/demo_summary.h"

#include <nlohmann/json.hpp>

namespace command {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kMaker = "fom demo";

std::string Dump(const Json& json, int indent = -1) {
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

double Share(std::size_t part, std::size_t whole) {
    return whole == 0 ? 0 : double(part) / double(whole);
}

void AddDifference(Json& json, const PictureDifference& difference) {
    json["worstChannel"] = difference.worst;
    json["shareDiffering"] = Share(difference.differing, difference.pixels);
    json["shareBeyondTolerance"] = Share(difference.excess, difference.pixels);
}

Json ToJson(const DemoDrawing& drawing) {
    Json json{{"name", drawing.name},
              {"outcome", OutcomeName(drawing.outcome)},
              {"shapes", drawing.shapes},
              {"painted", drawing.painted}};
    if (drawing.outcome == Outcome::Outside || drawing.outcome == Outcome::Within) {
        AddDifference(json, drawing.difference);
        json["reasons"] = drawing.reasons;
        if (drawing.IsUnexplained()) json["unexplained"] = true;
    }
    if (!drawing.kept.empty()) json["kept"] = drawing.kept;
    if (!drawing.fault.empty()) json["fault"] = drawing.fault;
    if (!drawing.pictures.empty()) json["pictures"] = drawing.pictures;
    return json;
}

Json ToJson(const SelfCheck& check) {
    Json json{{"passed", check.passed}, {"drawing", check.drawing}, {"text", check.text}};
    AddDifference(json, check.difference);
    if (!check.pictures.empty()) json["pictures"] = check.pictures;
    return json;
}

Json Totals(const DemoResult& result) {
    const DemoTotals totals = Sum(result.drawings);
    Json json{{"madeBy", kMaker}, {"complete", true}, {"passed", HasPassed(result, totals)}};
    json["found"] = result.found;
    json["drawings"] = result.drawings.size();
    json["shapes"] = result.shapes;
    json["painted"] = totals.painted;
    json["distinctFills"] = result.distinctFills;
    json["distinctOutlines"] = result.distinctOutlines;
    json["document"] = {
        {"bytes", result.documentBytes},
        {"bytesPerShape", result.shapes == 0 ? 0 : double(result.documentBytes) / double(result.shapes)}};
    json["pictureSize"] = result.size;
    json["tolerance"] = {{"channel", PictureDifference::kTolerance},
                         {"shareOfPixels", 1 - 1.0 / double(PictureDifference::kPixelsPerExcess)}};
    json["compared"] = totals.Compared();
    json["identical"] = totals.Of(Outcome::Identical);
    json["withinTolerance"] = totals.Of(Outcome::Identical) + totals.Of(Outcome::Within);
    json["shareWithin"] = totals.ShareWithin();
    json["outside"] = totals.Of(Outcome::Outside);
    json["unexplained"] = totals.unexplained;
    json["failed"] = totals.Of(Outcome::Failed);
    json["notDrawn"] = totals.Of(Outcome::NotDrawn);
    json["notRead"] = result.notRead;
    json["reasons"] = Json::object();
    for (const auto& [name, count] : totals.reasons)
        json["reasons"][name] = {{"outside", count.outside}, {"within", count.within}};
    json["kept"] = totals.kept;
    json["selfCheck"] = ToJson(result.selfCheck);
    json["seconds"] = Json::object();
    for (const auto& [step, seconds] : result.seconds)
        json["seconds"][step] = seconds;
    return json;
}

/// The object with its last member, a list of which each element has a line of its own.
std::string WithResults(const Json& json, const std::vector<Json>& results) {
    std::string text = Dump(json, 2);
    text.resize(text.size() - 2);  // the last line break and brace
    text += ",\n  \"results\": [";
    for (std::size_t i = 0; i < results.size(); ++i)
        text.append(i == 0 ? "\n    " : ",\n    ").append(Dump(results[i]));
    return text + "\n  ]\n}\n";
}

}  // namespace

std::string ToJson(const DemoResult& result) {
    std::vector<Json> results;
    results.reserve(result.drawings.size());
    for (const DemoDrawing& drawing : result.drawings)
        results.push_back(ToJson(drawing));
    return WithResults(Totals(result), results);
}

std::string UnfinishedSummary(const std::vector<std::string>& names) {
    std::vector<Json> results;
    results.reserve(names.size());
    for (const std::string& name : names)
        results.push_back({{"name", name}});
    return WithResults({{"madeBy", kMaker}, {"complete", false}}, results);
}

std::optional<std::vector<std::string>> NamesOfSummary(std::string_view text) {
    const Json json = Json::parse(text, nullptr, false);
    if (!json.is_object() || json.value("madeBy", Json()) != kMaker) return std::nullopt;
    std::vector<std::string> names;
    for (const Json& result : json.value("results", Json::array()))
        if (result.is_object() && result.contains("name") && result["name"].is_string())
            names.push_back(result["name"].get<std::string>());
    return names;
}

}  // namespace command
