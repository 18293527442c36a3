#include <utility>

#include "fom/fill_defaults.h"
#include "fom/fill_handle.h"

#include "fill/fill_handle_entries.h"
#include "pool/pooled_reference.h"

namespace {

/// A kind that is not in use leaves the entry as it is.
void FillWithDefaults(WRefCountFill& entry, CgeFillType kind, const ColorContext& context) {
    switch (kind) {
        case FillUniform:
            return entry.CreateDefaultSolidFill();
        case FillFountain:
            return entry.CreateDefaultGradientFill();
        case FillPostScript:
            return entry.CreateDefaultPostscriptFill();
        case FillMonoBitmap:
        case FillMonoBitmapAlt:
            entry.ReallocateFillMemory(FillMonoBitmap);
            return FILLInternalSetDefaultCGEMonoBitmap(entry.GetCGEFill(), 1);
        case FillColorBitmap:
            return entry.CreateDefaultColorBitmapFill();
        case FillVector:
            return entry.CreateDefaultVectorFill(context);
        case FillTexture:
            return entry.CreateDefaultTextureFill();
        case FillHatch:
            return entry.CreateDefaultHatchFill();
        default:
            return;
    }
}

bool IsPattern(CgeFillType kind) noexcept {
    return kind == FillColorBitmap || kind == FillVector || kind == FillTexture;
}

}  // namespace

void WFillHandle::CreateSolidFill(const CLR_COLORSPEC* color) {
    if (!color) return;
    const CGE_FILL* current = GetCGEFill();
    const bool keepsScreen = current && current->GetType() == FillUniform;
    m_entry.RegisterCopyOf(keepsScreen ? MakeUniformFill(*color, current->Uniform().screen)
                                       : MakeUniformFill(*color));
}

bool WFillHandle::CreateGradientFill(ClrFountainFillType type, const CLR_COLORSPEC* from,
                                     const CLR_COLORSPEC* to, unsigned steps) {
    auto entry = std::make_unique<WRefCountFill>(false);
    if (!entry->CreateGradientFill(type, from, to, steps)) return false;
    return m_entry.SelectAndRegister(std::move(entry));
}

void WFillHandle::CreateFill(CgeFillType kind, const ColorContext& context) {
    auto entry = std::make_unique<WRefCountFill>(false);
    FillWithDefaults(*entry, kind, context);
    m_entry.SelectAndRegister(std::move(entry));
}

void WFillHandle::SetToNoFill() {
    m_entry.RegisterCopyOf(CGE_FILL());
}

void WFillHandle::SetCGEFill(const CGE_FILL* record) {
    if (!record) return SetToNoFill();
    const WRefCountFill* current = Entry();
    const CGE_FILL* old = current ? current->GetCGEFill() : nullptr;
    if (old && HasSameTempFile(*old, *record))
        m_entry.SelectAndRegister(std::make_unique<WRefCountFill>(record, current->GetDigestKey()));
    else
        m_entry.RegisterCopyOf(*record);
}

bool HasSameTempFile(const CGE_FILL& a, const CGE_FILL& b) noexcept {
    if (a.GetType() != b.GetType() || !IsPattern(a.GetType())) return false;
    return a.Pattern()->tmpFile != 0 && a.Pattern()->tmpFile == b.Pattern()->tmpFile;
}
