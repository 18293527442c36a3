#include "engines/import_filters.h"

#include "host/engines/image_codecs.h"

namespace host {

std::vector<WString> StandaloneFilters::GetExtensions(bool bitmap) {
    m_started = true;
    if (!bitmap) return {WString(L"svg")};
    return CanReadPng() ? std::vector<WString>{WString(L"png")} : std::vector<WString>();
}

}  // namespace host
