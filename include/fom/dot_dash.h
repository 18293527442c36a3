#pragma once

#include "host/base/export.h"
#include "host/gfx/dot_dash.h"

/// Checks and repair of dash patterns, as they come from files and dialogs. No more than ten elements are
/// ever looked at, whatever the count says. Safe from any thread.

/// An even, non-zero number of elements, none of them negative, with a sum above 0 (which does not overflow).
FOM_API bool OUTIsValidDotDash(const CGE_DOTDASHSPEC& pattern) noexcept;
/// Cuts the pattern before its first negative element, to ten, and to an even count. What nothing is left of
/// becomes {1, 1}, and the answer is false. A pattern of zeros alone stays as it is.
FOM_API bool OUTFixDotDash(CGE_DOTDASHSPEC& pattern) noexcept;
/// -1, 0 or 1: the smaller count first (the whole count), then the elements that count, byte by byte as they
/// are stored (little-endian), so not by value. A null pointer comes first.
FOM_API int OUTCompareDotDash(const CGE_DOTDASHSPEC* a, const CGE_DOTDASHSPEC* b) noexcept;
