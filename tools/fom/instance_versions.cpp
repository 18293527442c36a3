#include "fom/instance_versions.h"

#include <algorithm>

namespace command {

InstanceVersions::InstanceVersions(const InstanceKinds& kinds, bool sharesOriginals, const Obstacle& obstacle)
    : m_kinds(kinds), m_versions(kinds.Kinds().size()) {
    for (const InstancePart& part : kinds.Direct())
        Write(part, 1, {});
    for (std::size_t i = 0; i < m_versions.size(); ++i) {
        if (m_versions[i] != Version::Open) continue;
        const InstanceKind& kind = kinds.Kinds()[i];
        const bool fits = sharesOriginals && Fits(kind);
        const std::string_view reason = fits ? std::string_view() : obstacle(kind);
        if (fits || !reason.empty()) {
            Keep(i, reason);
        } else {
            m_versions[i] = Version::Copy;
        }
    }
}

const InstanceVersions::Original* InstanceVersions::Find(host::XmlNode element) const {
    const auto found = m_originals.find(element.Identity());
    return found == m_originals.end() ? nullptr : &found->second;
}

bool InstanceVersions::Fits(const InstanceKind& kind) const {
    return std::all_of(kind.parts.begin(), kind.parts.end(), [&](const InstancePart& part) {
        const auto found = m_originals.find(part.element);
        return found == m_originals.end() || (found->second.part == part && found->second.dispute.empty());
    });
}

/// The kind is shown as it stands. Where that takes a "use" away from what it was led to, those kinds are,
/// too.
void InstanceVersions::Keep(std::size_t kind, std::string_view reason) {
    m_kept.push_back(kind);
    while (!m_kept.empty()) {
        const std::size_t next = m_kept.back();
        m_kept.pop_back();
        if (m_versions[next] == Version::Original) continue;
        m_versions[next] = Version::Original;
        const InstanceKind& kept = m_kinds.Kinds()[next];
        for (const InstancePart& part : kept.parts)
            Write(part, kept.times, reason);
    }
}

void InstanceVersions::Write(const InstancePart& part, std::size_t times, std::string_view reason) {
    const auto [known, isNew] = m_originals.try_emplace(part.element, Original{part, 0, {}});
    Original& original = known->second;
    original.shapes += times;
    if (isNew || (original.part == part && original.dispute.empty())) return;
    if (original.dispute.empty()) original.dispute = reason;
    if (!part.isUse) return;
    m_kept.push_back(part.number);
    m_kept.push_back(original.part.number);
}

}  // namespace command
