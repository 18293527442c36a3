#include "fom/run_pens.h"

#include <span>
#include <string>
#include <vector>

#include "fom/path_text.h"
#include "fom/pen_fit.h"
#include "fom/pen_picture.h"

namespace command {

int RunPens(const PenRequest& pens, const std::filesystem::path& picture, bool json, const Output& output,
            Console& console) {
    const PenFit fit = FitPen(pens);
    if (!picture.empty()) {
        host::Error error;
        const std::optional<std::vector<std::byte>> png = DrawPenFit(fit, error);
        if (!png) {
            error.what = PathText(picture);
            console.Fail(error);
            return kFailure;
        }
        if (!output.Write(*png, console)) return kFailure;
    }
    const std::string text = json ? ToJson(fit) : ToText(fit);
    return Output({}).Write(std::as_bytes(std::span(text)), console) ? kSuccess : kFailure;
}

}  // namespace command
