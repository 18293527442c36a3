#include <algorithm>

#include "host/base/temp_data.h"
#include "host/gfx/fill.h"

#include "base/locked_block.h"
#include "gfx/fill_fields.h"
#include "stream/outline_codec.h"
#include "stream/record_body.h"

namespace host::detail {
namespace {

/// The graphics engine's part of a pattern-data block, up to its last byte that is not 0. What follows it in
/// the block names the entry that owns the record and is not stored.
struct PatternDataCodec {
    static constexpr std::size_t kMaxSize = 576;
    static_assert(kMaxSize + sizeof(std::uint64_t) == kPatternDataSize);

    static bool IsDefault(HMEM block, HMEM) noexcept { return block == nullptr; }
    static std::size_t SizeBound(HMEM block) noexcept { return block ? kSizedHead + kMaxSize : 0; }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, HMEM block, PtrRemapper&) {
        return WriteSized(at, number, [&](std::uint8_t* to) {
            const LockedBlock locked(block);
            Bytes bytes = locked.Bytes().first(std::min(kMaxSize, locked.Bytes().size()));
            while (!bytes.empty() && bytes.back() == 0)
                bytes = bytes.first(bytes.size() - 1);
            return std::copy(bytes.begin(), bytes.end(), to);
        });
    }
    static bool Read(Bytes bytes, HMEM& block, PtrRemapper&) {
        if (bytes.size() > kMaxSize) return false;
        block = MEMMANAlloc(kPatternDataSize, true);
        if (!block) throw std::bad_alloc();
        const LockedBlock locked(block);
        std::copy(bytes.begin(), bytes.end(), locked.Bytes().begin());
        return true;
    }
};

/// Whether there is temporary data; what it holds follows elsewhere. Read, it is a fresh empty entry.
template <bool isImage>
struct TmpFileCodec {
    static constexpr std::size_t kSize = FieldSize(1);

    static bool IsDefault(std::uint32_t id, std::uint32_t) noexcept { return id == 0; }
    static std::size_t SizeBound(std::uint32_t) noexcept { return kSize; }
    static std::uint8_t* Write(std::uint8_t* at, unsigned number, std::uint32_t id, PtrRemapper&) noexcept {
        return StoreLittle(StoreHead(at, number, 1), std::uint8_t{id != 0});
    }
    static bool Read(Bytes bytes, std::uint32_t& id, PtrRemapper&) {
        if (bytes.size() != 1) return false;
        if (bytes[0] != 0) id = isImage ? TMPRegisterPrivateData(nullptr) : TMPCreateTmpFile();
        return true;
    }
};

}  // namespace

// Of a pattern's members these two are owned; blocks of other records are references.
template <class Record>
struct CodecOf<Record, HMEM CGE_PATTERNFILL::*> {
    using Type = PatternDataCodec;
};
template <class Record>
struct CodecOf<Record, std::uint32_t CGE_PATTERNFILL::*> {
    using Type = TmpFileCodec<!std::is_same_v<Record, CGE_VECTORFILL>>;
};

}  // namespace host::detail

void CGE_FILL::SaveIn(udi::OutputArchive& archive) const {
    host::detail::WriteBody(archive, *this);
}

bool CGE_FILL::LoadFrom(udi::InputArchive& archive) {
    return host::detail::ReadBody(archive, *this);
}
