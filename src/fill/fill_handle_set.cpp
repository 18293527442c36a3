#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "host/base/memory.h"
#include "host/base/temp_data.h"
#include "host/gfx/image.h"

#include "fom/fill_handle.h"

#include "fill/fill_handle_entries.h"
#include "pool/pooled_reference.h"

namespace {
constexpr std::size_t kDigestSize = 16;
}

bool WFillHandle::SetUniformColorspec(const CLR_COLORSPEC* color) {
    if (!color) return false;
    const CgeFillType kind = GetCGEType();
    if (kind != FillNone && kind != FillUniform) {
        m_entry.Edit([](WRefCountFill&) {});
        return false;
    }
    if (kind == FillUniform) {
        const CGE_UNIFORMFILL& uniform = GetCGEFill()->Uniform();
        if (uniform.color == *color && uniform.screen == CLR_SCREENSPEC()) return false;
    }
    return m_entry.Edit([fill = *color](WRefCountFill& entry) { entry.CreateSolidFill(&fill, nullptr); });
}

bool WFillHandle::SetFountainData(const CGE_FOUNTAINFILL* fountain) {
    const CGE_FILL* fill = GetCGEFill(FillFountain);
    if (!fill || !fountain || fill->Fountain().CompareTo(*fountain) == 0) return false;
    return m_entry.Edit([fountain](WRefCountFill& entry) { entry.GetCGEFill()->EditFountain() = *fountain; });
}

bool WFillHandle::SetFountainAngle(int microDegrees) {
    const CGE_FILL* fill = GetCGEFill(FillFountain);
    if (!fill || fill->Fountain().GetAngle() == microDegrees) return false;
    return m_entry.Edit(
        [=](WRefCountFill& entry) { entry.GetCGEFill()->EditFountain().SetAngle(microDegrees); });
}

bool WFillHandle::SetFountainOffset(int x, int y) {
    const CGE_FILL* fill = GetCGEFill(FillFountain);
    if (!fill || (fill->Fountain().GetCenterOffsetX() == x && fill->Fountain().GetCenterOffsetY() == y))
        return false;
    return m_entry.Edit(
        [=](WRefCountFill& entry) { entry.GetCGEFill()->EditFountain().SetCenterOffset(x, y); });
}

bool WFillHandle::SetFountainColorspec(const CLR_COLORSPEC* color, unsigned index) {
    const CLR_COLORSPEC* current = GetFountainColorspec(index);
    if (!color || !current || *current == *color) return false;
    return m_entry.Edit([index, stop = *color](WRefCountFill& entry) {
        entry.GetCGEFill()->EditFountain().SetColor(index, stop);
    });
}

bool WFillHandle::SetMonochromeColorspec(const CLR_COLORSPEC* color, MONOCHROME_INDEX which) {
    const CgeFillType kind = GetCGEType();
    if (!color || (kind != FillMonoBitmap && kind != FillMonoBitmapAlt)) return false;
    if (which != MONOCHROME_FOREGROUND && which != MONOCHROME_BACKGROUND) return false;
    const auto place =
        which == MONOCHROME_FOREGROUND ? &CGE_MONOBMPFILL::foreground : &CGE_MONOBMPFILL::background;
    if (GetCGEFill()->MonoBitmap().*place == *color) return false;
    return m_entry.Edit(
        [place, ink = *color](WRefCountFill& entry) { entry.GetCGEFill()->EditMonoBitmap().*place = ink; });
}

bool WFillHandle::SetCGETiling(const CGE_TILING* tiling) {
    const CGE_TILING* current = GetCGETiling();
    if (!tiling || !current) return false;
    if (*current == *tiling) return true;
    return m_entry.Edit(
        [next = *tiling](WRefCountFill& entry) { *entry.GetCGEFill()->EditCGETiling() = next; });
}

