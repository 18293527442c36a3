#include "fom/fill_list.h"

namespace {

struct ProcessPools {
    std::shared_ptr<WRCFillList> original = std::make_shared<WRCFillList>();
    std::shared_ptr<WRCFillList> active = original;
};

// Never destroyed: handles in static objects anywhere may give entries back until the process is gone. What
// is pooled then stays reachable from here.
ProcessPools& Pools() {
    static ProcessPools& pools = *new ProcessPools;
    return pools;
}

// Made when the library is loaded, before any thread can ask.
[[maybe_unused]] const ProcessPools& s_madeAtLoad = Pools();

}  // namespace

std::shared_ptr<WRCFillList> GetActiveFillList() {
    return Pools().active;
}

std::shared_ptr<WRCFillList> FOMGetActiveFillList() {
    return GetActiveFillList();
}

// The previous pool may die with its last reference, and its entries with it: after the new one is in place.
void SetActiveFillList(std::shared_ptr<WRCFillList> list) {
    Pools().active.swap(list);
}

std::shared_ptr<WRCFillList> GetOriginalActiveFillList() {
    return Pools().original;
}
