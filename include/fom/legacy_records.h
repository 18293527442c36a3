#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/base/export.h"
#include "host/color/context.h"
#include "host/gfx/fill.h"
#include "host/gfx/outline.h"
#include "host/stream/ptr_remapper.h"

/// Fixed binary records of documents before this generation, as bytes; docs/formats/legacy_records.md has the
/// tables. Byte 0 and 1 are the kind (CgeFillType). What a reader asks for beyond the bytes that are there
/// reads as 0.
template <unsigned kVersion>
struct CGE_FILL_LEGACY {
    /// Bytes that every kind has: the kind, 2 bytes of 0 and, in 12.50, a reserved word.
    static constexpr std::size_t kHeaderSize = kVersion == 1200 ? 4 : 8;
    /// The highest kind that the layout knows.
    static constexpr CgeFillType kLastKind = kVersion == 1200 ? FillTexture : FillHatch;

    std::vector<std::uint8_t> bytes;
    /// Of kind 12 (12.50 only): they follow the record in the stream.
    std::vector<CGE_HATCHLINE> lines;

    CgeFillType GetType() const noexcept {
        return static_cast<CgeFillType>(bytes.size() < 2 ? 0 : bytes[0] | bytes[1] << 8);
    }
    /// Sets the kind alone; the record then has its header at least. Throws bad_alloc.
    void SetType(CgeFillType kind) {
        if (bytes.size() < kHeaderSize) bytes.resize(kHeaderSize);
        bytes[0] = static_cast<std::uint8_t>(kind);
        bytes[1] = static_cast<std::uint8_t>(kind >> 8);
    }
};
using CGE_FILL_1200 = CGE_FILL_LEGACY<1200>;
using CGE_FILL_1250 = CGE_FILL_LEGACY<1250>;

/// The outline record of 12.x documents.
struct CGE_OUTLINE_12xx {
    static constexpr std::size_t kSize = 136;
    std::array<std::uint8_t, kSize> bytes{};
};

/// Between current records and legacy ones. Numbers of pointers may throw what the remapper throws; it
/// passes, and the conversion stops where it is, with nothing leaked. Throws bad_alloc. Main thread only.
class FOM_API FOMIO12Conv {
public:
    /// False for a kind that the layout does not know (above 11, above 12), with only the kind copied; other
    /// kinds without a layout convert to nothing but the kind.
    ///
    /// To current: any bytes may be given. `fill` should be empty; what has no place in the legacy record
    /// stays as it is there. Nothing that the fill owns afterwards is named by the legacy record: pattern
    /// data is a copy, without an owner, of the block that the remapper knows, or none; temporary data that
    /// the record names is an entry of its own without content. The bitmap of a mono bitmap fill is what the
    /// remapper answers.
    ///
    /// From current: `fill` is only read.
    static bool ConvertCGE_FILL(bool toCurrent, CGE_FILL& fill, CGE_FILL_1200& legacy,
                                const ColorSystem::ColorContext& context, udi::PtrRemapper& remapper);
    static bool ConvertCGE_FILL(bool toCurrent, CGE_FILL& fill, CGE_FILL_1250& legacy,
                                const ColorSystem::ColorContext& context, udi::PtrRemapper& remapper);
    /// Always true. To current: replaces the whole record but its GUID; the arrowheads are what the remapper
    /// answers, also for an outline of kind 1, which otherwise is as SetToNoOutline leaves it.
    static bool ConvertCGE_OUTLINE(bool toCurrent, CGE_OUTLINE& outline, CGE_OUTLINE_12xx& legacy,
                                   const ColorSystem::ColorContext& context, udi::PtrRemapper& remapper);
    /// Length of the record in bytes by its kind and, for a fountain, its number of colours.
    static std::uint32_t GetFillSize(const CGE_FILL_1200& legacy) noexcept;
    static std::uint32_t GetFillSize(const CGE_FILL_1250& legacy) noexcept;
    /// How many hatch lines follow the record in the stream; 0 unless it is a hatch with a line array. Not
    /// to be trusted more than the stream that it comes from.
    static std::uint32_t GetNumHatchLines(const CGE_FILL_1250& legacy) noexcept;
};
