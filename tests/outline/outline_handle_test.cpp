#include "fom/outline_handle.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <thread>
#include <utility>

#include "host/gfx/des9_wideline.h"
#include "host/stream/file_stream.h"

#include "fom/duplication.h"
#include "fom/line_pattern_preset.h"
#include "fom/outline_handle_list.h"

#include "support/alloc_faults.h"
#include "support/leak_check.h"

namespace {

class OutlineHandle : public testing_support::LeakCheckedTest {
protected:
    /// The host keeps its arrowheads from the first use on.
    static void SetUpTestSuite() { WOutlineHandle::GetArrowStyleCount(); }

    WRCOutlineList pool;
};

CLR_COLORSPEC Gray(int gray) {
    CLR_COLORSPEC color;
    color.MakeGray(gray);
    return color;
}

CGE_OUTLINE Record() {
    CGE_OUTLINE record;
    record.type = OutlineSolid | 64;
    record.width = 1000;
    record.color = Gray(5);
    record.dotLength = 7;
    return record;
}

/// A handle whose entry has a colour name, which no record shows.
WOutlineHandle Named(WRCOutlineList& pool) {
    const CGE_OUTLINE record = Record();
    auto entry = std::make_unique<WRefCountOutline>(&record);
    entry->SetColorName(L"ink");
    return WOutlineHandle(entry.release(), &pool);
}

const MATRIX kDouble{2, 0, 0, 2, 0, 0};
const CStdLinePatternPreset kDashes(CGE_DOTDASHSPEC{2, {1, 1}});

/// Every way to write, and what shows that it was written.
const struct {
    const char* name;
    std::function<void(WOutlineHandle&)> write;
    std::function<bool(const WOutlineHandle&)> isWritten;
} kWrites[] = {
    {"type", [](auto& h) { h.SetCGEType(OutlineDotDash); }, [](auto& h) { return h.GetCGEType() == 4; }},
    {"width", [](auto& h) { h.SetWidth(5); }, [](auto& h) { return h.GetWidth() == 5; }},
    {"join", [](auto& h) { h.SetJoinType(2); }, [](auto& h) { return h.GetJoinType() == 2; }},
    {"caps", [](auto& h) { h.SetEndCaps(2); }, [](auto& h) { return h.GetEndCaps() == 2; }},
    {"justification", [](auto& h) { h.SetJustification(1); },
     [](auto& h) { return h.GetJustification() == 1; }},
    {"angle", [](auto& h) { h.SetNibAngle(-9); }, [](auto& h) { return h.GetNibAngle() == -9; }},
    {"stretch", [](auto& h) { h.SetNibStretch(40000); }, [](auto& h) { return h.GetNibStretch() == 32767; }},
    {"dot length", [](auto& h) { h.SetDotLength(9); }, [](auto& h) { return h.GetDotLength() == 9; }},
    {"miter limit", [](auto& h) { h.SetMiterLimit(-1); }, [](auto& h) { return h.GetMiterLimit() == -1; }},
    {"colour",
     [](auto& h) {
         const CLR_COLORSPEC color = Gray(99);
         h.SetColorspec(&color);
     },
     [](auto& h) { return *h.GetColorspec() == Gray(99); }},
    {"screen",
     [](auto& h) {
         CLR_SCREENSPEC screen;
         screen.frequency = 75;
         h.SetScreenSpecs(screen);
     },
     [](auto& h) { return h.GetScreenSpecs().frequency == 75; }},
    {"overprint", [](auto& h) { h.SetOverprintFlag(OVERPRINT_ON); },
     [](auto& h) { return h.GetOverprintFlag() == OVERPRINT_ON; }},
    {"matrix", [](auto& h) { h.SetTransfoMatrix(kDouble); },
     [](auto& h) { return h.GetMatrix() == kDouble; }},
    {"project matrix", [](auto& h) { h.SetProjectMatrix(kDouble); },
     [](auto& h) { return h.GetProjectMatrix() == kDouble; }},
    {"pen", [](auto& h) { h.SetPenParams(3, 4, 50); },
     [](auto& h) { return h.GetNibAngle() == 3 && h.GetWidth() == 4 && h.GetNibStretch() == 50; }},
    {"pattern", [](auto& h) { h.SetLinePatternPreset(kDashes); },
     [](auto& h) { return kDashes == *h.GetCGEOutline() && h.GetCGEType() == OutlineDotDash; }},
    {"pre-adjustment", [](auto& h) { h.PreAdjustPenWidth(&kDouble); },
     [](auto& h) { return h.GetWidth() == 2000 && h.GetDotLength() == 14; }},
    {"post-adjustment", [](auto& h) { h.PostAdjustPenWidth(&kDouble); },
     [](auto& h) { return h.GetWidth() == 2000; }},
    {"no outline", [](auto& h) { h.SetToNoOutline(); },
     [](auto& h) { return h.GetCGEType() == OutlineNone && h.GetDotLength() == 0; }},
    {"record",
     [](auto& h) {
         CGE_OUTLINE record = Record();
         record.width = 77;
         h.SetCGEOutline(&record);
     },
     [](auto& h) { return h.GetWidth() == 77; }},
    {"blend",
     [](auto& h) {
         WOutlineHandle thick(h);
         thick.SetWidth(2000);
         h.BlendPen(ColorContext(), h, thick, 0.5);
     },
     [](auto& h) { return h.GetWidth() == 1500; }},
};

// One table for what holds for all: the old outline stays with its other holders, equal outlines meet in one
// entry, and without memory nothing happens.
TEST_F(OutlineHandle, EveryWriteIsCopyOnWrite) {
    for (const auto& write : kWrites) {
        SCOPED_TRACE(write.name);
        const CGE_OUTLINE before = Record();
        WOutlineHandle keeps(&before, false, &pool);
        WOutlineHandle first(keeps), second(keeps);
        const WRefCountOutline* shared = keeps.GetRefCountOutline();
        EXPECT_EQ(shared->GetReference(), 3);
        ASSERT_FALSE(write.isWritten(first));

        write.write(first);
        EXPECT_TRUE(write.isWritten(first));
        EXPECT_EQ(keeps.GetRefCountOutline(), shared);
        EXPECT_EQ(CGE_OUTLINE::CompareTo(*keeps.GetCGEOutline(), before, false), 0);
        EXPECT_EQ(shared->GetReference(), 2);
        write.write(second);
        EXPECT_EQ(second.GetRefCountOutline(), first.GetRefCountOutline());
        EXPECT_EQ(pool.GetCount(), 2u);

        second.Copy(keeps, true, true);
        testing_support::FailEachAllocation(
            [&] {
                WOutlineHandle alone(second);
                alone.SetDotLength(12345);
                write.write(alone);
            },
            [&] { EXPECT_EQ(second.GetRefCountOutline(), shared); });
        EXPECT_EQ(shared->GetReference(), 2);
    }
    EXPECT_EQ(pool.GetCount(), 0u);
}

TEST_F(OutlineHandle, WritesThatChangeNothingLeaveThePoolAlone) {
    WOutlineHandle handle = Named(pool);
    WOutlineHandle other(handle);
    const WRefCountOutline* entry = handle.GetRefCountOutline();
    const std::function<void()> writes[] = {
        [&] { handle.SetWidth(1000); },
        [&] { handle.SetCGEType(OutlineSolid); },
        [&] { handle.SetOverprintFlag(OVERPRINT_NONE); },
        [&] { handle.SetOverprintFlag(OVERPRINT_OFF); },
        [&] { handle.SetColorspec(nullptr); },
        [&] { handle.PreAdjustPenWidth(nullptr); },
        [&] { handle.MakeSolid(); },
        [&] { EXPECT_FALSE(handle.SetLeftArrowStyle(1000000)); },
        [&] { EXPECT_FALSE(handle.Copy(other, false, false)); },
        [&] { EXPECT_FALSE(handle.BlendPen(ColorContext(), handle, other, 0.0 / 0.0)); },
        [&] { handle = std::as_const(handle); },
        [&] { handle.Copy(handle, true, false); },
    };
    for (const auto& write : writes) {
        write();
        ASSERT_EQ(handle.GetRefCountOutline(), entry);  // a copy would have lost the name
    }
}

/// Somebody's own pattern, which uses the pool, and waits for a thread that uses it.
struct BusyPreset : CLinePatternPreset {
    explicit BusyPreset(WRCOutlineList& used) noexcept : pool(used) {}
    void Accept(CLinePatternPresetVisitor&) override {}
    void ApplyTo(CGE_OUTLINE& outline) const override {
        const WOutlineHandle equal(&outline, false, &pool);
        std::thread([this] {
            pool.RemoveInstance(pool.AddOrGetDuplicate(new WRefCountOutline(true), nullptr));
        }).join();
        outline.dotLength = 99;
        if (fails) throw std::bad_alloc();
    }
    bool operator==(const CLinePatternPreset& other) const override { return this == &other; }
    bool operator==(const CGE_OUTLINE& outline) const override { return outline.dotLength == 99; }

