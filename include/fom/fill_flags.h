#pragma once

#include <cstdint>

#include "host/base/export.h"
#include "host/gfx/enums.h"
#include "host/gfx/fountain_fill.h"

/// Which properties of a fill changed (bits 0 to 30), and whether the user accepted the change (bit 31). A
/// value.
class FOM_API WFillFlags {
public:
    static const int postscriptParams;  ///< 5: parameters of a PostScript pattern
    static const int textureParams;     ///< 12: parameters of a texture

    WFillFlags() noexcept = default;

    void off() noexcept { m_bits = 0; }
    /// Every bit, the accepted bit too.
    void on() noexcept { m_bits = 0xFFFFFFFFu; }
    void ok() noexcept { accepted(1); }
    void cancel() noexcept { accepted(0); }
    bool isOk() const noexcept { return (m_bits & kAccepted) != 0; }
    /// Any of bits 0 to 30.
    bool isDirty() const noexcept { return (m_bits & ~kAccepted) != 0; }
    /// `bit` is taken modulo 32.
    void setParam(unsigned bit, int on) noexcept;
    bool getParam(unsigned bit) const noexcept { return ((m_bits >> (bit % 32)) & 1u) != 0; }
    /// For the kinds in use but 0: everything on or off, the accepted bit too. The kind selects no bits.
    void Set(CgeFillType kind, bool on) noexcept;
    std::uint32_t GetBits() const noexcept { return m_bits; }

    friend WFillFlags operator|(const WFillFlags& a, const WFillFlags& b) noexcept {
        WFillFlags both;
        both.m_bits = a.m_bits | b.m_bits;
        return both;
    }

private:
    static constexpr std::uint32_t kAccepted = 0x80000000u;
    void accepted(int yes) noexcept { setParam(31, yes); }

    std::uint32_t m_bits = 0;
};

/// The fountain properties in which two fountains differ, one bit each (docs/fill_flags.md). The accepted bit
/// is always set, so callers ask isDirty() whether anything differs.
FOM_API WFillFlags CompareFountainFills(const CGE_FOUNTAINFILL& a, const CGE_FOUNTAINFILL& b) noexcept;
