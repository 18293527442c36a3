#pragma once

#include <cstddef>
#include <unordered_set>
#include <vector>

#include "svg/shape.h"

namespace command {

/// An element as it is drawn: a shape with a paint, or a "use" with what it shows.
struct InstancePart {
    /// XmlNode::Identity.
    const void* element = nullptr;
    /// Of the shape's paint, or of the kind of instances that the "use" shows one of.
    std::size_t number = 0;
    bool isUse = false;

    bool operator==(const InstancePart&) const = default;
};

/// What some "use" show alike: an element, and in it everything with the same paints.
struct InstanceKind {
    host::XmlNode target;
    /// In the order of the document, each element once. What a "use" among them shows is not.
    std::vector<InstancePart> parts;
    /// How many instances the drawing has.
    std::size_t times = 0;
};

/// Sorts what the "use" elements of one drawing show into kinds. Instances without shapes have none.
class InstanceKinds {
public:
    InstanceKinds() = default;
    InstanceKinds(const InstanceKinds&) = delete;
    InstanceKinds& operator=(const InstanceKinds&) = delete;

    /// Shapes come in drawing order.
    void Add(const svg::Shape& shape, std::size_t paint);
    /// Behind the last shape.
    void Finish();

    /// After Finish. A kind comes behind those that it shows.
    const std::vector<InstanceKind>& Kinds() const { return m_kinds; }
    /// After Finish: what is drawn where it stands.
    const std::vector<InstancePart>& Direct() const { return m_parts; }

private:
    struct Open {
        svg::Instance instance;
        std::size_t firstPart;
    };
    struct Hash {
        const std::vector<InstanceKind>* kinds;
        std::size_t operator()(std::size_t kind) const;
    };
    struct Equal {
        const std::vector<InstanceKind>* kinds;
        bool operator()(std::size_t a, std::size_t b) const;
    };

    void Close();

    std::vector<InstanceKind> m_kinds;
    std::unordered_set<std::size_t, Hash, Equal> m_known{0, Hash{&m_kinds}, Equal{&m_kinds}};
    // The instances that are being drawn, and the parts of them all.
    std::vector<Open> m_path;
    std::vector<InstancePart> m_parts;
};

}  // namespace command
