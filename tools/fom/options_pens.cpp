#include <CLI/CLI.hpp>

#include "fom/command_line.h"
#include "fom/pen_request.h"
#include "fom/run_pens.h"

namespace command {
namespace {

constexpr const char* kExamples = R"(Examples:
  fom pens --under 'scale(2) rotate(30)'
  fom pens --under 'skewX(40)' --width 4pt --stretch 50 --angle 30 -o pens.png
  fom pens --under 'scale(3 1)' --width 1mm --dashes 3,1 --dot-length 2mm --json

Lengths have a unit (mm, cm, in, pt, px) or are document units, of which 254,000 make an inch. Angles run from
the x axis to the y axis, which points down.
)";

struct Values {
    PenTexts texts;
    std::string output;
    bool force = false;
    bool json = false;

    std::optional<Task> Read(std::string& mistake) const {
        const std::optional<PenRequest> request = ReadPenRequest(texts, mistake);
        if (!request) return std::nullopt;
        return Task{.output = output,
                    .force = force,
                    .run = [pens = *request, picture = std::filesystem::path(output), json = json](
                               const Output& to, Console& console, HeapGauge) {
                        return RunPens(pens, picture, json, to, console);
                    }};
    }
};

}  // namespace

void AddPens(CommandLine& line) {
    const auto values = std::make_shared<Values>();
    CLI::App& app = line.Add("pens", "show how a pen follows a transformation of its object", kExamples,
                             [values](std::string& mistake) { return values->Read(mistake); });
    PenTexts& texts = values->texts;
    AddText(app, "--under", texts.under, "transformation of the object, in SVG syntax").required();
    AddText(app, "--width", texts.width, "width along the nib's y axis [2pt]");
    AddText(app, "--stretch", texts.stretch, "the nib's x axis in per cent of the width [100]");
    AddText(app, "--angle", texts.angle, "turn of the nib in degrees [0]");
    AddText(app, "--dashes", texts.dashes, "dash, gap, dash, ... in dot lengths");
    AddText(app, "--dot-length", texts.dotLength, "length of a dot [the width]");
    AddText(app, "--kind", texts.kind, "none, solid or dot-dash [dot-dash with dashes, otherwise solid]");
    AddOutput(app, values->output, values->force, "PNG file to draw");
    app.add_flag("--json", values->json, "numbers as JSON");
}

}  // namespace command
