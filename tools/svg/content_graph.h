#pragma once

#include <cstddef>
#include <vector>

namespace svg {

/// What the parts of a pattern's content refer to: the content itself is part 0, each thing that is referred
/// to is a further one.
class ContentGraph {
public:
    /// How often a part draws what it refers to.
    enum class Reach : unsigned char {
        /// Once.
        Once,
        /// Up to once for each element that it comes to, as groups hand down their paint.
        EachElement,
        /// Up to once for each vertex, as markers are.
        EachVertex
    };

    std::size_t Size() const { return m_parts.size(); }

    /// Starts the next part.
    void AddPart() { m_parts.emplace_back(); }

    /// Adds an element of the part that was started last, with the length of its start tag and the number of
    /// steps that filters take for it.
    void AddElement(std::size_t bytes, std::size_t filterSteps);

    /// Adds a reference from the part that was started last to one which may not have been started yet.
    void AddReference(std::size_t to, Reach reach) { m_parts.back().references.push_back({to, reach}); }

    /// All parts, each one before those that it refers to; fewer when some refer back to themselves.
    std::vector<std::size_t> Order() const;

    /// How much something takes to draw, about, everything as often as it is repeated.
    struct Work {
        double elements = 0;
        double filterSteps = 0;
    };

    /// What part 0 takes. `order` holds all parts, and all that is referred to is a part.
    Work CountDrawn(const std::vector<std::size_t>& order) const;

private:
    struct Reference {
        std::size_t to = 0;
        Reach reach = Reach::Once;
    };
    struct Part {
        std::vector<Reference> references;
        Work own;
        double vertices = 0;
    };

    std::vector<Part> m_parts;
};

}  // namespace svg
