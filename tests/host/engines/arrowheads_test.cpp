#include "engines/arrowheads.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>

#include "engines/arrowhead_shapes.h"
#include "engines/arrowhead_text.h"
#include "support/alloc_faults.h"
#include "support/leak_check.h"
#include "support/recording_services.h"
#include "support/temp_folder.h"

namespace {

using Heads = std::map<std::string, CGE_ARROWHEAD, std::less<>>;
using Log = std::vector<std::string>;

Heads BuiltIn() {
    Heads heads;
    host::ArrowheadText text(host::BuiltInArrowheadText());
    while (const auto line = text.Next()) {
        EXPECT_EQ(line->fault, "") << line->name;
        EXPECT_TRUE(heads.emplace(line->name, line->head).second) << line->name;
    }
    return heads;
}

/// A line or curve by its four points, from the lesser end: the same whichever way it is run through.
using Edge = std::array<std::pair<int, int>, 4>;

Edge MakeEdge(const std::array<POINT, 4>& points, bool mirror) {
    Edge edge, back;
    for (std::size_t i = 0; i < 4; ++i)
        edge[i] = back[3 - i] = {points[i].x, mirror ? -points[i].y : points[i].y};
    return std::min(edge, back);
}

/// Twice what the control points enclose with (0, 0).
double Swept(const std::array<POINT, 4>& points) {
    double area = 0;
    for (std::size_t i = 0; i < 3; ++i)
        area += double{1} * points[i].x * points[i + 1].y - double{1} * points[i + 1].x * points[i].y;
    return area;
}

struct Outline {
    std::multiset<Edge> edges, mirrored;
    double largestArea = 0;
    bool closed = true;
};

Outline Measure(const CGE_ARROWHEAD& head) {
    Outline outline;
    POINT start, at;
    double area = 0;
    bool open = false;
    for (const CGE_ARROWSTEP& step : head.steps) {
        const POINT to = step.kind == kArrowClose ? start : step.to;
        if (step.kind == kArrowMove) {
            outline.closed &= !open;
            start = to;
            area = 0;
        } else if (!(to == at) || step.kind == kArrowCurve) {
            const bool curve = step.kind == kArrowCurve;
            const std::array<POINT, 4> points{at, curve ? step.control1 : at, curve ? step.control2 : to, to};
            outline.edges.insert(MakeEdge(points, false));
            outline.mirrored.insert(MakeEdge(points, true));
            area += Swept(points) / 2;
        }
        open = step.kind != kArrowClose;
        if (!open) outline.largestArea = std::max(outline.largestArea, std::abs(area));
        at = to;
    }
    outline.closed &= !open;
    return outline;
}

class Arrowheads : public testing_support::LeakCheckedTest {};

TEST_F(Arrowheads, BuiltInOnesAreSoundShapes) {
    const Heads heads = BuiltIn();
    const std::set<std::string> lopsided{"Half left", "Half right", "Hook left", "Hook right", "Slash"};
    std::set<std::multiset<Edge>> distinct;
    ASSERT_GE(heads.size(), 20u);
    for (const auto& [name, head] : heads) {
        SCOPED_TRACE(name);
        const Outline outline = Measure(head);
        EXPECT_TRUE(outline.closed);
        EXPECT_GT(outline.largestArea, 500 * 500);
        EXPECT_EQ(outline.edges == outline.mirrored, lopsided.count(name) == 0);
        distinct.insert(outline.edges);
        EXPECT_LE(std::abs(head.lineEnd), 10'000);
        for (const CGE_ARROWSTEP& step : head.steps)
            for (const POINT& point : {step.to, step.control1, step.control2})
                EXPECT_TRUE(std::abs(point.x) <= 10'000 && std::abs(point.y) <= 10'000);
        const host::MemoryBlock block(head.ToBlock());
        EXPECT_EQ(CGE_ARROWHEAD::FromBlock(block.Get()), head);
    }
    EXPECT_EQ(distinct.size(), heads.size());
    for (const std::string kind : {"Half", "Hook"})
        EXPECT_EQ(Measure(heads.at(kind + " left")).edges, Measure(heads.at(kind + " right")).mirrored);
}

TEST_F(Arrowheads, DiscsAreRound) {
    const Heads heads = BuiltIn();
    POINT at;
    for (const CGE_ARROWSTEP& step : heads.at("Centred disc").steps) {
        for (double t = 0; step.kind == kArrowCurve && t <= 1; t += 0.0625) {
            const double a = (1 - t) * (1 - t) * (1 - t), b = 3 * t * (1 - t) * (1 - t),
                         c = 3 * t * t * (1 - t), d = t * t * t;
            EXPECT_NEAR(std::hypot(a * at.x + b * step.control1.x + c * step.control2.x + d * step.to.x,
                                   a * at.y + b * step.control1.y + c * step.control2.y + d * step.to.y),
                        1500, 1);
        }
        at = step.to;
    }
}

/// The faults of a text by line, or the number of steps where there is none.
Log Read(std::string_view text) {
    Log log;
    for (host::ArrowheadText reader(text); const auto line = reader.Next();)
        log.push_back(
            std::to_string(line->number) + ' ' +
            (line->fault.empty() ? std::to_string(line->head.steps.size()) : std::string(line->fault)));
    return log;
}

TEST_F(Arrowheads, TextIsReadByItsRules) {
    host::ArrowheadText text(
        "\xEF\xBB\xBF# ours\r\n\n  Spitze \xC3\xA4 : E-2e2M-1.5,.5 1 2C1 2,3 4 5 6 7 8 9 10 "
        "11 12 Z # tip\r\n");
    const auto line = text.Next();
    ASSERT_TRUE(line);
    EXPECT_EQ(line->number, 3u);
    EXPECT_EQ(line->name, "Spitze \xC3\xA4");
    EXPECT_EQ(line->head, (CGE_ARROWHEAD{{{kArrowMove, {-2, 1}, {}, {}},
                                          {kArrowLine, {1, 2}, {}, {}},
                                          {kArrowCurve, {5, 6}, {1, 2}, {3, 4}},
                                          {kArrowCurve, {11, 12}, {7, 8}, {9, 10}},
                                          {kArrowClose, {}, {}, {}}},
                                         -200}));
    EXPECT_FALSE(text.Next());
    EXPECT_EQ(Read("M0 0L1 1Z\n: M0 0L1 1\na:\na: E5\n"),
              (Log{"1 an arrowhead's line begins with its name and a colon",
                   "2 an arrowhead's line begins with its name and a colon", "3 the arrowhead has no path",
                   "4 the arrowhead has no path"}));
    EXPECT_EQ(
        Read("a: M0 0Q1 1\na: M0 0L1\na: M0 0L1 1000001\na: M0 0Lnan 1\na: M0 0L1 1e999\na: M0 0L- 1\n"),
        (Log{"1 a path has the steps M, L, C, Z and E",
             "2 a number is missing, not understood or beyond 1,000,000",
             "3 a number is missing, not understood or beyond 1,000,000",
             "4 a number is missing, not understood or beyond 1,000,000",
             "5 a number is missing, not understood or beyond 1,000,000",
             "6 a number is missing, not understood or beyond 1,000,000"}));
    EXPECT_EQ(Read("a: L0 0\na: M0 0L1 1ZL2 2\na: M0 0Z\na: M0 0L1 1M2 2\na: M0 0L1 1Z5 5\nb: M0 0L1 1"),
              (Log{"1 each part of a path begins with M", "2 each part of a path begins with M",
                   "3 nothing is drawn after an M", "4 nothing is drawn after an M",
                   "5 a path has the steps M, L, C, Z and E", "6 2"}));
    std::string path = "a: M0 0";
    for (int i = 0; i < 1000; ++i)
        path += " 1 1";
    EXPECT_EQ(Read(path.substr(0, path.size() - 4)), Log{"1 1000"});
    EXPECT_EQ(Read(path), Log{"1 the path has more than 1,000 steps"});
}

TEST_F(Arrowheads, DamagedTextNeverGivesABrokenShape) {
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        std::string text(host::BuiltInArrowheadText());
        for (int change = 0; change < 40; ++change)
            text[random() % text.size()] = static_cast<char>(random());
        text.resize(random() % text.size());
        for (host::ArrowheadText reader(text); const auto line = reader.Next();) {
            if (!line->fault.empty()) continue;
            EXPECT_TRUE(line->head.IsWellFormed());
            EXPECT_GE(line->head.steps.size(), 2u);
        }
    }
}

class ArrowheadFiles : public Arrowheads {
protected:
    std::filesystem::path Write(const std::string& name, const std::string& text) {
        std::filesystem::create_directories((m_folder / name).parent_path());
        std::ofstream(m_folder / name, std::ios::binary) << text;
        return m_folder / name;
    }
    /// How many arrowheads come after the built-in ones, then the warnings without the file's path.
    Log Load(const std::vector<std::filesystem::path>& files) {
        const host::ArrowheadSet set = host::LoadArrowheads(files);
        Log log{std::to_string(set.blocks.size() - m_builtIn)};
        for (const std::wstring& warning : set.warnings) {
            const std::string text = host::ToUtf8(warning);
            log.push_back(text.substr(text.find(".txt") + 4));
        }
        return log;
    }

