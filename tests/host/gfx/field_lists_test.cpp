#include "gfx/fill_fields.h"
#include "record_probe.h"

namespace {

/// A record with the number of bytes that its list leaves out on purpose.
template <class T, class ListOf, std::size_t leftOut>
struct Case {
    using Record = T;
    using List = host::detail::Fields<ListOf>;
    static constexpr std::size_t kLeftOut = leftOut;
};

template <class T>
class FieldLists : public testing::Test {};

using Records =
    testing::Types<Case<CGE_TILING, CGE_TILING, 0>, Case<CGE_UNIFORMFILL, CGE_UNIFORMFILL, 0>,
                   Case<CGE_PSFILL, CGE_PSFILL, 0>, Case<CGE_MONOBMPFILL, CGE_MONOBMPFILL, 0>,
                   Case<CGE_TXRINFO, CGE_TXRINFO, 0>, Case<CGE_HATCHLINE, CGE_HATCHLINE, 0>,
                   Case<CGE_HATCHFILL, CGE_HATCHFILL, 0>, Case<CGE_FOUNTAINFILL, CGE_FOUNTAINFILL, 0>,
                   Case<CGE_OUTLINE, CGE_OUTLINE, 0>,
                   // whether the temporary data is an image is a property of the type
                   Case<CGE_VECTORFILL, CGE_PATTERNFILL, 1>, Case<CGE_TEXTUREFILL, CGE_TEXTUREFILL, 1>,
                   // the graphics engine's reserved word
                   Case<CGE_FILL, CGE_FILL, 4>>;
TYPED_TEST_SUITE(FieldLists, Records);

TYPED_TEST(FieldLists, CoverEveryByteUnderRisingNumbers) {
    typename TypeParam::Record record;
    std::vector<bool> missing = gfx_test::WrittenBytes<typename TypeParam::Record>();
    unsigned last = 0;
    TypeParam::List::Visit([&](unsigned number, auto member) {
        EXPECT_EQ(number, last + 1);
        last = number;
        auto& field = record.*member;
        const auto from = gfx_test::BytesOf(field) - gfx_test::BytesOf(record);
        gfx_test::Exclude(missing, static_cast<std::size_t>(from), sizeof field);
    });
    EXPECT_EQ(static_cast<std::size_t>(std::count(missing.begin(), missing.end(), true)),
              TypeParam::kLeftOut);
}

}  // namespace
