#include "support/leak_check.h"

#include "host/base/memory.h"
#include "host/base/temp_data.h"
#include "host/gfx/image.h"

namespace testing_support {

LeakCheck::LeakCheck() noexcept
    : m_blocks(host::LiveMemoryBlocks()), m_entries(host::LiveTmpEntries()), m_images(host::LiveImages()) {}

LeakCheck::~LeakCheck() {
    EXPECT_EQ(host::LiveMemoryBlocks(), m_blocks) << "memory blocks leaked or freed twice";
    EXPECT_EQ(host::LiveTmpEntries(), m_entries) << "temporary entries leaked or deleted twice";
    EXPECT_EQ(host::LiveImages(), m_images) << "images leaked";
}

}  // namespace testing_support
