#include <set>
#include <string>

#include "gfx/fill_fields.h"
#include "gfx/wideline_fields.h"
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

template <class T>
using Whole = Case<T, T, 0>;

using Records =
    testing::Types<Whole<CGE_TILING>, Whole<CGE_UNIFORMFILL>, Whole<CGE_PSFILL>, Whole<CGE_MONOBMPFILL>,
                   Whole<CGE_TXRINFO>, Whole<CGE_HATCHLINE>, Whole<CGE_HATCHFILL>, Whole<CGE_FOUNTAINFILL>,
                   Whole<CGE_OUTLINE>, Whole<host::detail::OutlineExtras>, Whole<CGE_ARROWATTRIB>,
                   Whole<CGE_VARIABLEATTRIB>, Whole<CGE_VARIABLEPOINT>, Whole<CGE_DES9_CYCLICAL_LINE>,
                   Whole<CGE_DES9_WIDELINE_STYLE>, Whole<CGE_DES9_WIDELINE_ENTRY>,
                   // the virtual table's address
                   Case<CGE_DES9_WIDELINE, CGE_DES9_WIDELINE, sizeof(void*)>,
                   // whether the temporary data is an image is a property of the type
                   Case<CGE_VECTORFILL, CGE_PATTERNFILL, 1>, Case<CGE_TEXTUREFILL, CGE_TEXTUREFILL, 1>,
                   // the graphics engine's reserved word
                   Case<CGE_FILL, CGE_FILL, 4>>;
TYPED_TEST_SUITE(FieldLists, Records);

TYPED_TEST(FieldLists, CoverEveryByteUnderRisingNumbersAndNamesOfTheirOwn) {
    typename TypeParam::Record record;
    std::vector<bool> missing = gfx_test::WrittenBytes<typename TypeParam::Record>();
    unsigned last = 0;
    std::set<std::string> names = {""};
    TypeParam::List::Visit([&](unsigned number, auto member, const char* name) {
        EXPECT_TRUE(names.insert(name).second) << name;
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
