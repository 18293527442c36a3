#include "fom/mono_bitmap_manager.h"

#include <gtest/gtest.h>
#include <new>

#include "host/base/guid.h"
#include "host/base/singleton.h"

#include "support/alloc_faults.h"
#include "support/blocks.h"
#include "support/leak_check.h"

namespace {

using testing_support::BlockOf;

class MonoBitmapManagerTest : public testing_support::LeakCheckedTest {
protected:
    ~MonoBitmapManagerTest() override { m_manager.FreeAllBitmaps(); }

    FOMMonoBmpMgr& m_manager = *FOMMonoBmpMgr::GetInst();
};

TEST_F(MonoBitmapManagerTest, HoldsEqualBitmapsOnce) {
    EXPECT_EQ(FOMMonoBmpMgr::GetInst(), &m_manager);
    EXPECT_EQ(m_manager.AddOrGetBitmap(nullptr), nullptr);
    const HMEM first = BlockOf("pattern");
    const HMEM other = BlockOf("patterm");
    const HMEM longer = BlockOf("pattern.");
    for (const HMEM bitmap : {first, other, longer, first}) {
        EXPECT_EQ(m_manager.AddOrGetBitmap(bitmap), bitmap);
        EXPECT_EQ(m_manager.AddOrGetBitmap(bitmap), bitmap);
    }
    EXPECT_FALSE(FOMMonoBmpMgr::CompareBitmaps(first, other));
    const std::size_t blocks = host::LiveMemoryBlocks();
    EXPECT_EQ(m_manager.AddOrGetBitmap(BlockOf("pattern")), first);
    EXPECT_EQ(m_manager.AddOrGetBitmap(BlockOf("pattern.")), longer);
    EXPECT_EQ(host::LiveMemoryBlocks(), blocks) << "what is held already is freed";
    EXPECT_TRUE(VyrUtils::Guid::Parse(m_manager.GetIdentifier(first)));
    EXPECT_NE(m_manager.GetIdentifier(first), m_manager.GetIdentifier(other));
    m_manager.FreeAllBitmaps();
    EXPECT_EQ(host::LiveMemoryBlocks(), blocks - 3);
    EXPECT_TRUE(m_manager.GetIdentifier(first).IsEmpty());
}

TEST_F(MonoBitmapManagerTest, WithoutMemoryTheBitmapIsTheCallers) {
    const HMEM held = m_manager.AddOrGetBitmap(BlockOf("held"));
    const auto failed = testing_support::FailEachAllocation(
        [&] {
            const HMEM bitmap = BlockOf("new");
            try {
                m_manager.AddOrGetBitmap(bitmap);
            } catch (const std::bad_alloc&) {
                MEMMANFree(bitmap);
                throw;
            }
        },
        [&] { EXPECT_EQ(m_manager.AddOrGetBitmap(BlockOf("held")), held); });
    EXPECT_GT(failed, 0u);
}

TEST(MonoBitmapManagerShutdown, FreesItsBitmaps) {
    const std::size_t blocks = host::LiveMemoryBlocks();
    FOMMonoBmpMgr::GetInst()->AddOrGetBitmap(BlockOf("x"));
    VyrUtils::SingletonBase::DestroyAll();
    EXPECT_EQ(host::LiveMemoryBlocks(), blocks);
    EXPECT_EQ(FOMMonoBmpMgr::GetInst(), nullptr);
    VyrUtils::SingletonBase::AllowRecreation();
    EXPECT_NE(FOMMonoBmpMgr::GetInst(), nullptr);
}

}  // namespace
