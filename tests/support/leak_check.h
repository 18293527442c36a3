#pragma once

#include <cstddef>
#include <gtest/gtest.h>

namespace testing_support {

/// Fails the running test unless as many memory blocks, temporary entries and images are alive when it goes
/// as were when it came.
class LeakCheck {
public:
    LeakCheck() noexcept;
    ~LeakCheck();
    LeakCheck(const LeakCheck&) = delete;
    LeakCheck& operator=(const LeakCheck&) = delete;

private:
    std::size_t m_blocks;
    std::size_t m_entries;
    std::size_t m_images;
};

/// A fixture whose every test is leak-checked. Members of derived fixtures are gone before it looks.
class LeakCheckedTest : public ::testing::Test {
private:
    LeakCheck m_check;
};

}  // namespace testing_support
