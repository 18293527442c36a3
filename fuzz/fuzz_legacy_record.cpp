// Records of documents before this generation. The first byte says which; what follows is the record. What it
// converts to converts back, and that is where it stays.

#include <algorithm>
#include <utility>
#include <vector>

#include "fom/fill_compare.h"
#include "fom/legacy_records.h"
#include "fom/serialization.h"

#include "check.h"
#include "heap_bound.h"
#include "record_bytes.h"

namespace {

using fuzzing::BodyOf;
using fuzzing::Check;

/// Knows a block of pattern data and one that is none, by their numbers; others are unresolved.
class Remapper : public udi::PersistentPtrRemapper {
public:
    Remapper() {
        MapPtr(m_pattern, udi::kPtrBlock);
        MapPtr(m_other, udi::kPtrBlock);
    }
    ~Remapper() override {
        MEMMANFree(m_pattern);
        MEMMANFree(m_other);
    }

private:
    const HMEM m_pattern = MEMMANAlloc(kPatternDataSize, true);
    const HMEM m_other = MEMMANAlloc(3, true);
};

template <class Legacy>
bool ToCurrent(CGE_FILL& fill, Legacy& legacy, udi::PtrRemapper& remapper) {
    return FOMIO12Conv::ConvertCGE_FILL(true, fill, legacy, FOMSerialization::GetColorContext(), remapper);
}

/// Numbers of blocks and temporary data are given anew.
template <class Legacy>
void ForgetNumbers(Legacy& legacy) {
    const CgeFillType kind = legacy.GetType();
    if (kind != FillColorBitmap && kind != FillVector && kind != FillTexture) return;
    for (const std::size_t at : {legacy.kHeaderSize, legacy.kHeaderSize + 40})
        std::fill_n(legacy.bytes.begin() + static_cast<std::ptrdiff_t>(at), 4, std::uint8_t{0});
}

template <class Legacy>
void ConvertFill(std::vector<std::uint8_t> bytes) {
    Remapper remapper;
    Legacy legacy{std::move(bytes), {}};
    legacy.lines.resize(std::min<std::size_t>(legacy.bytes.size() / 64, 3));
    CGE_FILL fill, other;
    {
        const fuzzing::HeapBound bound(legacy.bytes.size());
        const bool converts = ToCurrent(fill, legacy, remapper);
        Check(converts == (legacy.GetType() <= legacy.kLastKind), "kinds of the layout convert");
        if (!converts) return;
    }
    const auto back = [&](CGE_FILL& from) {
        Legacy stored;
        Check(
            FOMIO12Conv::ConvertCGE_FILL(false, from, stored, FOMSerialization::GetColorContext(), remapper),
            "what was read can be written");
        Check(stored.bytes.size() == FOMIO12Conv::GetFillSize(stored), "the record is as long as it says");
        return stored;
    };
    Legacy stored = back(fill);
    ToCurrent(other, stored, remapper);
    Legacy again = back(other);
    ForgetNumbers(stored);
    ForgetNumbers(again);
    Check(stored.bytes == again.bytes, "the record comes back");
    Check(stored.lines.size() == again.lines.size(), "so do the hatch lines");
}

void ConvertOutline(std::vector<std::uint8_t> bytes) {
    Remapper remapper;
    CGE_OUTLINE_12xx legacy, stored, again;
    std::copy_n(bytes.begin(), std::min(bytes.size(), legacy.bytes.size()), legacy.bytes.begin());
    const auto convert = [&](bool toCurrent, CGE_OUTLINE& outline, CGE_OUTLINE_12xx& record) {
        Check(FOMIO12Conv::ConvertCGE_OUTLINE(toCurrent, outline, record, FOMSerialization::GetColorContext(),
                                              remapper),
              "outlines convert");
    };
    CGE_OUTLINE outline, other;
    convert(true, outline, legacy);
    convert(false, outline, stored);
    convert(true, other, stored);
    convert(false, other, again);
    Check(stored.bytes == again.bytes, "the outline comes back");
    if ((outline.type & 15) != OutlineNone)
        Check(BodyOf(outline) == BodyOf(other), "with every field that has a place");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const fuzzing::NothingIsLeft check;
    std::vector<std::uint8_t> bytes(data + 1, data + size);
    switch (data[0] % 3) {
        case 0:
            ConvertFill<CGE_FILL_1200>(std::move(bytes));
            break;
        case 1:
            ConvertFill<CGE_FILL_1250>(std::move(bytes));
            break;
        default:
            ConvertOutline(std::move(bytes));
    }
    return 0;
}
