#include <csignal>
#include <new>
#include <thread>
#include <utility>
#include <vector>
#ifndef _WIN32
#include <sys/resource.h>
#endif

#include "host/gfx/image.h"
#include "host/services/scoped_environment.h"

#include "support/alloc_faults.h"
#include "support/leak_check.h"

namespace {

constexpr std::uint32_t kMiB = 1u << 20;

/// A value for each pixel that a shift by a row, a column or a tile changes.
std::uint8_t Expected(std::uint32_t x, std::uint32_t y) {
    return static_cast<std::uint8_t>(x * 31 + y * 57 + x / 256 * 101 + y / 256 * 17);
}

std::unique_ptr<RIMAGE> Painted(std::uint32_t width, std::uint32_t height) {
    auto image = RIMAGE::Create(width, height, 1, 8);
    std::vector<std::uint8_t> row(width);
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x)
            row[x] = Expected(x, y);
        image->WriteRow(y, row);
    }
    return image;
}

std::size_t CountWrong(const RIMAGE& image) {
    std::size_t wrong = 0;
    RIPTileParser parser(image);
    while (const auto tile = parser.Next())
        for (std::int32_t y = tile->bounds.top; y < tile->bounds.bottom; ++y) {
            const std::uint8_t* row =
                tile->data + static_cast<std::size_t>(y - tile->bounds.top) * tile->stride;
            for (std::int32_t x = tile->bounds.left; x < tile->bounds.right; ++x)
                wrong += *row++ != Expected(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y));
        }
    return wrong;
}

// The same laws hold for pixels on the heap and for those in a file.
class ImagePixels : public testing_support::LeakCheckedTest,
                    public ::testing::WithParamInterface<std::pair<std::uint32_t, std::uint32_t>> {
protected:
    std::unique_ptr<RIMAGE> Make() const { return Painted(GetParam().first, GetParam().second); }
};

TEST_P(ImagePixels, CopiesShareUntilOneIsEdited) {
    const std::size_t size = std::size_t{GetParam().first} * GetParam().second;
    testing_support::HeapMeter made;
    auto image = Make();
    EXPECT_EQ(made.ThreadBytes() < 1000, size > kMiB) << made.ThreadBytes();
    testing_support::HeapMeter copied;
    RIMAGE copy(*image);
    EXPECT_LT(copied.ThreadBytes(), 100);
    const RIMAGE::Tile first = image->GetTile(0);
    EXPECT_EQ(copy.GetTile(0).data, first.data);

    const RIMAGE::MutableTile tile = copy.EditTile(copy.GetNumTiles() - 1);
    const auto lastRow = static_cast<std::size_t>(tile.bounds.bottom - tile.bounds.top - 1);
    std::uint8_t& last = tile.data[lastRow * tile.stride + tile.stride - 1];
    last = static_cast<std::uint8_t>(last + 1);
    EXPECT_EQ(CountWrong(copy), 1u);
    EXPECT_EQ(CountWrong(*image), 0u);
    EXPECT_EQ(image->GetTile(0).data, first.data) << "what is being read stays where it is";
    EXPECT_EQ(copy.EditTile(0).data, copy.GetTile(0).data) << "its own by now";

    *image = copy;
    EXPECT_EQ(image->GetTile(0).data, copy.GetTile(0).data);
    image.reset();
    EXPECT_EQ(CountWrong(copy), 1u);
}

TEST_P(ImagePixels, MemoryRunningOutChangesNothing) {
    const auto image = Make();
    RIMAGE copy(*image);
    const auto rounds = testing_support::FailEachAllocation([&] { copy.EditTile(0).data[0] = 99; },
                                                            [&] { EXPECT_EQ(CountWrong(copy), 0u); });
    EXPECT_GE(rounds, 1u);
    EXPECT_EQ(CountWrong(copy), 1u);
    EXPECT_EQ(CountWrong(*image), 0u);
    EXPECT_GE(testing_support::FailEachAllocation([&] { Make(); }, [] {}), 2u);
}

TEST_P(ImagePixels, CopiesBelongToTheirThreads) {
    const auto image = Make();
    std::vector<std::jthread> threads;
    for (std::uint8_t t = 1; t < 4; ++t)
        threads.emplace_back([copy = RIMAGE(*image), t]() mutable {
            for (int i = 0; i < 3; ++i) {
                RIMAGE own(copy);
                own.EditTile(0).data[0] = t;
                EXPECT_EQ(CountWrong(own), 1u);
                EXPECT_EQ(CountWrong(copy), 0u);
            }
            copy.EditTile(0).data[0] = t;
        });
    threads.clear();
    EXPECT_EQ(CountWrong(*image), 0u);
}

INSTANTIATE_TEST_SUITE_P(Sizes, ImagePixels,
                         ::testing::Values(std::pair(100u, 70u), std::pair(1024u, 1024u),
                                           std::pair(1u, kMiB / 16 - 1), std::pair(1041u, 1009u)));

using LargeImage = testing_support::LeakCheckedTest;

void ExpectNoRoom(RIMAGE& image, RIMAGE& copy) {
    EXPECT_THROW(RIMAGE::Create(2000, 1000, 1, 8), std::bad_alloc);
    EXPECT_THROW(copy.EditTile(3), std::bad_alloc);
    EXPECT_THROW(image.WriteRow(0, std::vector<std::uint8_t>(2000)), std::bad_alloc);
    EXPECT_EQ(copy.GetTile(0).data, image.GetTile(0).data);
    EXPECT_EQ(CountWrong(image), 0u);
    EXPECT_TRUE(RIMAGE::Create(1000, 1000, 1, 8));
}

TEST_F(LargeImage, WithoutTemporaryFolderNothingChanges) {
    const auto image = Painted(2000, 1000);
    RIMAGE copy(*image);
    const char* const absent = "/absent/folder";
    const testing_support::ScopedEnvironment posix("TMPDIR", absent), windows("TMP", absent),
        old("TEMP", absent);
    ExpectNoRoom(*image, copy);
}

#ifndef _WIN32
/// Lowers a limit of the process until the end of the scope.
class ScopedLimit {
public:
    using Which = decltype(RLIMIT_FSIZE);
    ScopedLimit(Which which, rlim_t value) : m_which(which) {
        getrlimit(m_which, &m_old);
        const rlimit lower{value, m_old.rlim_max};
        setrlimit(m_which, &lower);
    }
    ~ScopedLimit() { setrlimit(m_which, &m_old); }
    ScopedLimit(const ScopedLimit&) = delete;
    ScopedLimit& operator=(const ScopedLimit&) = delete;

private:
    Which m_which;
    rlimit m_old{};
};

TEST_F(LargeImage, FileThatMayNotGrowChangesNothing) {
    const auto image = Painted(2000, 1000);
    RIMAGE copy(*image);
    const auto ignored = std::signal(SIGXFSZ, SIG_IGN);
    {
        const ScopedLimit limit(RLIMIT_FSIZE, kMiB + kMiB / 2);
        ExpectNoRoom(*image, copy);
    }
    std::signal(SIGXFSZ, ignored);
}

TEST_F(LargeImage, ManyDoNotUseUpTheOpenFiles) {
    const ScopedLimit limit(RLIMIT_NOFILE, 40);
    std::vector<std::unique_ptr<RIMAGE>> images;
    for (int i = 0; i < 50; ++i)
        images.push_back(RIMAGE::Create(1025, 1024, 1, 8));
    EXPECT_NE(images.front()->GetTile(0).data, images.back()->GetTile(0).data);
}
#endif

}  // namespace
