#pragma once

#include "host/base/export.h"
#include "host/base/memory.h"
#include "host/base/wstring.h"

/// Keeps one copy of each distinct bitmap that mono bitmap fills read from documents name. Fills refer to the
/// bitmaps and do not own them: let go of every fill, and of the pools, before the bitmaps are freed. Main
/// thread only.
class FOM_API FOMMonoBmpMgr {
public:
    virtual ~FOMMonoBmpMgr();
    /// The one of the process; it goes with the singletons at shutdown, and its bitmaps with it. Null between
    /// shutdown and the next start.
    static FOMMonoBmpMgr* GetInst();
    /// Whether RCF_CompareBitmaps reports them equal.
    static bool CompareBitmaps(HMEM a, HMEM b) noexcept;

    /// Takes over `bitmap` and returns the one that is held for it: the same handle, or an equal bitmap that
    /// was registered before, and then `bitmap` is freed. Null for null. Throws bad_alloc, with `bitmap` the
    /// caller's.
    virtual HMEM AddOrGetBitmap(HMEM bitmap) = 0;
    /// The identifier that the bitmap was given when it was registered, a GUID; empty for one that is not
    /// held.
    virtual VyrPlatform::VyrStringT<wchar_t> GetIdentifier(HMEM bitmap) const = 0;
    /// Frees every bitmap; fills that still name one must not be used any more.
    virtual void FreeAllBitmaps() noexcept = 0;
};
