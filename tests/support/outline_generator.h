#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "host/gfx/des9_wideline.h"
#include "host/gfx/outline.h"

namespace testing_support {

/// Makes outline records in which every field is the default half of the time, and otherwise takes one of a
/// few values, extreme ones among them. The same seed makes the same records. It owns the arrowhead blocks
/// that they refer to, and must outlive them.
class OutlineGenerator {
public:
    explicit OutlineGenerator(std::uint32_t seed);
    ~OutlineGenerator();
    OutlineGenerator(const OutlineGenerator&) = delete;
    OutlineGenerator& operator=(const OutlineGenerator&) = delete;

    CGE_OUTLINE Make();
    CGE_DES9_WIDELINE MakeWideline();

private:
    unsigned Pick(unsigned count) { return static_cast<unsigned>(m_random() % count); }
    bool Flip() { return Pick(2) != 0; }
    /// -1, 0, 1, the least or the greatest number.
    template <class T>
    T Whole();
    double Number();
    MATRIX Matrix();
    CLR_COLORSPEC Color();
    CGE_ARROWATTRIB Arrow();
    void AddExtras(CGE_OUTLINE& pen);
    template <class T>
    void Change(T& field, T value) {
        if (Flip()) field = value;
    }

    std::mt19937 m_random;
    std::vector<HMEM> m_blocks;
};

}  // namespace testing_support
