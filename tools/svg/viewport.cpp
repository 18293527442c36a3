#include "svg/viewport.h"

#include <algorithm>
#include <cmath>

#include "svg/length.h"
#include "svg/scanner.h"

namespace svg {
namespace {

constexpr double kDefaultWidth = 300;
constexpr double kDefaultHeight = 150;

/// How much of the free space lies before the box: "xMid" and "YMid" halve it.
double AlignmentOf(std::string_view aspect, std::string_view low, std::string_view high) {
    if (aspect.find(low) != std::string_view::npos) return 0;
    return aspect.find(high) != std::string_view::npos ? 1 : 0.5;
}

double SideOf(host::XmlNode root, std::string_view name, double whole) {
    const std::optional<Length> length = ParseLength(root.Attribute(name).Value());
    const double side = length ? length->Resolve(16, whole) : whole;
    return std::isfinite(side) && side > 0 ? side : whole;
}

}  // namespace

double Viewport::Diagonal() const {
    return std::sqrt((width * width + height * height) / 2);
}

std::optional<ViewBox> ParseViewBox(std::string_view text) {
    Scanner in(text);
    ViewBox box;
    in.SkipSpace();
    for (double* value : {&box.x, &box.y, &box.width, &box.height}) {
        if (!in.Number(*value)) return std::nullopt;
        in.SkipSeparator();
    }
    if (!in.AtEnd() || box.width < 0 || box.height < 0) return std::nullopt;
    return box;
}

Matrix FitViewBox(const ViewBox& box, double width, double height, std::string_view aspect) {
    if (box.width <= 0 || box.height <= 0) return {};
    double scaleX = width / box.width;
    double scaleY = height / box.height;
    double x = 0;
    double y = 0;
    if (aspect.find("none") == std::string_view::npos) {
        const bool slice = aspect.find("slice") != std::string_view::npos;
        scaleX = scaleY = slice ? std::max(scaleX, scaleY) : std::min(scaleX, scaleY);
        x = (width - box.width * scaleX) * AlignmentOf(aspect, "xMin", "xMax");
        y = (height - box.height * scaleY) * AlignmentOf(aspect, "YMin", "YMax");
    }
    return Matrix::Translation(x, y) * Matrix::Scale(scaleX, scaleY) * Matrix::Translation(-box.x, -box.y);
}

Viewport RootViewport(host::XmlNode root) {
    const std::optional<ViewBox> box = ParseViewBox(root.Attribute("viewBox").Value());
    if (box && box->width > 0 && box->height > 0) return {box->width, box->height};
    return {SideOf(root, "width", kDefaultWidth), SideOf(root, "height", kDefaultHeight)};
}

}  // namespace svg
