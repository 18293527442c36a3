#pragma once

#include <array>
#include <cstdint>

#include "host/base/export.h"
#include "host/base/memory.h"
#include "host/base/wstring.h"
#include "host/color/colorspec.h"
#include "host/color/screenspec.h"
#include "host/geometry/rect.h"
#include "host/gfx/tiling.h"

/// A uniform fill.
struct CGE_UNIFORMFILL {
    CLR_COLORSPEC color;
    CLR_SCREENSPEC screen;
};

/// A PostScript pattern: its number, one more 16-bit value and five parameters.
struct CGE_PSFILL {
    std::uint16_t number = 0;
    std::uint16_t reserved = 0;
    std::array<std::int16_t, 5> parameters{};
    friend bool operator==(const CGE_PSFILL&, const CGE_PSFILL&) = default;
};

/// A two-colour bitmap pattern. The bitmap is a reference into the mono bitmap manager and is not owned.
struct FOM_API CGE_MONOBMPFILL {
    HMEM bitmap = nullptr;
    CGE_TILING tiling;
    CLR_COLORSPEC foreground;
    CLR_COLORSPEC background;
    CLR_SCREENSPEC screen;
    std::uint8_t engineSwitch = 0;

    void Clear() noexcept { *this = CGE_MONOBMPFILL(); }
};

/// Bytes of a pattern-data block. Its last pointer-sized word names the pooled entry that owns the record.
inline constexpr std::size_t kPatternDataSize = 584;

/// What colour bitmap, vector and texture fills share. It owns its pattern-data block and its temporary data;
/// copies get their own of both, and assigning or destroying frees what was held. The copy of a block keeps
/// its owner word; the copy of temporary data that is gone already is 0. A copy or assignment that runs out
/// of memory throws bad_alloc and changes nothing.
///
/// The temporary data of a vector fill is bytes; that of a colour bitmap and of a texture holds one counted
/// reference on an image (host/gfx/image.h).
class FOM_API CGE_PATTERNFILL {
public:
    HMEM patternData = nullptr;
    CGE_TILING tiling;
    RECT boundingBox;
    RECT originalBoundingBox;
    void* instance = nullptr;  ///< the host's object that draws the pattern; not owned
    std::uint32_t tmpFile = 0;

    /// Frees what is owned and returns to the empty state.
    void Clear() noexcept;
    /// Frees what is owned; the other fields stay.
    void FreeMemory() noexcept;
    /// Frees the block (unless it is `block`) and takes over `block`.
    void AdoptPatternData(HMEM block) noexcept;
    /// Frees the temporary data with its image (unless it is `id`) and takes over `id`.
    void AdoptTmpFile(std::uint32_t id) noexcept;
    /// The owner word: the last pointer-sized word of the block. Only blocks of kPatternDataSize have one:
    /// null, and nothing is set, without a block and for one of another size.
    void* GetOwner() const noexcept;
    void SetOwner(const void* owner) noexcept;

protected:
    explicit CGE_PATTERNFILL(bool holdsImage) noexcept : m_holdsImage(holdsImage) {}
    CGE_PATTERNFILL(const CGE_PATTERNFILL& other);
    CGE_PATTERNFILL& operator=(const CGE_PATTERNFILL& other);
    ~CGE_PATTERNFILL();

private:
    bool m_holdsImage;  // a property of the derived kind; assignment never changes it
};

struct FOM_API CGE_COLORBMPFILL : CGE_PATTERNFILL {
    CGE_COLORBMPFILL() noexcept : CGE_PATTERNFILL(true) {}
};

struct FOM_API CGE_VECTORFILL : CGE_PATTERNFILL {
    CGE_VECTORFILL() noexcept : CGE_PATTERNFILL(false) {}
};

/// Which texture, and how it is rendered. 304 bytes, no padding.
struct CGE_TXRINFO {
    std::uint32_t present = 0;     ///< 0 when no texture is chosen
    std::uint16_t resolution = 0;  ///< dots per inch
    std::uint16_t maxEdge = 0;     ///< pixels
    host::FixedName<32> library;
    host::FixedName<32> texture;
    host::FixedName<32> style;
    std::array<std::uint8_t, 104> parameters{};  ///< the texture engine's
};
static_assert(sizeof(CGE_TXRINFO) == 304);

struct FOM_API CGE_TEXTUREFILL : CGE_PATTERNFILL {
    CGE_TEXTUREFILL() noexcept : CGE_PATTERNFILL(true) {}
    CGE_TXRINFO info;

    void Clear() noexcept {
        CGE_PATTERNFILL::Clear();
        info = CGE_TXRINFO();
    }
};
