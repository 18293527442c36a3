#pragma once

#include <cstdint>

#include "host/base/export.h"

/// The attributes of an outline, one bit each, as WOutlineFlags counts them.
enum OutlineChange : std::uint32_t {
    OutlineChangeType = 0x1,
    OutlineChangeBehindFill = 0x2,
    OutlineChangeScaleWithObject = 0x4,
    OutlineChangeOverlapArrow = 0x8,
    OutlineChangeShareArrow = 0x10,
    OutlineChangeEndCaps = 0x20,
    OutlineChangeJoinType = 0x40,
    OutlineChangeWidth = 0x80,
    OutlineChangeNibStretch = 0x100,
    OutlineChangeNibAngle = 0x200,
    OutlineChangeMatrix = 0x400,
    OutlineChangeColor = 0x800,
    OutlineChangeScreen = 0x1000,
    OutlineChangeDotDash = 0x2000,
    OutlineChangeLeftArrow = 0x4000,
    OutlineChangeRightArrow = 0x8000,
    OutlineChangeDotLength = 0x10000,
    OutlineChangeWideline = 0x20000,
    OutlineChangeWidelineWidth = 0x40000,
    OutlineChangeMiterLimit = 0x80000,
    OutlineChangeOverprint = 0x100000,
    OutlineChangeLeftArrowAttributes = 0x200000,
    OutlineChangeRightArrowAttributes = 0x400000,
    OutlineChangeJustification = 0x800000,
    OutlineChangeDashAdjust = 0x1000000,
    OutlineChangeProjectMatrix = 0x2000000,
    OutlineChangeVariableWidth = 0x4000000
};

/// Which attributes of an outline changed (bits 0 to 30), and whether the user accepted the change (bit 31).
/// A value.
class FOM_API WOutlineFlags {
public:
    WOutlineFlags() noexcept = default;
    explicit WOutlineFlags(std::uint32_t bits) noexcept : m_bits(bits) {}

    void ok() noexcept { m_bits |= kAccepted; }
    void cancel() noexcept { m_bits &= ~kAccepted; }
    void accepted(bool yes) noexcept { yes ? ok() : cancel(); }
    bool isOk() const noexcept { return (m_bits & kAccepted) != 0; }
    /// Any of bits 0 to 30.
    bool isDirty() const noexcept { return (m_bits & ~kAccepted) != 0; }

    void Set(OutlineChange attribute, bool on = true) noexcept {
        m_bits = on ? m_bits | attribute : m_bits & ~static_cast<std::uint32_t>(attribute);
    }
    bool Has(OutlineChange attribute) const noexcept { return (m_bits & attribute) != 0; }
    std::uint32_t GetBits() const noexcept { return m_bits; }

    friend WOutlineFlags operator|(WOutlineFlags a, WOutlineFlags b) noexcept {
        return WOutlineFlags(a.m_bits | b.m_bits);
    }

private:
    static constexpr std::uint32_t kAccepted = 0x80000000u;

    std::uint32_t m_bits = 0;
};
