#include <nlohmann/json.hpp>

#include "fom/import_report.h"

namespace command {

std::string ToJson(const ImportReport& report) {
    nlohmann::ordered_json json;
    json["files"] = report.files;
    json["failedFiles"] = report.failedFiles;
    json["shapes"] = report.shapes;
    json["paintTexts"] = {
        {"total", report.paintTexts}, {"colors", report.paintColors}, {"references", report.paintReferences}};
    json["distinctFills"] = {{"total", report.distinctFills}, {"byKind", report.kinds}};
    json["shapesPerFill"] = report.Sharing();
    json["unusedDefinitions"] = report.unusedDefinitions;
    if (report.bytesPerFill) {
        json["heapBytesPerFill"] = *report.bytesPerFill;
    } else {
        json["heapBytesPerFill"] = nullptr;
    }
    json["strokedShapes"] = report.strokedShapes;
    json["filledStrokes"] = report.filledStrokes;
    json["distinctOutlines"] = {{"total", report.distinctOutlines},
                                {"byKind", report.penKinds},
                                {"withArrowheads", report.arrowOutlines}};
    json["shapesPerOutline"] = report.OutlineSharing();
    if (report.bytesPerOutline) {
        json["heapBytesPerOutline"] = *report.bytesPerOutline;
    } else {
        json["heapBytesPerOutline"] = nullptr;
    }
    json["seconds"] = report.seconds;
    json["notCarriedOver"] = report.omissions;
    return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

}  // namespace command