bool WFillHandle::SetVectorData(HMEM block) {
    const CGE_PATTERNFILL* pattern = GetPattern();
    if (!pattern || pattern->patternData == block) return false;
    std::unique_ptr<HMEM__, void (*)(HMEM)> copy(MEMMANDuplicate(block), &MEMMANFree);
    if (block && !copy) throw std::bad_alloc();
    return m_entry.Edit([&copy](WRefCountFill& entry) {
        CGE_PATTERNFILL* changed = entry.GetCGEFill()->EditPattern();
        changed->AdoptPatternData(copy.release());
        changed->SetOwner(&entry);
    });
}

bool WFillHandle::SetTMPFileID(unsigned id) {
    const CGE_PATTERNFILL* pattern = GetPattern();
    if (!pattern || pattern->tmpFile == id) return false;
    // A copy, since computing the digest may fail when the old data is gone already.
    std::unique_ptr<WRefCountFill> copy = m_entry.MakePrivateCopy();
    const bool holdsImage = copy->GetFillType() != FillVector;
    copy->GetCGEFill()->EditPattern()->AdoptTmpFile(holdsImage ? UDIIMGDuplicateTmpFile(id)
                                                               : TMPDuplicateTmpFile(id));
    copy->SetDigestKey(nullptr);
    copy->CalculateDigestKey();
    return m_entry.SelectAndRegister(std::move(copy));
}

bool WFillHandle::SetBoundingBox(const RECT* box) {
    const CGE_PATTERNFILL* pattern = GetPattern();
    if (!box || !pattern || pattern->boundingBox == *box) return false;
    return m_entry.Edit(
        [next = *box](WRefCountFill& entry) { entry.GetCGEFill()->EditPattern()->boundingBox = next; });
}

bool WFillHandle::SetOverprintFlag(OVERPRINT_FLAG flag) {
    const OVERPRINT_FLAG current = GetOverprintFlag();
    if (flag == OVERPRINT_NONE || current == OVERPRINT_NONE) return false;
    if ((flag == OVERPRINT_ON) == (current == OVERPRINT_ON)) return false;
    return m_entry.Edit([flag](WRefCountFill& entry) { entry.SetOverprintFlag(flag); });
}

bool WFillHandle::SetUserData(unsigned value) {
    return m_entry.Edit([value](WRefCountFill& entry) { entry.SetUserData(value); });
}

bool WFillHandle::SetDigestKey(long* key) {
    const WRefCountFill* current = Entry();
    const long* old = current ? current->GetDigestKey() : nullptr;
    if (key == old) return false;
    std::unique_ptr<long[]> taken(key);
    if (key && old && std::memcmp(key, old, kDigestSize) == 0) return false;
    // A copy, since an entry without a digest computes one when it is registered, which may fail.
    std::unique_ptr<WRefCountFill> copy = m_entry.MakePrivateCopy();
    copy->SetDigestKey(taken.release());
    return m_entry.SelectAndRegister(std::move(copy));
}

bool WFillHandle::SetColorNameList(WRefCountFill::ColorNameMap* names) {
    const WRefCountFill* current = Entry();
    if (current && names == current->GetColorNameList()) return false;  // its own map
    std::unique_ptr<WRefCountFill::ColorNameMap> taken(names);
    if (HasColorNames(names)) return false;
    return m_entry.Edit([&taken](WRefCountFill& entry) { entry.SetColorNameList(taken.release()); });
}

bool WFillHandle::HasColorNames(const WRefCountFill::ColorNameMap* names) const noexcept {
    const WRefCountFill* current = Entry();
    const std::size_t count = current ? current->GetNumColorNames() : 0;
    if (count != (names ? names->size() : 0)) return false;
    return !names || std::all_of(names->begin(), names->end(), [current](const auto& row) {
        const wchar_t* name = current ? current->GetColorName(static_cast<unsigned>(row.first)) : nullptr;
        return name && row.second.view() == name;
    });
}
