#include "fom/duplication.h"

#include <memory>

namespace VyrFOM {

IDuplicationContext::~IDuplicationContext() = default;

const WRefCountFill* DuplicationContextImpl::DuplicateFill(const WRefCountFill* fill) {
    return fill;
}

WFillHandle* DuplicationContextImpl::DuplicateFillHandle(const WFillHandle* handle) {
    return handle ? new WFillHandle(*handle) : nullptr;
}

WOutlineHandle* DuplicationContextImpl::DuplicateOutlineHandle(const WOutlineHandle* handle) {
    if (!handle) return nullptr;
    auto copy = std::make_unique<WOutlineHandle>();
    copy->Copy(*handle, true, true);
    return copy.release();
}

}  // namespace VyrFOM