    const testing_support::TempFolder m_folder;
    const std::size_t m_builtIn = BuiltIn().size();
};

TEST_F(ArrowheadFiles, GoodLinesStayAndBadOnesAreNamed) {
    const auto good = Write("good.txt", "a: M0 0L1 1\nb: L\n\nc: M0 0L2 2Z\n");
    EXPECT_EQ(Load({m_folder / "none.txt", good, Write("other.txt", "x")}),
              (Log{"2", ":2: a number is missing, not understood or beyond 1,000,000"}));
    EXPECT_EQ(Load({}), Log{"0"});
    EXPECT_EQ(Load({Write("binary.txt", std::string("a: M0 0L1 1\n\0", 13))}),
              (Log{"0", ": not a text file"}));
    EXPECT_EQ(Load({Write("empty.txt", "")}), Log{"0"});
    EXPECT_EQ(Load({Write("huge.txt", std::string((4u << 20) + 1, '#'))}), (Log{"0", ": too large"}));
    std::filesystem::create_directory(m_folder / "folder.txt");
    EXPECT_EQ(Load({m_folder / "folder.txt", good}).size(), 2u);

    std::string bad, many;
    for (int i = 0; i < 25; ++i)
        bad += "?\n";
    for (int i = 0; i < 1002; ++i)
        many += "a: M0 0L1 1\n";
    const Log faults = Load({Write("bad.txt", bad)});
    ASSERT_EQ(faults.size(), 12u);
    EXPECT_EQ(faults.back(), ": 15 more lines cannot be read");
    EXPECT_EQ(Load({Write("many.txt", many)}),
              (Log{"1000", ":1001: more than 1,000 arrowheads; the rest is left out"}));
}

TEST_F(ArrowheadFiles, TakesNoMoreMemoryThanTheFileIsWorth) {
    std::string text;
    while (text.size() < 2'000'000) {
        text += "a:M0 0";
        for (int i = 0; i < 900; ++i)
            text += " 1 1";
        text += '\n';
    }
    const auto file = Write("dense.txt", text);
    const testing_support::HeapMeter meter;
    EXPECT_GT(host::LoadArrowheads({&file, 1}).blocks.size(), m_builtIn + 500);
    EXPECT_LT(meter.ThreadPeak(), 4 * static_cast<std::ptrdiff_t>(text.size()));
}

TEST_F(ArrowheadFiles, FailedAllocationsLeaveNothing) {
    const auto file = Write("good.txt", "a: M0 0L1 1\nb: ?\n");
    const std::size_t before = host::LiveMemoryBlocks();
    EXPECT_GT(testing_support::FailEachAllocation(
                  [&] {
                      host::LoadArrowheads({&file, 1});
                  },
                  [&] { EXPECT_EQ(host::LiveMemoryBlocks(), before); }),
              m_builtIn);
}

class ArrowheadService : public ArrowheadFiles {
protected:
    ArrowheadService() {
        m_services.folders.userCustom = host::FromPath(m_folder / "custom");
        m_services.folders.application = host::FromPath(m_folder / "app");
    }

