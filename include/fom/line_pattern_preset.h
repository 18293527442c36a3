#pragma once

#include <concepts>

#include "host/base/export.h"
#include "host/gfx/des9_wideline.h"
#include "host/gfx/outline.h"

class CSolidLinePatternPreset;
class CStdLinePatternPreset;
class CEnhLinePatternPreset;

/// Sorts presets by kind.
class FOM_API CLinePatternPresetVisitor {
public:
    virtual ~CLinePatternPresetVisitor();
    virtual void VisitStdPattern(CStdLinePatternPreset& preset) = 0;
    virtual void VisitEnhPattern(CEnhLinePatternPreset& preset) = 0;
    virtual void VisitSolidPattern(CSolidLinePatternPreset& preset) = 0;
};

/// A line pattern that the user picks for a stroke. Main thread only.
class FOM_API CLinePatternPreset {
public:
    virtual ~CLinePatternPreset();

    virtual void Accept(CLinePatternPresetVisitor& visitor) = 0;
    /// Draws the outline's stroke in this pattern. Throws bad_alloc, the record as it was.
    virtual void ApplyTo(CGE_OUTLINE& outline) const = 0;
    /// Same kind of preset, same pattern.
    virtual bool operator==(const CLinePatternPreset& other) const = 0;
    /// Whether the outline is drawn in this pattern.
    virtual bool operator==(const CGE_OUTLINE& outline) const = 0;
    virtual bool IsValid() const { return true; }

protected:
    CLinePatternPreset() noexcept = default;
    CLinePatternPreset(const CLinePatternPreset&) noexcept = default;
    CLinePatternPreset& operator=(const CLinePatternPreset&) noexcept = default;
};

/// Presets under any of their classes. Without it the operator of `a` and that of `b`, which take the other
/// one as a CLinePatternPreset, would fit `a == b` equally well.
template <std::derived_from<CLinePatternPreset> A, std::derived_from<CLinePatternPreset> B>
bool operator==(const A& a, const B& b) {
    const CLinePatternPreset& preset = a;
    return preset.operator==(static_cast<const CLinePatternPreset&>(b));
}

/// An unbroken line. An outline is drawn so when bit 2 of its type is set.
class FOM_API CSolidLinePatternPreset final : public CLinePatternPreset {
public:
    void Accept(CLinePatternPresetVisitor& visitor) override;
    void ApplyTo(CGE_OUTLINE& outline) const override;
    bool operator==(const CLinePatternPreset& other) const override;
    bool operator==(const CGE_OUTLINE& outline) const override;
};

/// Dashes. An outline without a dot length gets one that makes a repeat as long as OUTEstimatePatternLength.
class FOM_API CStdLinePatternPreset final : public CLinePatternPreset {
public:
    CStdLinePatternPreset() noexcept = default;
    explicit CStdLinePatternPreset(const CGE_DOTDASHSPEC& pattern) noexcept : m_dotDash(pattern) {}

    const CGE_DOTDASHSPEC& GetDotDash() const noexcept { return m_dotDash; }

    void Accept(CLinePatternPresetVisitor& visitor) override;
    void ApplyTo(CGE_OUTLINE& outline) const override;
    bool operator==(const CLinePatternPreset& other) const override;
    /// Compares the dash patterns; the outline's pen kind does not matter.
    bool operator==(const CGE_OUTLINE& outline) const override;
    /// OUTIsValidDotDash.
    bool IsValid() const override;

private:
    CGE_DOTDASHSPEC m_dotDash;
};

/// Parallel threads. An outline that has a wideline already keeps its thread width.
class FOM_API CEnhLinePatternPreset final : public CLinePatternPreset {
public:
    CEnhLinePatternPreset() = default;
    explicit CEnhLinePatternPreset(const CGE_DES9_WIDELINE& wideline) : m_wideline(wideline) {}

    const CGE_DES9_WIDELINE& GetWideline() const noexcept { return m_wideline; }

    void Accept(CLinePatternPresetVisitor& visitor) override;
    void ApplyTo(CGE_OUTLINE& outline) const override;
    bool operator==(const CLinePatternPreset& other) const override;
    /// Compares the widelines but for their thread widths.
    bool operator==(const CGE_OUTLINE& outline) const override;

private:
    CGE_DES9_WIDELINE m_wideline;
};

/// The preset that the outline is drawn in, which the caller owns: dashes for kind 4, threads for a wideline,
/// unbroken otherwise. Null when memory runs out.
FOM_API CLinePatternPreset* OUTCreatePatternPreset(const CGE_OUTLINE& outline) noexcept;
