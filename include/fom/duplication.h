#pragma once

#include "host/base/export.h"

#include "fom/fill_handle.h"
#include "fom/outline_handle.h"

namespace VyrFOM {

/// What objects are duplicated with between documents that share the same pools.
class FOM_API IDuplicationContext {
public:
    virtual ~IDuplicationContext();
    virtual const WRefCountFill* DuplicateFill(const WRefCountFill* fill) = 0;
    /// The caller owns the result.
    virtual WFillHandle* DuplicateFillHandle(const WFillHandle* handle) = 0;
    virtual WOutlineHandle* DuplicateOutlineHandle(const WOutlineHandle* handle) = 0;
};

/// Pooled fills are shared, handles are copied; null gives null.
class FOM_API DuplicationContextImpl : public IDuplicationContext {
public:
    const WRefCountFill* DuplicateFill(const WRefCountFill* fill) override;
    WFillHandle* DuplicateFillHandle(const WFillHandle* handle) override;
    WOutlineHandle* DuplicateOutlineHandle(const WOutlineHandle* handle) override;
};

}  // namespace VyrFOM
