#pragma once

#include <functional>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "svg/paint_servers.h"
#include "svg/reading.h"
#include "svg/shape.h"
#include "svg/stroke_reader.h"

namespace svg {

using ShapeVisitor = std::function<void(const Shape&)>;

/// Goes through what a document draws, in drawing order, and shows each painted shape. Keeps its own stack:
/// neither deep art nor long chains of "use" use up the program's.
class Walker {
public:
    /// Most elements that are drawn through "use", all repetitions counted.
    static constexpr std::size_t kMaxInstances = 1'000'000;

    Walker(Reading& reading, PaintServers& servers, StrokeReader& strokes, const ShapeVisitor& visit)
        : m_reading(reading), m_servers(servers), m_strokes(strokes), m_visit(visit) {}

    /// Stops at the first fault.
    void Run();

private:
    /// What an element hands down to what stands in it.
    struct Frame {
        host::XmlNode element;
        host::XmlNode next;
        Style style;
        Matrix transform;
        Viewport viewport;
        double opacity = 1;
        /// How many of m_path it is drawn through.
        std::size_t instances = 0;
        /// Only `next` is drawn, not its siblings: it is the target of a "use", or what a "switch" chose.
        bool single = false;
        bool muted = false;
        bool text = false;
    };

    void Step();
    void Enter(host::XmlNode element, Tag tag);
    void Draw(host::XmlNode element, Tag tag, const ElementFacts& facts, Frame& inner);
    void Push(host::XmlNode element, host::XmlNode first);

    void EnterUse(host::XmlNode element, const ElementFacts& facts, Frame& inner);
    void EnterViewport(host::XmlNode element, Frame& inner, host::XmlNode sizes);
    host::XmlNode ChooseSwitchCase(host::XmlNode element) const;
    bool IsOnPath(host::XmlNode element) const;

    void NoteEffects(const Frame& inner, bool container);
    void NoteAnimations(host::XmlNode shape);
    void NoteUndrawn(host::XmlNode element, Tag tag);
    void Show(host::XmlNode element, Tag tag, const ElementFacts& facts, const Frame& inner);

    Reading& m_reading;
    PaintServers& m_servers;
    StrokeReader& m_strokes;
    const ShapeVisitor& m_visit;
    // Frames beyond m_depth are kept for their memory.
    std::vector<Frame> m_frames;
    std::size_t m_depth = 0;
    std::vector<Instance> m_path;
    std::size_t m_uses = 0;
    std::size_t m_instances = 0;
    std::unordered_set<const void*> m_instantiated;
};

}  // namespace svg
