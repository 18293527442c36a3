#include "fom/demo_page.h"

#include "fom_demo_page.h"

namespace command {
namespace {

constexpr std::string_view kPlace = "{{summary}}";

}  // namespace

std::string DemoPage(std::string_view summary) {
    const std::string_view page = kDemoPage;
    const std::size_t place = page.find(kPlace);
    std::string text(page.substr(0, place));
    text.reserve(page.size() + summary.size());
    // "<" occurs within texts only, and must not look like the end of the element or a comment.
    for (const char c : summary) {
        if (c == '<') {
            text += "\\u003c";
        } else {
            text += c;
        }
    }
    return text.append(page.substr(place + kPlace.size()));
}

}  // namespace command
