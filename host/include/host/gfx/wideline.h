#pragma once

#include <cstdint>
#include <memory>

#include "host/base/export.h"
#include "host/base/hash.h"

/// Type codes of widelines. They are stored: a code names its class for good.
enum CgeWidelineType : std::uint16_t { WidelineNone = 0, WidelineDes9 = 9 };

/// The pattern object of an outline with an enhanced line style. Each class has a type code of its own.
///
/// Pools compare and hash pattern objects, and destroy them, with their locks held: Compare, HashInto and the
/// destructor must not use a pool, nor wait for a thread that may.
class FOM_API CGE_WIDELINE {
public:
    virtual ~CGE_WIDELINE();

    virtual CgeWidelineType GetType() const noexcept = 0;
    virtual std::unique_ptr<CGE_WIDELINE> Clone() const = 0;
    /// A total order: the type code, then what the class compares. Negative, 0 or positive.
    int Compare(const CGE_WIDELINE& other) const noexcept;
    /// Reads only what Compare reads.
    virtual void HashInto(host::Hasher& hasher) const noexcept = 0;

protected:
    CGE_WIDELINE() noexcept = default;
    CGE_WIDELINE(const CGE_WIDELINE&) noexcept = default;
    CGE_WIDELINE& operator=(const CGE_WIDELINE&) noexcept = default;

    /// `other` has this object's type code.
    virtual int CompareSameType(const CGE_WIDELINE& other) const noexcept = 0;
};
