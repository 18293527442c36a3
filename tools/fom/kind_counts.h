#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "fom/document_walk.h"
#include "fom/facts.h"

namespace command {

/// How many of a document's entries are of which kind.
class KindCounts {
public:
    explicit KindCounts(DocumentVersion version) : m_version(version) {}

    void Count(const StoredEntry& stored);
    std::uint64_t Fills() const noexcept { return Total(m_fills); }
    std::uint64_t Outlines() const noexcept { return Total(m_outlines); }
    /// Total and kinds.
    void AddFills(Facts& facts) const { Add(m_fills, facts); }
    void AddOutlines(Facts& facts) const { Add(m_outlines, facts); }

private:
    using Map = std::map<std::string, std::uint64_t>;

    static std::uint64_t Total(const Map& kinds) noexcept;
    static void Add(const Map& kinds, Facts& facts);

    DocumentVersion m_version;
    Map m_fills, m_outlines;
};

}  // namespace command