    WRCOutlineList& pool;
    bool fails = false;
};

TEST_F(OutlineHandle, PresetsMayUseThePool) {
    WOutlineHandle handle = Named(pool);
    BusyPreset preset(pool);
    preset.fails = true;
    EXPECT_THROW(handle.SetLinePatternPreset(preset), std::bad_alloc);
    EXPECT_EQ(handle.GetDotLength(), 7u);
    preset.fails = false;
    handle.SetLinePatternPreset(preset);
    EXPECT_TRUE(preset == *handle.GetCGEOutline());
    EXPECT_STREQ(handle.GetRefCountOutline()->GetColorName(), L"ink");
    EXPECT_EQ(pool.GetCount(), 1u);
}

TEST_F(OutlineHandle, KindOneGetsAPen) {
    CGE_OUTLINE text;
    text.type = 64 | OutlineNone;
    text.width = 762;
    text.nibStretch = 0;
    WOutlineHandle handle(&text, false, &pool);
    EXPECT_EQ(handle.GetWidth(), 0u);
    EXPECT_EQ(handle.GetColorspec(), nullptr);
    EXPECT_EQ(handle.GetOverprintFlag(), OVERPRINT_NONE);
    WOutlineHandle solid(handle);
    handle.SetWidth(762);
    EXPECT_EQ(handle.GetCGEOutline()->type, 64 | OutlineSolid);
    EXPECT_EQ(handle.GetNibStretch(), 100);

    CGE_OUTLINE dashed = text;
    dashed.dotDash = {2, {1, 1}};
    dashed.dotLength = 5;
    dashed.nibAngle = 5;
    solid.SetCGEOutline(&dashed);
    solid.MakeSolid();
    const CGE_OUTLINE& record = *solid.GetCGEOutline();
    EXPECT_EQ(record.type, 64 | OutlineSolid);
    EXPECT_EQ(record.dotDash.count, 0);
    EXPECT_EQ(record.dotLength, 0u);
    EXPECT_EQ(record.width, 762);
    EXPECT_EQ(record.nibAngle, 0);
    EXPECT_EQ(record.nibStretch, 100);
}

TEST_F(OutlineHandle, AnEmptyOneReadsAsNoOutline) {
    WOutlineHandle empty(false, &pool);
    EXPECT_EQ(empty.GetRefCountOutline(), nullptr);
    EXPECT_EQ(empty.GetCGEType(), OutlineNone);
    EXPECT_EQ(empty.GetWidth() + empty.GetDotLength() + empty.GetEndCaps() + empty.GetJoinType(), 0u);
    EXPECT_EQ(empty.GetNibStretch(), 0);
    EXPECT_EQ(empty.GetMatrix(), MATRIX());
    EXPECT_EQ(empty.GetCGEOutlineCopy(), nullptr);
    for (const auto& write : kWrites) {
        SCOPED_TRACE(write.name);
        WOutlineHandle handle(empty);
        write.write(handle);
        EXPECT_NE(handle.GetRefCountOutline(), nullptr);
        std::unique_ptr<WRefCountOutline> own(handle.ExtractRefCountOutline());
        EXPECT_EQ(handle.GetRefCountOutline(), nullptr);
        EXPECT_EQ(own->GetReference(), 0);
    }
    EXPECT_EQ(pool.GetCount(), 0u);
}

TEST_F(OutlineHandle, IsMadeInEveryWay) {
    const CLR_COLORSPEC gray = Gray(3);
    const WOutlineHandle pen(300, &gray, &kDashes, 0, 0, &pool), same(300, &gray, &kDashes, 0, 0, &pool);
    EXPECT_EQ(pen.GetRefCountOutline(), same.GetRefCountOutline());
    EXPECT_EQ(pen.GetCGEType(), OutlineDotDash);
    const WOutlineHandle red(300, 0x0000FFul, nullptr, 0, 0, &pool);
    CLR_COLORSPEC expected;
    expected.MakeCOLORREF(0x0000FF);
    EXPECT_EQ(*red.GetColorspec(), expected);
    EXPECT_EQ(WOutlineHandle(true, &pool).GetWidth(), 50u);
    const WOutlineHandle none(static_cast<const CGE_OUTLINE*>(nullptr), true, &pool);
    EXPECT_EQ(none.GetCGEOutline()->type, OutlineNone);
    EXPECT_EQ(WOutlineHandle(static_cast<WRefCountOutline*>(nullptr), &pool).GetRefCountOutline(), nullptr);

    // An entry that is pooled already is shared in its pool and copied into others.
    auto* pooled = const_cast<WRefCountOutline*>(pen.GetRefCountOutline());
    EXPECT_EQ(WOutlineHandle(pooled, &pool).GetRefCountOutline(), pooled);
    WRCOutlineList elsewhere;
    const WOutlineHandle copied(pooled, &elsewhere);
    EXPECT_NE(copied.GetRefCountOutline(), pooled);
    EXPECT_EQ(copied.GetCGEType(), OutlineDotDash);
    EXPECT_EQ(pooled->GetReference(), 2);
}

TEST_F(OutlineHandle, CopiesColourAndRestApart) {
    const CGE_OUTLINE other = [] {
        CGE_OUTLINE record = Record();
        record.color = Gray(200);
        record.width = 5;
        return record;
    }();
    for (const bool isShared : {false, true}) {
        WOutlineHandle named = Named(pool), plain(&other, false, &pool);
        const WOutlineHandle holder(isShared ? named : plain);
        WOutlineHandle color(plain), rest(named);
        EXPECT_TRUE(color.Copy(named, true, false));
        EXPECT_EQ(*color.GetColorspec(), Gray(5));
        EXPECT_EQ(color.GetWidth(), 5u);
        EXPECT_STREQ(color.GetRefCountOutline()->GetColorName(), L"ink");
        EXPECT_TRUE(rest.Copy(plain, false, true));
        EXPECT_EQ(rest.GetRefCountOutline(), color.GetRefCountOutline());
        EXPECT_TRUE(rest.Copy(WOutlineHandle(false, &pool), true, false));
        EXPECT_EQ(rest.GetRefCountOutline(), color.GetRefCountOutline());
        EXPECT_TRUE(rest.Copy(WOutlineHandle(false, &pool), false, true));
        EXPECT_EQ(rest.GetCGEType(), OutlineNone);
        EXPECT_TRUE(rest.Copy(named, true, true));
        EXPECT_EQ(rest.GetRefCountOutline(), named.GetRefCountOutline());
    }
    EXPECT_EQ(pool.GetCount(), 0u);
}

TEST_F(OutlineHandle, OutlivesItsPool) {
    auto gone = std::make_unique<WRCOutlineList>();
    WOutlineHandle handle(true, gone.get()), other(handle);
    SetActiveOutlineList(gone.get());
    WOutlineHandle inActive(true);
    EXPECT_EQ(inActive.GetRefCountOutline(), handle.GetRefCountOutline());
    gone.reset();
    EXPECT_EQ(GetActiveOutlineList(), GetOriginalActiveOutlineList());
    EXPECT_EQ(handle.GetRefCountOutline(), nullptr);
    EXPECT_EQ(handle.GetCGEType(), OutlineNone);
    SetActiveOutlineList(&pool);
    handle.SetWidth(9);
    EXPECT_EQ(pool.GetCount(), 1u);
    EXPECT_EQ(handle.GetWidth(), 9u);
    SetActiveOutlineList(nullptr);
    handle.SetWidth(10);
    EXPECT_EQ(pool.GetCount(), 0u);
    EXPECT_EQ(GetOriginalActiveOutlineList()->GetCount(), 1u);
}

TEST_F(OutlineHandle, TravelsInLists) {
    VyrFOM::DuplicationContextImpl context;
    EXPECT_EQ(context.DuplicateOutlineHandle(nullptr), nullptr);
    WOutlineHandleList list;
    list.Add(new WOutlineHandle(Named(pool)));
    list.Add(nullptr);
    list.Add(new WOutlineHandle(true, &pool));
    const WOutlineHandleList copy(&list, context);
    ASSERT_EQ(copy.GetNumberOfOutlines(), 3u);
    for (std::size_t i : {0u, 2u}) {
        EXPECT_NE(copy.GetOutline(i), list.GetOutline(i));
        EXPECT_EQ(copy.GetOutline(i)->GetRefCountOutline(), list.GetOutline(i)->GetRefCountOutline());
    }
    EXPECT_EQ(copy.GetOutline(1), nullptr);
    EXPECT_EQ(copy.GetOutline(3), nullptr);
    list.GetOutlineToRemap(0)->SetWidth(1);
    EXPECT_EQ(copy.GetOutline(0)->GetWidth(), 1000u);
    EXPECT_EQ(WOutlineHandleList(nullptr, context).GetNumberOfOutlines(), 0u);
    list.DestroyData();
    EXPECT_EQ(list.GetNumberOfOutlines(), 0u);
}

TEST_F(OutlineHandle, TheEntryPointerIsReplacedAsItIs) {
    WOutlineHandle handle(true, &pool);
    const WRefCountOutline* pooled = handle.GetRefCountOutline();
    WRefCountOutline own(true);
    handle.SetRefCountOutline(&own);
    EXPECT_EQ(pooled->GetReference(), 1);
    handle.SetWidth(3);
    EXPECT_EQ(own.GetCGEOutline()->width, 50);
    EXPECT_EQ(own.GetReference(), 0);
    EXPECT_TRUE(pool.RemoveInstance(pooled));
    EXPECT_EQ(pool.GetCount(), 1u);

    MemoryFileStream broken;
    handle.ReadFrom(broken);
    EXPECT_FALSE(broken.IsGood());
    EXPECT_EQ(handle.GetWidth(), 3u);
}

}  // namespace
