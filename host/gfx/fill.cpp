#include "host/gfx/fill.h"

#include <utility>

CGE_FILL& CGE_FILL::operator=(const CGE_FILL& other) {
    if (this != &other) {
        CGE_FILL copy(other);
        *this = std::move(copy);
    }
    return *this;
}

const CGE_PATTERNFILL* CGE_FILL::Pattern() const noexcept {
    switch (m_kind) {
        case FillColorBitmap:
            return &ColorBitmap();
        case FillVector:
            return &Vector();
        case FillTexture:
            return &Texture();
        default:
            return nullptr;
    }
}

CGE_PATTERNFILL* CGE_FILL::EditPattern() {
    switch (m_kind) {
        case FillColorBitmap:
            return &EditColorBitmap();
        case FillVector:
            return &EditVector();
        case FillTexture:
            return &EditTexture();
        default:
            return nullptr;
    }
}

const CGE_TILING* CGE_FILL::GetCGETiling() const noexcept {
    if (m_kind == FillMonoBitmap || m_kind == FillMonoBitmapAlt) return &MonoBitmap().tiling;
    const CGE_PATTERNFILL* pattern = Pattern();
    return pattern ? &pattern->tiling : nullptr;
}

CGE_TILING* CGE_FILL::EditCGETiling() {
    if (m_kind == FillMonoBitmap || m_kind == FillMonoBitmapAlt) return &EditMonoBitmap().tiling;
    CGE_PATTERNFILL* pattern = EditPattern();
    return pattern ? &pattern->tiling : nullptr;
}

const CLR_SCREENSPEC* CGE_FILL::GetScreen() const noexcept {
    switch (m_kind) {
        case FillUniform:
            return &m_uniform.screen;
        case FillFountain:
            return &Fountain().GetScreen();
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            return &MonoBitmap().screen;
        case FillHatch:
            return &Hatch().screen;
        default:
            return nullptr;
    }
}

void CGE_FILL::Clear() noexcept {
    m_kind = FillNone;
    m_uniform = CGE_UNIFORMFILL();
    m_fountain.Reset();
    m_mono.Reset();
    m_bitmap.Reset();
    m_vector.Reset();
    m_texture.Reset();
    m_postScript.Reset();
    m_hatch.Reset();
}

// A sub-record that was never written owns nothing, and is not allocated for this.
void CGE_FILL::FreeMemoryAndClear() noexcept {
    if (m_fountain.IsAllocated()) m_fountain.Edit().SetColors({});
    if (m_hatch.IsAllocated()) m_hatch.Edit().lines = std::vector<CGE_HATCHLINE>();
    if (m_mono.IsAllocated()) m_mono.Edit().bitmap = nullptr;
    if (m_bitmap.IsAllocated()) m_bitmap.Edit().FreeMemory();
    if (m_vector.IsAllocated()) m_vector.Edit().FreeMemory();
    if (m_texture.IsAllocated()) m_texture.Edit().FreeMemory();
}
