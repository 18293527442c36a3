#pragma once

#include <string_view>

#include "host/base/export.h"
#include "host/base/wstring.h"
#include "host/gfx/enums.h"

/// Files that fills are taken from. Main thread only.

/// The default fill file of a kind (2, 9 and 10; others have none): the preference, where it names a file;
/// for 9 and 10 otherwise the first fill file of that kind; else empty. An answer that is not the preference
/// is stored back.
FOM_API VyrPlatform::VyrStringT<wchar_t> GetFillFilePathForType(CgeFillType kind);
/// Ignores other kinds.
FOM_API void SetFillFilePathForType(CgeFillType kind, const VyrPlatform::VyrStringT<wchar_t>& path);
/// The n-th (from 0) fill file of the kind over all fills folders in their order, names in each folder in
/// case-insensitive order; empty when there is none. Files that cannot be read are passed over, and so are
/// those after the first 65,536 of a folder.
FOM_API VyrPlatform::VyrStringT<wchar_t> GetNthFilename(int n, CgeFillType kind);
/// Both are the host's fills folder.
FOM_API VyrPlatform::VyrStringT<wchar_t> GetBitmapsDirectory();
FOM_API VyrPlatform::VyrStringT<wchar_t> GetVectorsDirectory();
