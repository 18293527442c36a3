#include <gtest/gtest.h>
#include <memory>
#include <vector>

#include "host/stream/file_stream.h"

#include "fom/fill_handle.h"

#include "support/alloc_faults.h"
#include "support/leak_check.h"

namespace {

using Pool = std::shared_ptr<WRCFillList>;

/// Sets an active pool for one test.
class ActivePool {
public:
    ActivePool() { SetActiveFillList(std::make_shared<WRCFillList>()); }
    ~ActivePool() { SetActiveFillList(GetOriginalActiveFillList()); }
};

class FillHandlePool : public testing_support::LeakCheckedTest {
protected:
    ActivePool m_active;
};

TEST_F(FillHandlePool, AnEntryDiesWithItsPool) {
    auto pool = std::make_shared<WRCFillList>();
    WFillHandle handle(true, pool), empty(true, pool);
    pool.reset();
    EXPECT_EQ(nullptr, handle.GetCGEFill());
    EXPECT_EQ(nullptr, handle.GetRefCountFill());
    EXPECT_EQ(FillNone, handle.GetCGEType());
    EXPECT_TRUE(handle.SameContentsAs(&empty));
    EXPECT_EQ(nullptr, WFillHandle(handle).GetRefCountFill());
    WRefCountFill* fresh = empty.ExtractRefCountFill();
    EXPECT_EQ(FillNone, fresh->GetFillType());
    delete fresh;

    CLR_COLORSPEC color;
    color.MakeGray(1);
    EXPECT_TRUE(handle.SetUniformColorspec(&color));
    EXPECT_EQ(1u, GetActiveFillList()->GetCount());
    EXPECT_EQ(nullptr, handle.MoveToOtherFillList(std::make_shared<WRCFillList>()));
    EXPECT_EQ(0u, GetActiveFillList()->GetCount());
}

TEST_F(FillHandlePool, EntriesGoBackToThePoolThatHoldsThem) {
    const Pool first = GetActiveFillList();
    auto handle = std::make_unique<WFillHandle>(true);
    WFillHandle shared = *handle;
    {
        const ActivePool replaced;
        CLR_COLORSPEC color;
        color.MakeGray(1);
        EXPECT_TRUE(handle->SetUserData(3));
        EXPECT_EQ(1u, first->GetCount());
        EXPECT_EQ(1, shared.GetRefCountFill()->GetReference());
        EXPECT_EQ(1u, GetActiveFillList()->GetCount());
        WRefCountFill* own = shared.ExtractRefCountFill();
        EXPECT_EQ(FillUniform, own->GetFillType());
        delete own;
        EXPECT_EQ(0u, first->GetCount());
    }
    EXPECT_EQ(FillNone, handle->GetCGEType()) << "the pool that was active then is gone";
}

TEST_F(FillHandlePool, WithoutAnyPoolNothingIsRegistered) {
    SetActiveFillList(nullptr);
    WFillHandle handle(true);
    EXPECT_EQ(nullptr, handle.GetRefCountFill());
    EXPECT_FALSE(handle.SetUserData(1));
    const auto pool = std::make_shared<WRCFillList>();
    WFillHandle kept(true, pool);
    EXPECT_EQ(pool, kept.MoveToOtherFillList(nullptr));
    EXPECT_EQ(FillUniform, kept.GetCGEType());
}

TEST_F(FillHandlePool, MovesBetweenPools) {
    const auto from = std::make_shared<WRCFillList>(), to = std::make_shared<WRCFillList>();
    WFillHandle handle(true, from);
    const WFillHandle other = handle;
    const WFillHandle there(true, to);
    EXPECT_EQ(from, handle.MoveToOtherFillList(to));
    EXPECT_EQ(1, other.GetRefCountFill()->GetReference());
    EXPECT_EQ(there.GetRefCountFill(), handle.GetRefCountFill());
    EXPECT_EQ(2, there.GetRefCountFill()->GetReference());
    EXPECT_FALSE(handle.SameContentsAs(&other));

    handle.SetUserData(5);
    EXPECT_EQ(to, handle.MoveToOtherFillList(from));
    EXPECT_EQ(5u, handle.GetUserData()) << "an entry of its own moves whole";
    EXPECT_EQ(1u, to->GetCount());
    EXPECT_EQ(2u, from->GetCount());
    EXPECT_EQ(from, handle.MoveToOtherFillList(from));
    EXPECT_EQ(1, handle.GetRefCountFill()->GetReference());
}

TEST_F(FillHandlePool, MovesWholeOrNotAtAll) {
    const auto from = std::make_shared<WRCFillList>(), to = std::make_shared<WRCFillList>();
    std::vector<WFillHandle> moved;
    std::size_t failed = 0;
    for (unsigned i = 1; i <= 40; ++i) {
        WFillHandle& handle = moved.emplace_back(static_cast<unsigned long>(i), from);
        handle.SetUserData(i);
        const WRefCountFill* entry = handle.GetRefCountFill();
        failed += testing_support::FailEachAllocation([&] { handle.MoveToOtherFillList(to); },
                                                      [&] {
                                                          EXPECT_EQ(entry, handle.GetRefCountFill());
                                                          EXPECT_EQ(1u, from->GetCount());
                                                      });
        EXPECT_EQ(entry, handle.GetRefCountFill());
        EXPECT_EQ(i, handle.GetUserData());
        EXPECT_EQ(to, WRCFillList::GetHolder(entry));
        EXPECT_EQ(0u, from->GetCount());
    }
    EXPECT_NE(0u, failed);
}

TEST_F(FillHandlePool, TheEntryPointerIsReplacedAsItIs) {
    const auto pool = std::make_shared<WRCFillList>();
    WFillHandle handle(false, pool);
    const WRefCountFill* none = handle.GetRefCountFill();
    WRefCountFill unpooled(true);
    handle.SetRefCountFill(&unpooled);
    EXPECT_EQ(1, none->GetReference());
    EXPECT_TRUE(pool->RemoveInstance(none));
    EXPECT_EQ(&unpooled, WFillHandle(handle).GetRefCountFill());
    EXPECT_TRUE(handle.SetOverprintFlag(OVERPRINT_ON));
    EXPECT_EQ(OVERPRINT_OFF, unpooled.GetOverprintFlag());
    EXPECT_EQ(0, unpooled.GetReference());

    const auto second = std::make_shared<WRCFillList>();
    const WRefCountFill* pooled = second->AddOrGetDuplicate(new WRefCountFill(true), nullptr);
    pool->RemoveInstance(handle.GetRefCountFill());
    handle.SetRefCountFill(const_cast<WRefCountFill*>(pooled));
    handle.SetToNoFill();
    EXPECT_EQ(0u, second->GetCount());
    EXPECT_EQ(1u, pool->GetCount());
}

TEST_F(FillHandlePool, StreamsKeepTheMatrixAndWhatCannotBeRead) {
    WFillHandle handle(true, GetActiveFillList()), other(false, GetActiveFillList());
    handle.SetTilingMatrix({1, -2, 3.5, 4, 1e300, -0.0});
    MemoryFileStream stream;
    handle.WriteMat(stream);
    other.ReadMat(stream);
    EXPECT_EQ(handle.GetTilingMatrix(), other.GetTilingMatrix());
    EXPECT_EQ(48u, stream.GetBytes().size());

    MemoryFileStream cut({stream.GetBytes().begin(), stream.GetBytes().begin() + 12});
    other.SetTilingMatrix({7, 7, 7, 7, 7, 7});
    other.ReadMat(cut);
    EXPECT_EQ((MATRIX{1, 7, 7, 7, 7, 7}), other.GetTilingMatrix());
    EXPECT_FALSE(cut.IsGood());

    const WRefCountFill* before = other.GetRefCountFill();
    MemoryFileStream null;
    auto gone = std::make_shared<WRCFillList>();
    WFillHandle empty(true, gone);
    gone.reset();
    empty.WriteTo(null);
    other.ReadFrom(null);
    EXPECT_TRUE(null.IsGood());
    MemoryFileStream strange(std::vector<std::byte>(8, std::byte{1}));
    other.ReadFrom(strange);
    EXPECT_FALSE(strange.IsGood());
    EXPECT_EQ(before, other.GetRefCountFill());
}

TEST_F(FillHandlePool, ProjectionFollowsTheFlags) {
    const MATRIX twice{2, 0, 0, 2, 0, 0};
    for (unsigned flags = 0; flags < 8; ++flags) {
        for (const bool force : {false, true}) {
            CGE_FILL record(FillHatch);
            record.EditHatch().modification = flags;
            record.EditHatch().SetHatchArraySize(1);
            record.EditHatch().lines[0].spacing = 100;
            WFillHandle handle(&record);
            handle.SetTilingMatrix({1, 0, 0, 1, 5, 0});
            handle.ProjectFill(twice, force);
            const bool moves = force || !(flags & kHatchScaleWithObject);
            EXPECT_EQ(moves ? 10 : 5, handle.GetTilingMatrix().tx) << flags << force;
            const bool scales = force || !(flags & kHatchScaleLineWidths);
            EXPECT_EQ(scales ? 200 : 100, handle.GetCGEFill()->Hatch().lines[0].spacing) << flags << force;
        }
    }
    CGE_FILL tiled(FillMonoBitmap);
    tiled.EditMonoBitmap().tiling.flags = kTilingScaleWithObject;
    EXPECT_TRUE(WFillHandle(&tiled).GetScaleWithObject());
}

}  // namespace
