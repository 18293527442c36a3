#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "host/base/little_endian.h"

#include "fom/block_reader.h"

namespace command {

/// Goes through a block's payload. The first thing that is not there, or that somebody finds wrong, is the
/// fault.
class PayloadReader {
public:
    /// `fault` outlives it and is filled by Fail.
    PayloadReader(const Block& block, host::Error& fault) noexcept
        : m_rest(block.payload), m_end(block.PayloadOffset() + block.payload.size()), m_fault(fault) {}

    std::size_t Remaining() const noexcept { return m_rest.size(); }
    /// In the file.
    std::uint64_t Offset() const noexcept { return m_end - m_rest.size(); }
    /// False.
    bool Fail(std::uint64_t offset, std::string reason) {
        m_fault = DocumentFault(offset, std::move(reason));
        return false;
    }
    bool Fail(std::string reason) { return Fail(Offset(), std::move(reason)); }

    template <class... T>
    bool Read(T&... values) {
        if (m_rest.size() < (sizeof(T) + ...)) return Fail("the block ends early");
        ((values = host::LoadLittle<T>(Step(sizeof(T)).data())), ...);
        return true;
    }
    bool ReadBytes(std::size_t size, std::span<const std::uint8_t>& bytes) {
        if (m_rest.size() < size) return Fail("the block ends early");
        bytes = Step(size);
        return true;
    }
    bool ReadText(std::size_t size, std::string_view& text) {
        std::span<const std::uint8_t> bytes;
        if (!ReadBytes(size, bytes)) return false;
        text = {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
        return true;
    }
    /// Whether nothing is left.
    bool Ends() { return m_rest.empty() || Fail("the block has more than it says"); }

private:
    std::span<const std::uint8_t> Step(std::size_t size) noexcept {
        const auto step = m_rest.first(size);
        m_rest = m_rest.subspan(size);
        return step;
    }

    std::span<const std::uint8_t> m_rest;
    std::uint64_t m_end;
    host::Error& m_fault;
};

}  // namespace command
