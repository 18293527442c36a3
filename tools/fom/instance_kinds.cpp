#include "fom/instance_kinds.h"

#include <functional>

namespace command {
namespace {

void Mix(std::size_t& hash, std::size_t value) {
    hash ^= value + 0x9e3779b97f4a7c15 + (hash << 6) + (hash >> 2);
}

}  // namespace

std::size_t InstanceKinds::Hash::operator()(std::size_t kind) const {
    const InstanceKind& hashed = (*kinds)[kind];
    const std::hash<const void*> hashOf;
    std::size_t hash = hashOf(hashed.target.Identity());
    for (const InstancePart& part : hashed.parts) {
        Mix(hash, hashOf(part.element));
        Mix(hash, part.number);
    }
    return hash;
}

bool InstanceKinds::Equal::operator()(std::size_t a, std::size_t b) const {
    return (*kinds)[a].target == (*kinds)[b].target && (*kinds)[a].parts == (*kinds)[b].parts;
}

void InstanceKinds::Add(const svg::Shape& shape, std::size_t paint) {
    const auto isPast = [&] {
        return m_path.size() > shape.instances.size() ||
               m_path.back().instance.number != shape.instances[m_path.size() - 1].number;
    };
    while (!m_path.empty() && isPast())
        Close();
    while (m_path.size() < shape.instances.size())
        m_path.push_back({shape.instances[m_path.size()], m_parts.size()});
    m_parts.push_back({shape.node.Identity(), paint, false});
}

void InstanceKinds::Finish() {
    while (!m_path.empty())
        Close();
}

void InstanceKinds::Close() {
    const Open open = m_path.back();
    m_path.pop_back();
    const auto first = m_parts.begin() + static_cast<std::ptrdiff_t>(open.firstPart);
    m_kinds.push_back({open.instance.target, {first, m_parts.end()}, 0});
    const auto [known, isNew] = m_known.insert(m_kinds.size() - 1);
    if (!isNew) m_kinds.pop_back();
    ++m_kinds[*known].times;
    m_parts.erase(first, m_parts.end());
    m_parts.push_back({open.instance.use.Identity(), *known, true});
}

}  // namespace command
