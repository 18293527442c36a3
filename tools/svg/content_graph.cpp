#include "svg/content_graph.h"

namespace svg {
namespace {

/// The shortest text of a vertex in path data, as in "h1".
constexpr double kVertexBytes = 2;

}  // namespace

void ContentGraph::AddElement(std::size_t bytes) {
    m_parts.back().elements += 1;
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

double ContentGraph::CountDrawn(const std::vector<std::size_t>& order) const {
    // What a part comes to by itself and by what it draws once, and what it comes to with all paint.
    std::vector<double> bare(m_parts.size()), vertices(m_parts.size()), drawn(m_parts.size());
    for (std::size_t i = order.size(); i-- > 0;) {
        const std::size_t at = order[i];
        const Part& part = m_parts[at];
        bare[at] = drawn[at] = part.elements;
        vertices[at] = part.vertices;
        for (const Reference& reference : part.references) {
            drawn[at] += reference.reach == Reach::Once ? drawn[reference.to] : 0;
            bare[at] += reference.reach == Reach::Once ? bare[reference.to] : 0;
            vertices[at] += reference.reach == Reach::Once ? vertices[reference.to] : 0;
        }
        for (const Reference& reference : part.references) {
            if (reference.reach == Reach::EachElement) drawn[at] += bare[at] * drawn[reference.to];
            if (reference.reach == Reach::EachVertex) drawn[at] += vertices[at] * drawn[reference.to];
        }
    }
    return m_parts.empty() ? 0 : drawn[0];
}

}  // namespace svg
