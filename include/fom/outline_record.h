#pragma once

#include "host/base/export.h"
#include "host/gfx/outline.h"

/// Questions about outline records. Safe from any thread, except where a host service is asked: main thread.

/// CGE_OUTLINE::CompareTo; null comes first.
FOM_API int OUTCompareOutlines(const CGE_OUTLINE* a, const CGE_OUTLINE* b, bool skipColorBytes) noexcept;
/// 1 for a record with bit 8 of its type whose pattern object is a CGE_DES9_WIDELINE; 0 otherwise and for
/// null.
FOM_API int OUTHasWideline(const CGE_OUTLINE* outline) noexcept;

/// Widths that a dash pattern can be asked for, document units.
FOM_API int OUTGetMinPatternWidth() noexcept;
FOM_API int OUTGetDefaultPatternWidth() noexcept;
/// Asks the host's units. Main thread only.
FOM_API int OUTGetMaxPatternWidth();

/// Length of one repeat of the dash pattern in document units; never less than 52916.67, which also stands
/// for null, for a kind other than 4, butt caps, an empty pattern and a width of 0.
FOM_API double OUTEstimatePatternLength(const CGE_OUTLINE* outline) noexcept;
