#include "fom/document_format.h"

#include <algorithm>
#include <cstdio>

namespace command {

bool IsKnownVersion(std::uint32_t version) noexcept {
    for (const DocumentVersion known :
         {DocumentVersion::V1200, DocumentVersion::V1250, DocumentVersion::Current})
        if (version == static_cast<std::uint32_t>(known)) return true;
    return false;
}

const char* VersionName(DocumentVersion version) noexcept {
    switch (version) {
        case DocumentVersion::V1200:
            return "12.0";
        case DocumentVersion::V1250:
            return "12.5";
        case DocumentVersion::Current:
            return "current";
    }
    return "unknown";
}

std::string TagName(std::uint32_t tag) {
    std::string name;
    for (unsigned shift = 0; shift < 32; shift += 8)
        name += static_cast<char>(tag >> shift & 0xFF);
    const auto isLetter = [](char c) { return (c >= 'A' && c <= 'Z') || c == ' '; };
    if (std::all_of(name.begin(), name.end(), isLetter)) return name;
    char digits[12];
    std::snprintf(digits, sizeof digits, "0x%08X", static_cast<unsigned>(tag));
    return digits;
}

}  // namespace command
