#pragma once

#include <cstdint>
#include <limits>
#include <memory>
#include <span>
#include <unordered_map>
#include <vector>

#include "host/base/little_endian.h"

#include "fom/stored_entry.h"

namespace command {

/// Numbers the distinct entries of a pool in the order in which they are asked for, and writes each one once:
/// a length word and the record. Entries that are equal for a reader, who may see less of them, are one.
template <class Entry, class List>
class EntryTable {
public:
    explicit EntryTable(DocumentVersion version) : m_version(version), m_stored(std::make_shared<List>()) {}

    /// The number of an entry, which stays alive, from 0. A new one is appended to `bytes`; `isWhole` tells
    /// whether that went well. Throws bad_alloc.
    std::uint32_t Find(const Entry& entry, std::vector<std::uint8_t>& bytes, bool& isWhole) {
        isWhole = true;
        if (&entry == m_last) return m_lastNumber;
        const auto [known, isNew] = m_numbers.try_emplace(&entry, m_count);
        if (isNew) {
            const std::size_t start = bytes.size();
            isWhole = Write(entry, bytes);
            known->second = IsExact(entry) ? m_count++ : FindStored(bytes, start, isWhole);
        }
        m_last = &entry;
        m_lastNumber = known->second;
        return m_lastNumber;
    }
    std::uint32_t Count() const noexcept { return m_count; }

private:
    static constexpr std::size_t kLength = 4;

    /// Whether a reader sees all of an entry without colour names: reading it to find out takes time.
    bool IsExact(const Entry& entry) const noexcept {
        return m_version != DocumentVersion::V1200 && IsOfExactKind(entry);
    }
    static bool IsOfExactKind(const WRefCountFill& fill) noexcept {
        return fill.GetFillType() == FillUniform || fill.GetFillType() == FillFountain;
    }
    static bool IsOfExactKind(const WRefCountOutline& outline) noexcept {
        const unsigned kind = outline.GetCGEOutline()->type & 15u;
        return kind == OutlineSolid || kind == OutlineDotDash;
    }

    bool Write(const Entry& entry, std::vector<std::uint8_t>& bytes) {
        const std::size_t start = bytes.size();
        bytes.resize(start + kLength);
        const bool isWhole = AppendRecord(entry, m_version, bytes);
        const std::size_t length = bytes.size() - start - kLength;
        host::StoreLittle(bytes.data() + start, static_cast<std::uint32_t>(length));
        return isWhole && length <= std::numeric_limits<std::uint32_t>::max();
    }

    /// Writes what a reader will see of the record at `start`, which is what it will write again, in its
    /// place; what is there already is not written.
    std::uint32_t FindStored(std::vector<std::uint8_t>& bytes, std::size_t start, bool& isWhole) {
        const auto record = std::span<const std::uint8_t>(bytes).subspan(start + kLength);
        bool isRead = false;
        auto read = ReadRecord<Entry>(record, m_version, isRead);
        const Entry* pooled = m_stored->AddOrGetDuplicate(read.get(), nullptr);
        static_cast<void>(read.release());
        bytes.resize(start);
        const auto [known, isNew] = m_storedNumbers.try_emplace(pooled, m_count);
        if (isNew) {
            ++m_count;
            isWhole = Write(*pooled, bytes) && isWhole && isRead;
        }
        return known->second;
    }

    DocumentVersion m_version;
    std::uint32_t m_count = 0;
    const Entry* m_last = nullptr;
    std::uint32_t m_lastNumber = 0;
    std::unordered_map<const Entry*, std::uint32_t> m_numbers;
    std::shared_ptr<List> m_stored;  // the others, as a reader sees them
    std::unordered_map<const Entry*, std::uint32_t> m_storedNumbers;
};

}  // namespace command