    testing_support::RecordingServices m_services;
    const testing_support::ServicesScope m_scope{m_services};
    host::StandaloneArrowheads m_list;
};

TEST_F(ArrowheadService, LoadsInTheBackgroundAndWarnsWhoWaits) {
    Write("app/arrows.txt", "a: M0 0L1 1Z\nb: M0 0L2 2Z\nc\n");
    m_list.Load();
    m_list.Load();
    EXPECT_EQ(m_services.log, Log());
    EXPECT_EQ(m_list.GetCount(), m_builtIn + 2);
    ASSERT_EQ(m_services.log.size(), 1u);
    EXPECT_NE(m_services.log[0].find("arrows.txt:3: an arrowhead's line begins"), std::string::npos);

    const auto last = static_cast<unsigned>(m_builtIn + 1);
    const HMEM handle = m_list.GetHandle(last);
    EXPECT_EQ(CGE_ARROWHEAD::FromBlock(handle)->steps[1].to, (POINT{2, 2}));
    EXPECT_EQ(m_list.GetHandle(last), handle);
    EXPECT_EQ(m_list.GetHandle(last + 1), nullptr);
    const host::MemoryBlock copy(MEMMANDuplicate(handle));
    EXPECT_TRUE(m_list.AreSame(handle, copy.Get()));
    EXPECT_TRUE(m_list.AreSame(nullptr, nullptr));
    EXPECT_FALSE(m_list.AreSame(nullptr, handle));
    EXPECT_FALSE(m_list.AreSame(m_list.GetHandle(last - 1), handle));
    EXPECT_EQ(m_services.log.size(), 1u);
}

TEST_F(ArrowheadService, FreeDropsAllAlsoInFlightAndTheNextQuestionLoadsAgain) {
    const std::size_t before = host::LiveMemoryBlocks();
    Write("app/arrows.txt", "a: M0 0L1 1Z\nbad\n");
    m_list.Load();
    m_list.Free();
    EXPECT_EQ(host::LiveMemoryBlocks(), before);
    EXPECT_EQ(m_list.GetCount(), m_builtIn + 1);
    EXPECT_EQ(host::LiveMemoryBlocks(), before + m_builtIn + 1);
    m_list.Free();
    m_list.Free();
    EXPECT_EQ(host::LiveMemoryBlocks(), before);

    Write("custom/arrows.txt", "x: M0 0L1 1\ny: M0 0L2 2\nz: M0 0L3 3\n");
    EXPECT_NE(m_list.GetHandle(static_cast<unsigned>(m_builtIn + 2)), nullptr);
    EXPECT_EQ(m_services.log.size(), 1u);
    m_list.Free();
    m_list.Load();  // goes with its thread
}

struct FreeingLayer : host::InterfaceLayer {
    explicit FreeingLayer(host::ArrowheadList& freed) noexcept : list(freed) {}
    bool Start() override { return true; }
    void Stop() override {}
    void WarnUser(std::wstring_view) override { list.Free(); }
    host::ArrowheadList& list;
};

TEST_F(ArrowheadService, MayBeFreedByWhoIsWarned) {
    Write("app/arrows.txt", "a: M0 0L1 1Z\nbad\n");
    FreeingLayer layer(m_list);
    const host::Services services = m_services.Get();
    const host::Services freeing{services.graphicsEngine, layer,
                                 services.folders,        services.preferences,
                                 services.switches,       services.resourceStrings,
                                 services.units,          services.textureEngine,
                                 services.arrowheads,     services.importFilters,
                                 services.fillContainers, services.patternImages,
                                 services.monoPatterns};
    host::Install(freeing);
    EXPECT_EQ(m_list.GetCount(), m_builtIn + 1);
}

TEST(Deferred, WhatFailsInTheBackgroundIsDoneAgainByWhoWaits) {
    int runs = 0;
    host::Deferred<int> answer;
    const auto work = [&runs] { return ++runs < 3 ? throw std::bad_alloc() : runs; };
    answer.Start(work);
    EXPECT_THROW(answer.Get(), std::bad_alloc);
    EXPECT_TRUE(answer.IsStarted());
    EXPECT_EQ(answer.Get(), 3);
    EXPECT_EQ(answer.Get(), 3);
    answer.Reset();
    EXPECT_FALSE(answer.IsStarted());

    testing_support::FailEachAllocation(
        [&] {
            answer.Start(work);
            EXPECT_GT(answer.Get(), 3);
        },
        [&] { answer.Reset(); });
}

}  // namespace
