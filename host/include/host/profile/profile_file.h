#pragma once

#include <string_view>

#include "host/base/export.h"
#include "host/base/wstring.h"

namespace host {

/// The value of `key` in `section` of a private-profile file ("[section]", "key=value" lines): names without
/// regard to case, blanks around names and values dropped, one pair of enclosing quotes (single or double)
/// removed; the first section of the name and its first line of the key count. Lines that begin with ";" or
/// have no "=" are passed over; what follows a value stays in it. `fallback`, as it is, when the file cannot
/// be read or the section or key is missing; an empty value is not missing. The file is read anew each time.
/// UTF-16 with a byte-order mark, UTF-8 with one, otherwise UTF-8 where valid and Latin-1 where not.
FOM_API VyrPlatform::VyrStringT<wchar_t> ReadProfileString(std::wstring_view path, std::wstring_view section,
                                                           std::wstring_view key, std::wstring_view fallback);

}  // namespace host
