#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>
#include <type_traits>
#include <vector>

#include "host/base/little_endian.h"
#include "host/stream/file_stream.h"

#include "fom/document_format.h"

namespace command {

/// Writes the head of a document file. Faults show in the stream's good flag, as below.
void WriteDocumentHead(AbstractFileStream& stream, DocumentVersion version) noexcept;

template <class T>
void Append(std::vector<std::uint8_t>& bytes, T value) {
    std::uint8_t stored[sizeof(T)];
    host::StoreLittle(stored, value);
    bytes.insert(bytes.end(), stored, stored + sizeof(T));
}

/// Gathers one block at a time: counts that are known in the end, then what is appended.
class BlockBuilder {
public:
    /// The payload begins with so many words, set when the block is written.
    BlockBuilder(std::uint32_t tag, std::size_t words) : m_tag(tag), m_words(words) { Clear(); }

    /// What blocks of this kind are made of, to append to.
    std::vector<std::uint8_t>& Bytes() noexcept { return m_bytes; }
    std::size_t Size() const noexcept { return m_bytes.size(); }
    bool IsEmpty() const noexcept { return m_bytes.size() == kBlockHead + 4 * m_words; }

    template <class T>
    requires std::is_integral_v<T>
    void Add(T value) { Append(m_bytes, value); }
    void Add(std::span<const std::uint8_t> bytes) {
        m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    }
    void Add(std::string_view text) { m_bytes.insert(m_bytes.end(), text.begin(), text.end()); }
    /// Replaces a word.
    void Set(std::size_t at, std::uint32_t word) noexcept { host::StoreLittle(m_bytes.data() + at, word); }

    /// Writes the block with its digest and starts the next one. False when it is too large for one.
    bool Write(AbstractFileStream& stream, std::initializer_list<std::uint32_t> words);

private:
    void Clear() { m_bytes.assign(kBlockHead + 4 * m_words, 0); }

    std::uint32_t m_tag;
    std::size_t m_words;
    std::vector<std::uint8_t> m_bytes;  // the block's head first
};

}  // namespace command
