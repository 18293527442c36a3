#include "svg/content_graph.h"

namespace svg {
namespace {

/// The shortest text of a vertex in path data, as in "h1".
constexpr double kVertexBytes = 2;

}  // namespace

void ContentGraph::AddElement(std::size_t bytes, std::size_t filterSteps) {
    m_parts.back().own.elements += 1;
    m_parts.back().own.filterSteps += static_cast<double>(filterSteps);
    m_parts.back().vertices += static_cast<double>(bytes) / kVertexBytes;
}

std::vector<std::size_t> ContentGraph::Order() const {
    std::vector<std::size_t> incoming(m_parts.size(), 0);
    for (const Part& part : m_parts) {
        for (const Reference& reference : part.references)
            ++incoming[reference.to];
    }
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < incoming.size(); ++i) {
        if (incoming[i] == 0) order.push_back(i);
    }
    for (std::size_t done = 0; done < order.size(); ++done) {
        for (const Reference& reference : m_parts[order[done]].references) {
            if (--incoming[reference.to] == 0) order.push_back(reference.to);
        }
    }
    return order;
}

ContentGraph::Work ContentGraph::CountDrawn(const std::vector<std::size_t>& order) const {
    // What a part comes to by itself and by what it draws once, and what it comes to with all paint.
    std::vector<double> bare(m_parts.size()), vertices(m_parts.size());
    std::vector<Work> drawn(m_parts.size());
    for (std::size_t i = order.size(); i-- > 0;) {
        const std::size_t at = order[i];
        const Part& part = m_parts[at];
        bare[at] = part.own.elements;
        vertices[at] = part.vertices;
        drawn[at] = part.own;
        for (const Reference& reference : part.references) {
            if (reference.reach != Reach::Once) continue;
            bare[at] += bare[reference.to];
            vertices[at] += vertices[reference.to];
        }
        for (const Reference& reference : part.references) {
            const double times = reference.reach == Reach::Once          ? 1
                                 : reference.reach == Reach::EachElement ? bare[at]
                                                                         : vertices[at];
            drawn[at].elements += times * drawn[reference.to].elements;
            drawn[at].filterSteps += times * drawn[reference.to].filterSteps;
        }
    }
    return m_parts.empty() ? Work() : drawn[0];
}

}  // namespace svg
