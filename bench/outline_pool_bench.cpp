#include "fom/outline_handle.h"

#include "pool_rows.h"

namespace {

/// Solid outlines, which differ in their colour; a few widths, as in a drawing.
struct Outlines {
    using Record = CGE_OUTLINE;
    using Entry = WRefCountOutline;
    using List = WRCOutlineList;
    using Handle = WOutlineHandle;
    static constexpr const char* kName = "solid outline";

    static void Number(CGE_OUTLINE& outline, std::uint32_t number) {
        outline.type = OutlineSolid;
        outline.width = static_cast<std::int32_t>(762 * (1 + number % 16));
        bench::NumberColor(outline.color, number);
    }
    static CLR_COLORSPEC& Color(CGE_OUTLINE& outline) { return outline.color; }
    static CGE_OUTLINE& RecordOf(WRefCountOutline& entry) { return *entry.GetCGEOutline(); }
    static std::uint64_t Hash(const CGE_OUTLINE& outline) {
        host::Hasher hasher;
        outline.HashInto(hasher);
        return hasher.Finish();
    }
    static int Compare(const CGE_OUTLINE& a, const CGE_OUTLINE& b) {
        return CGE_OUTLINE::CompareTo(a, b, false);
    }
    static WRCOutlineList* Told(const std::shared_ptr<WRCOutlineList>& list) { return list.get(); }
    static void SetColor(WOutlineHandle& handle, const CLR_COLORSPEC& color) { handle.SetColorspec(&color); }
};

}  // namespace

int main(int argc, char** argv) {
    return bench::RunPool<Outlines>(argc, argv);
}
