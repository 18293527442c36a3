#pragma once

#include <cstdint>

#include "host/base/export.h"
#include "host/base/guid.h"
#include "host/gfx/enums.h"
#include "host/gfx/fountain_fill.h"
#include "host/gfx/hatch_fill.h"
#include "host/gfx/lazy_record.h"
#include "host/gfx/pattern_fills.h"

namespace udi {
class InputArchive;
class OutputArchive;
}  // namespace udi

/// How the inside of a shape is painted. All sub-records stand side by side and keep what they hold until the
/// record is cleared; only the one that the kind names is meaningful. The uniform one lies in the record, the
/// others are allocated when first written (the Edit functions).
///
/// Assignment and copying are deep, also for sub-records of other kinds: nothing is ever owned twice. An
/// assignment that runs out of memory changes nothing. A record is used by one thread at a time; const use is
/// safe from several.
class FOM_API CGE_FILL {
public:
    CGE_FILL() noexcept = default;
    explicit CGE_FILL(CgeFillType kind) noexcept : m_kind(kind) {}
    CGE_FILL(const CGE_FILL&) = default;
    CGE_FILL(CGE_FILL&&) noexcept = default;
    CGE_FILL& operator=(const CGE_FILL& other);
    CGE_FILL& operator=(CGE_FILL&&) noexcept = default;
    ~CGE_FILL() = default;

    CgeFillType GetType() const noexcept { return m_kind; }
    /// Sets the kind alone.
    void SetType(CgeFillType kind) noexcept { m_kind = kind; }

    const CGE_UNIFORMFILL& Uniform() const noexcept { return m_uniform; }
    CGE_UNIFORMFILL& EditUniform() noexcept { return m_uniform; }
    const CGE_FOUNTAINFILL& Fountain() const noexcept { return m_fountain.Read(); }
    CGE_FOUNTAINFILL& EditFountain() { return m_fountain.Edit(); }
    const CGE_MONOBMPFILL& MonoBitmap() const noexcept { return m_mono.Read(); }
    CGE_MONOBMPFILL& EditMonoBitmap() { return m_mono.Edit(); }
    const CGE_COLORBMPFILL& ColorBitmap() const noexcept { return m_bitmap.Read(); }
    CGE_COLORBMPFILL& EditColorBitmap() { return m_bitmap.Edit(); }
    const CGE_VECTORFILL& Vector() const noexcept { return m_vector.Read(); }
    CGE_VECTORFILL& EditVector() { return m_vector.Edit(); }
    const CGE_TEXTUREFILL& Texture() const noexcept { return m_texture.Read(); }
    CGE_TEXTUREFILL& EditTexture() { return m_texture.Edit(); }
    const CGE_PSFILL& PostScript() const noexcept { return m_postScript.Read(); }
    CGE_PSFILL& EditPostScript() { return m_postScript.Edit(); }
    const CGE_HATCHFILL& Hatch() const noexcept { return m_hatch.Read(); }
    CGE_HATCHFILL& EditHatch() { return m_hatch.Edit(); }

    /// The pattern header of kinds 9, 10 and 11; null for any other kind. The Edit form throws bad_alloc.
    const CGE_PATTERNFILL* Pattern() const noexcept;
    CGE_PATTERNFILL* EditPattern();
    /// The tiling of kinds 7 to 11; null for any other kind. The Edit form throws bad_alloc.
    const CGE_TILING* GetCGETiling() const noexcept;
    CGE_TILING* EditCGETiling();
    /// The screen of kinds 1, 2, 7, 8 and 12, whose overprint word is the fill's; null for any other kind.
    const CLR_SCREENSPEC* GetScreen() const noexcept;

    /// Every sub-record back to its empty state, kind 0. The GUID stays. Frees what is owned.
    void Clear() noexcept;
    /// Frees fountain colours, hatch lines, pattern-data blocks and temporary data, and lets go of the mono
    /// bitmap (a reference: its handle becomes null); the other fields stay. For every sub-record, not only
    /// the kind's own.
    void FreeMemoryAndClear() noexcept;

    /// Appends the stored form (docs/formats/bodies.md): kind, GUID and the sub-record that the kind names.
    /// Of temporary data it says only whether there is some. Throws bad_alloc, and then nothing was appended.
    void SaveIn(udi::OutputArchive& archive) const;
    /// Becomes what the archive's bytes describe. False when they describe no fill: nothing in them is
    /// trusted. Blocks that follow in the stream read as host::UnresolvedBlock(), and temporary data as a
    /// fresh empty entry: whoever reads them puts them in. Throws bad_alloc. In both cases this is as
    /// default-constructed.
    bool LoadFrom(udi::InputArchive& archive);

    const VyrUtils::Guid& GetGuid() const noexcept { return m_guid; }
    /// Never takes part in comparison.
    void SetGuid(const VyrUtils::Guid& guid) noexcept { m_guid = guid; }

private:
    friend struct host::detail::Fields<CGE_FILL>;

    CgeFillType m_kind = FillNone;
    std::uint32_t m_engineReserved = 0;  // the graphics engine's block; nothing here reads or writes it
    CGE_UNIFORMFILL m_uniform;
    VyrUtils::Guid m_guid;
    host::LazyRecord<CGE_FOUNTAINFILL> m_fountain;
    host::LazyRecord<CGE_MONOBMPFILL> m_mono;
    host::LazyRecord<CGE_COLORBMPFILL> m_bitmap;
    host::LazyRecord<CGE_VECTORFILL> m_vector;
    host::LazyRecord<CGE_TEXTUREFILL> m_texture;
    host::LazyRecord<CGE_PSFILL> m_postScript;
    host::LazyRecord<CGE_HATCHFILL> m_hatch;
};
// Most of what a pooled fill costs: everything but the uniform sub-record is allocated on demand.
static_assert(sizeof(CGE_FILL) <= 144);
