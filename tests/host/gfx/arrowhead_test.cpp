#include "host/gfx/arrowhead.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "support/alloc_faults.h"
#include "support/blocks.h"
#include "support/leak_check.h"

namespace {

using testing_support::BytesOf;
using testing_support::LeakCheckedTest;
using ByteList = std::vector<std::uint8_t>;

HMEM Block(const ByteList& bytes) {
    return testing_support::BlockOf(bytes);
}

std::optional<CGE_ARROWHEAD> Decode(const ByteList& bytes) {
    const HMEM block = Block(bytes);
    std::optional<CGE_ARROWHEAD> head = CGE_ARROWHEAD::FromBlock(block);
    MEMMANFree(block);
    return head;
}

ByteList Encode(const CGE_ARROWHEAD& head) {
    const HMEM block = head.ToBlock();
    ByteList bytes = BytesOf(block);
    MEMMANFree(block);
    return bytes;
}

const CGE_ARROWHEAD kHead{{{kArrowMove, {-3000, 0x01020304}, {}, {}},
                           {kArrowLine, {0, -1}, {}, {}},
                           {kArrowCurve, {7, 8}, {3, 4}, {5, 6}},
                           {kArrowClose, {}, {}, {}}},
                          -1500};
const ByteList kBytes{'A', 'R',  'R',  'W',  1,    0,    16,   0,    0x24, 0xFA, 0xFF, 0xFF, 4, 0, 0, 0,  //
                      0,   0x48, 0xF4, 0xFF, 0xFF, 4,    3,    2,    1,                                   //
                      1,   0,    0,    0,    0,    0xFF, 0xFF, 0xFF, 0xFF,                                //
                      2,   3,    0,    0,    0,    4,    0,    0,    0,    5,    0,    0,    0, 6, 0, 0,
                      0,   7,    0,    0,    0,    8,    0,    0,    0,    3};

class Arrowhead : public LeakCheckedTest {};

TEST_F(Arrowhead, BlocksHaveTheDocumentedBytes) {
    EXPECT_EQ(Encode(kHead), kBytes);
    EXPECT_EQ(Decode(kBytes), kHead);
    EXPECT_EQ(Decode(Encode({})), CGE_ARROWHEAD());
    EXPECT_EQ(CGE_ARROWHEAD::FromBlock(nullptr), std::nullopt);

    ByteList newer = kBytes;  // two more fields, which this version does not know
    newer[6] = 18;
    newer.insert(newer.begin() + 16, {0xAA, 0xBB});
    EXPECT_EQ(Decode(newer), kHead);
}

TEST_F(Arrowhead, HostileBlocksAreRefusedOrReadExactly) {
    for (std::size_t size = 0; size < kBytes.size(); ++size)
        EXPECT_EQ(Decode({kBytes.begin(), kBytes.begin() + static_cast<std::ptrdiff_t>(size)}), std::nullopt);
    std::size_t read = 0;
    for (std::size_t bit = 0; bit < kBytes.size() * 8; ++bit) {
        ByteList bytes = kBytes;
        bytes[bit / 8] ^= static_cast<std::uint8_t>(1u << bit % 8);
        const std::optional<CGE_ARROWHEAD> head = Decode(bytes);
        if (head) {
            EXPECT_EQ(Encode(*head), bytes) << "bit " << bit;
        }
        read += head.has_value();
    }
    // Every bit of the line's end and of the coordinates, and the one that makes the line a move.
    EXPECT_EQ(read, (1 + 5 * 2) * 32u + 1);

    ByteList longer = kBytes;
    longer.push_back(3);
    EXPECT_EQ(Decode(longer), std::nullopt);
    ByteList many = kBytes;
    many[14] = 0xFF;  // 16 million steps in 59 bytes
    const testing_support::HeapMeter meter;
    EXPECT_EQ(Decode(many), std::nullopt);
    EXPECT_LT(meter.ThreadPeak(), 1000);
}

TEST_F(Arrowhead, SubPathsBeginWithAMove) {
    const auto wellFormed = [](std::initializer_list<CgeArrowStep> kinds) {
        CGE_ARROWHEAD head;
        for (const CgeArrowStep kind : kinds)
            head.steps.push_back({kind, {}, {}, {}});
        return head.IsWellFormed();
    };
    EXPECT_TRUE(wellFormed({kArrowMove, kArrowLine, kArrowMove, kArrowCurve, kArrowClose, kArrowMove}));
    EXPECT_FALSE(wellFormed({kArrowLine}));
    EXPECT_FALSE(wellFormed({kArrowClose}));
    EXPECT_FALSE(wellFormed({kArrowMove, kArrowLine, kArrowClose, kArrowCurve}));
    EXPECT_FALSE(wellFormed({kArrowMove, kArrowClose, kArrowClose}));

    ByteList bytes = kBytes;
    bytes[12] = 5;
    bytes.push_back(kArrowClose);
    EXPECT_EQ(Decode(bytes), std::nullopt);
}

// Registered blocks stay until the process ends: these tests count them themselves.

TEST(ArrowRegistry, KeepsEqualBytesOnce) {
    const std::size_t before = host::LiveMemoryBlocks();
    const HMEM first = SUDIRegisterArrow(Block({1, 2, 3, 4}));
    const HMEM other = SUDIRegisterArrow(Block({1, 2, 3, 4, 0}));
    EXPECT_NE(first, other);
    EXPECT_EQ(SUDIRegisterArrow(MEMMANDuplicate(first)), first);
    EXPECT_EQ(SUDIRegisterArrow(first), first);
    EXPECT_EQ(BytesOf(first), (ByteList{1, 2, 3, 4}));
    EXPECT_EQ(SUDIRegisterArrow(nullptr), nullptr);
    EXPECT_EQ(host::LiveMemoryBlocks(), before + 2);
}

TEST(ArrowRegistry, FreesTheBlockWhenMemoryRunsOut) {
    SUDIRegisterArrow(Block({5}));  // the registry itself is there from now on
    const std::size_t before = host::LiveMemoryBlocks();
    HMEM block = Block({6, 6});
    {
        const testing_support::FailAllocation fail(1);
        EXPECT_EQ(SUDIRegisterArrow(block), nullptr);
        EXPECT_TRUE(fail.HasFailed());
    }
    EXPECT_EQ(host::LiveMemoryBlocks(), before);
    block = Block({6, 6});
    EXPECT_EQ(SUDIRegisterArrow(block), block);
}

TEST(ArrowRegistry, ThreadsAgreeOnOneBlock) {
    constexpr std::uint8_t kValues = 100;
    const std::size_t before = host::LiveMemoryBlocks();
    std::vector<std::vector<HMEM>> known(4);
    std::vector<std::thread> threads;
    for (std::vector<HMEM>& mine : known)
        threads.emplace_back([&mine] {
            for (std::uint8_t value = 0; value < kValues; ++value)
                mine.push_back(SUDIRegisterArrow(Block({value, 7, 7})));
        });
    for (std::thread& thread : threads)
        thread.join();
    for (const std::vector<HMEM>& mine : known)
        EXPECT_EQ(mine, known[0]);
    EXPECT_EQ(host::LiveMemoryBlocks(), before + kValues);
}

}  // namespace
