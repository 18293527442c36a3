#include "fom/duplication.h"

namespace VyrFOM {

IDuplicationContext::~IDuplicationContext() = default;

const WRefCountFill* DuplicationContextImpl::DuplicateFill(const WRefCountFill* fill) {
    return fill;
}

WFillHandle* DuplicationContextImpl::DuplicateFillHandle(const WFillHandle* handle) {
    return handle ? new WFillHandle(*handle) : nullptr;
}

}  // namespace VyrFOM
