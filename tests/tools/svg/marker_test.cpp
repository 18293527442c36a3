#include <cmath>
#include <tuple>

#include "drawing.h"
#include "svg/path_data.h"

namespace {

using svg::Marker;

/// Steps as text, rounded: "M 1 2 L 3 4 C … Z".
std::string Text(const std::vector<svg::PathStep>& steps) {
    std::string result;
    const auto add = [&](svg::Point p) {
        for (const double value : {p.x, p.y}) {
            char text[32];
            std::snprintf(text, sizeof text, " %.4g", std::abs(value) < 5e-5 ? 0.0 : value);
            result += text;
        }
    };
    for (const svg::PathStep& step : steps) {
        result += result.empty() ? "" : " ";
        result += "MLCZ"[static_cast<int>(step.kind)];
        if (step.kind == svg::PathStep::Kind::Curve) {
            add(step.control1);
            add(step.control2);
        }
        if (step.kind != svg::PathStep::Kind::Close) add(step.to);
    }
    return result;
}

/// A line with a marker of those attributes and that content at its end.
struct Marked : Drawing {
    explicit Marked(const std::string& attributes, const std::string& content)
        : Drawing("<marker id='m' " + attributes + ">" + content +
                  "</marker><line x2='9' stroke='red' marker-end='url(#m)'/>") {}
    const Marker* operator->() const { return items.at(0).shape.stroke.markerEnd; }
    std::string Outline() const {
        const Marker* marker = items.at(0).shape.stroke.markerEnd;
        return marker == nullptr ? "null" : Text(marker->outline);
    }
};

TEST(PathSteps, ArcsFollowTheCircle) {
    const std::pair<const char*, std::size_t> arcs[] = {{"M10 0A10 10 0 0 1-10 0", 2},
                                                        {"M10 0A10 10 0 1 1 0-10", 3},
                                                        {"M0 10A10 10 30 0 0 10 0", 1},
                                                        {"M-10 0a1 1 7 1 0 20 0", 2},
                                                        {"M10 0A10 10 0 1 1 9.99 -.447", 4}};
    for (const auto& [data, pieces] : arcs) {
        svg::PathSteps path;
        ASSERT_TRUE(svg::AddPathData(data, path));
        const std::vector<svg::PathStep> steps = path.Take();
        ASSERT_EQ(steps.size(), pieces + 1) << data;
        svg::Point from = steps[0].to;
        for (std::size_t i = 1; i < steps.size(); ++i) {
            const svg::PathStep& step = steps[i];
            ASSERT_EQ(step.kind, svg::PathStep::Kind::Curve);
            for (double t = 0; t <= 1; t += 1.0 / 16) {
                const auto at = [&](double a, double b, double c, double d) {
                    const double s = 1 - t;
                    return s * s * s * a + 3 * s * s * t * b + 3 * s * t * t * c + t * t * t * d;
                };
                const double x = at(from.x, step.control1.x, step.control2.x, step.to.x);
                const double y = at(from.y, step.control1.y, step.control2.y, step.to.y);
                EXPECT_NEAR(std::hypot(x, y) / 10, 1, 3e-4) << data;
            }
            from = step.to;
        }
    }
}

TEST(PathSteps, CommandsBecomeMovesLinesAndCurves) {
    const std::pair<const char*, const char*> cases[] = {
        {"M1 2 3 4h1v1zl1 1zz", "M 1 2 L 3 4 L 4 4 L 4 5 Z M 1 2 L 2 3 Z"},
        {"m0 0q3 3 6 0t6 0", "M 0 0 C 2 2 4 2 6 0 C 8 -2 10 -2 12 0"},
        {"M0 0C1 1 2 1 3 0S5-1 6 0", "M 0 0 C 1 1 2 1 3 0 C 4 -1 5 -1 6 0"},
        {"M0 0A0 5 0 0 0 3 4", "M 0 0 L 3 4"},
        {"M0 0A5 5 0 0 0 0 0L1 1", "M 0 0 L 1 1"},
        {"M0 0A2 1 90 0 1 0 4", "M 0 0 C 0.5523 0 1 0.8954 1 2 C 1 3.105 0.5523 4 0 4"},
        {"M0 0A1e-320 1 0 0 0 3 4", "M 0 0 L 3 4"},
        {"M0 0L1 1Ljunk", "M 0 0 L 1 1"}};
    for (const auto& [data, expected] : cases) {
        svg::PathSteps path;
        svg::AddPathData(data, path);
        EXPECT_EQ(Text(path.Take()), expected) << data;
    }
}

TEST(Markers, ContentOfOneFilledShapeIsTheOutline) {
    const std::pair<const char*, const char*> cases[] = {
        {"<path d='M0 0L3 0 0 2'/>", "M 0 0 L 3 0 L 0 2 Z"},
        {"<path d='M0 0h2v2M9 9M0 0h1v1z'/>", "M 0 0 L 2 0 L 2 2 Z M 0 0 L 1 0 L 1 1 Z"},
        {"<polygon points='0,0 3,1 0,2'/>", "M 0 0 L 3 1 L 0 2 Z"},
        {"<polyline points='0,0 3,1 0,2'/>", "M 0 0 L 3 1 L 0 2 Z"},
        {"<rect x='1' width='2' height='50%'/>", "M 1 0 L 3 0 L 3 1.5 L 1 1.5 Z"},
        {"<rect width='3' height='2' rx='9'/>",
         "M 1.5 0 L 1.5 0 C 2.328 0 3 0.4477 3 1 L 3 1 C 3 1.552 2.328 2 1.5 2 L 1.5 2 "
         "C 0.6716 2 0 1.552 0 1 L 0 1 C 0 0.4477 0.6716 0 1.5 0 Z"},
        {"<circle r='1' cx='1' cy='1'/>",
         "M 2 1 C 2 1.552 1.552 2 1 2 C 0.4477 2 0 1.552 0 1 C 0 0.4477 0.4477 0 1 0 "
         "C 1.552 0 2 0.4477 2 1 Z"},
        {"<title>t</title><g transform='translate(1)'><g transform='scale(-1 1)'><path d='M0 "
         "0h1v1'/></g></g>",
         "M 1 0 L 0 0 L 0 1 Z"},
        {"<path d='M0 0h1v1' display='none'/><path d='M0 0h3v1'/><line x2='3'/><path d='M1 1'/><g/>",
         "M 0 0 L 3 0 L 3 1 Z"},
        // What cannot be said.
        {"<path d='M0 0h1v1'/><path d='M0 0h2v2'/>", ""},
        {"<path d='M0 0h1v1' stroke='red'/>", ""},
        {"<path d='M0 0h1v1' fill='none' stroke='context-stroke'/>", ""},
        {"<path d='M0 0h1v1' stroke='red' stroke-width='0'/>", "M 0 0 L 1 0 L 1 1 Z"},
        {"<path d='M0 0h1v1' filter='url(#f)'/>", ""},
        {"<g clip-path='url(#c)'><path d='M0 0h1v1'/></g>", ""},
        {"<path d='M0 0L1e308 1e308 0 9' transform='scale(9)'/>", ""},
        {"<use href='#m'/>", ""},
        {"<text>a</text>", ""},
        // Nothing is drawn.
        {"", "null"},
        {"<g><path d='M1 1z'/><path d='M0 0h1v1' fill='none'/></g>", "null"},
        {"<path d='M0 0h1v1' visibility='hidden'/>", "null"},
        {"<path d='M0 0h1v1' fill='context-fill'/>", "null"}};
    for (const auto& [content, outline] : cases)
        EXPECT_EQ(Marked("", content).Outline(), outline) << content;
}

TEST(Markers, ArePlacedByViewBoxAndReferencePoint) {
    const std::string square = "<path d='M0 0h10v10'/>";
    const std::tuple<const char*, const char*, std::size_t> cases[] = {
        {"overflow='visible'", "M 0 0 L 10 0 L 10 10 Z", 0},
        {"", "M 0 0 L 10 0 L 10 10 Z", 1},
        {"viewBox='0 0 10 10'", "M 0 0 L 3 0 L 3 3 Z", 0},
        {"viewBox='0 0 10 10' markerWidth='6' markerHeight='2em' font-size='2' refX='5' refY='50%'",
         "M -2 -2 L 2 -2 L 2 2 Z", 0},
        {"viewBox='0 0 10 10' markerWidth='6' preserveAspectRatio='none' refX='right' refY='bottom'",
         "M -6 -3 L 0 -3 L 0 0 Z", 0},
        {"viewBox='-5 -5 10 10' refX='left' refY='center'", "M 1.5 0 L 4.5 0 L 4.5 3 Z", 1},
        {"viewBox='0 0 10 10' markerWidth='6' preserveAspectRatio='xMaxYMid'", "M 0 0 L 3 0 L 3 3 Z", 0},
        {"markerWidth='10' markerHeight='9.5' refX='100%' refY='1'", "M -10 -1 L 0 -1 L 0 9 Z", 0},
        {"viewBox='0 0 10'  overflow='visible' refX='x'", "M 0 0 L 10 0 L 10 10 Z", 0},
        {"markerWidth='-1' overflow='visible'", "M 0 0 L 10 0 L 10 10 Z", 0},
        {"markerWidth='0'", "null", 0},
        {"viewBox='0 0 0 1'", "null", 0}};
    for (const auto& [attributes, outline, clipped] : cases) {
        const Marked d(attributes, square);
        EXPECT_EQ(d.Outline(), outline) << attributes;
        EXPECT_EQ(d.Omitted("clipped marker"), clipped) << attributes;
    }
    const Marked invalid("viewBox='0 0 10' refX='x' markerWidth='-1' orient='north' markerUnits='px'",
                         square);
    for (const auto& [name, count] : {std::pair{"invalid viewBox", 1U},
                                      {"invalid length", 2U},
                                      {"invalid marker orient", 1U},
                                      {"invalid marker units", 1U}})
        EXPECT_EQ(invalid.Omitted(name), count) << name;
    EXPECT_TRUE(invalid->strokeWidthUnits);
    EXPECT_EQ(invalid->orient, Marker::Orient::Fixed);
}

TEST(Markers, TurnAndScaleAsTheySay) {
    const std::tuple<const char*, Marker::Orient, double> cases[] = {
        {"", Marker::Orient::Fixed, 0},         {"auto", Marker::Orient::Auto, 0},
        {"-45", Marker::Orient::Fixed, -45},    {"auto-start-reverse", Marker::Orient::AutoStartReverse, 0},
        {"90deg", Marker::Orient::Fixed, 90},   {"100grad", Marker::Orient::Fixed, 90},
        {".25turn", Marker::Orient::Fixed, 90}, {"1e308turn", Marker::Orient::Fixed, 0}};
    for (const auto& [text, orient, angle] : cases) {
        const Marked d("orient='" + std::string(text) + "' markerUnits='userSpaceOnUse'", "<circle r='1'/>");
        EXPECT_EQ(d->orient, orient) << text;
        EXPECT_DOUBLE_EQ(d->angle, angle) << text;
        EXPECT_FALSE(d->strokeWidthUnits);
    }
}

TEST(Markers, ArePaintedByWhereTheyStand) {
    const Marked d("fill='url(#g)' opacity='.5'",
                   "<linearGradient id='g'><stop/><stop/></linearGradient>"
                   "<g opacity='.5'><path d='M0 0h1v1' fill-opacity='.5' fill-rule='evenodd'/></g>");
    EXPECT_EQ(Drawing::Name(d->fill), "gradient");
    EXPECT_EQ(d->fillOpacity, 0.125);
    EXPECT_EQ(d->fillRule, svg::FillRule::EvenOdd);
    EXPECT_FALSE(d->fillIsStroke);
    EXPECT_EQ(d->id, "m");
    EXPECT_EQ(d.Omitted("unused definitions"), 0U);
    const Marked context("", "<path d='M0 0h1v1' fill='context-stroke'/>");
    EXPECT_TRUE(context->fillIsStroke);
    EXPECT_EQ(context.Outline(), "M 0 0 L 1 0 L 1 1 Z");
}

TEST(Markers, StandOnLinesThatAreStroked) {
    const Drawing d(R"(<style>.all{marker:url("#a")}</style>
        <marker id='a'><circle r='1' marker-start='url(#b)'/><marker id='b'><path d='M0 0h1v1' class='all'/></marker></marker>
        <g stroke='red' class='all'><path d='M0 0h1' style='marker-mid:none;marker-end:url(#b)'/><rect width='1' height='1'/>
        <circle r='1'/><polygon points='0 0 1 1'/><path d='M0 0' stroke='none'/>
        <polyline points='0 0' marker='url(#none)'/><line marker='url(x.svg#a)' marker-end='nonsense'/>
        <path d='M0 0' marker='none' marker-start='url(#g)'/></g><g id='g'/>)");
    ASSERT_EQ(d.items.size(), 8U) << d.Reason();
    const Marker* const a = d[0].stroke.markerStart;
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a->id, "a");
    EXPECT_FALSE(a->outline.empty());
    EXPECT_EQ(d[0].stroke.markerMid, nullptr);
    ASSERT_NE(d[0].stroke.markerEnd, nullptr);
    EXPECT_EQ(d[0].stroke.markerEnd->id, "b");
    EXPECT_EQ(d[1].stroke.markerStart, nullptr);
    EXPECT_EQ(d[2].stroke.markerStart, nullptr);
    EXPECT_EQ(d[3].stroke.markerMid, a);
    EXPECT_EQ(d[5].stroke.markerStart, nullptr);
    const std::pair<const char*, std::size_t> counts[] = {{"marker without stroke", 1},
                                                          {"unresolved reference", 4},
                                                          {"external reference", 3},
                                                          {"invalid value of marker-end", 1}};
    for (const auto& [name, count] : counts)
        EXPECT_EQ(d.Omitted(name), count) << name;
}

TEST(Markers, HugeAndDeepContentIsLeftOut) {
    std::string path = "<path d='M0 0";
    for (int i = 0; i < 5000; ++i)
        path += "h1v1";
    path += "'/>";
    const Marked huge("", path);
    EXPECT_EQ(huge.Outline(), "");
    EXPECT_EQ(huge.Omitted("marker outline too long"), 1U);
    std::string moves = "<path d='";
    for (int i = 0; i < 4000; ++i)
        moves += "M0 0h1";
    EXPECT_EQ(Marked("", moves + "'/>").Omitted("marker outline too long"), 1U);

    std::string deep = "<path d='M0 0h1v1'/>";
    for (int i = 0; i < 40; ++i)
        deep = "<g>" + deep + "</g>";
    EXPECT_EQ(Marked("", deep).Outline(), "");
    const Marked itself(
        "fill='url(#p)'",
        "<pattern id='p' width='1' height='1'><path d='M0 0h1v1' marker-end='url(#m)'/></pattern>"
        "<path d='M0 0h1v1'/>");
    EXPECT_NE(itself.Reason().find("itself"), std::string::npos);
}

}  // namespace
