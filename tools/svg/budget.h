#pragma once

#include <cstdint>

namespace svg {

/// Bounds the work that one document may cause, whatever its rules and repetitions multiply to.
class Budget {
public:
    explicit Budget(std::uint64_t steps) : m_left(steps) {}

    void Spend(std::uint64_t steps) {
        m_exhausted = m_exhausted || steps > m_left;
        m_left = m_exhausted ? 0 : m_left - steps;
    }
    bool IsExhausted() const { return m_exhausted; }

private:
    std::uint64_t m_left;
    bool m_exhausted = false;
};

}  // namespace svg
