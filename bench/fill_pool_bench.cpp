#include "fom/fill_handle.h"

#include "fill/fill_compare.h"
#include "fill/fill_hash.h"
#include "pool_rows.h"

namespace {

/// Uniform fills, which differ in their colour.
struct Fills {
    using Record = CGE_FILL;
    using Entry = WRefCountFill;
    using List = WRCFillList;
    using Handle = WFillHandle;
    static constexpr const char* kName = "uniform fill";

    static void Number(CGE_FILL& fill, std::uint32_t number) {
        fill.SetType(FillUniform);
        bench::NumberColor(Color(fill), number);
    }
    static CLR_COLORSPEC& Color(CGE_FILL& fill) { return fill.EditUniform().color; }
    static CGE_FILL& RecordOf(WRefCountFill& entry) { return *entry.GetCGEFill(); }
    static std::uint64_t Hash(const CGE_FILL& fill) {
        host::Hasher hasher;
        VyrFOM::HashFillInto(hasher, fill);
        return hasher.Finish();
    }
    static int Compare(const CGE_FILL& a, const CGE_FILL& b) { return VyrFOM::CompareFills(a, b, false); }
    static std::shared_ptr<WRCFillList> Told(const std::shared_ptr<WRCFillList>& list) { return list; }
    static void SetColor(WFillHandle& handle, const CLR_COLORSPEC& color) {
        handle.SetUniformColorspec(&color);
    }
};

}  // namespace

int main(int argc, char** argv) {
    return bench::RunPool<Fills>(argc, argv);
}
