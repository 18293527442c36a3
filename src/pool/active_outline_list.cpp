#include "fom/outline_list.h"

namespace {

struct ProcessPools {
    WRCOutlineList* original = new WRCOutlineList;
    std::weak_ptr<WRCOutlineList> active = original->GetUnowned();
};

// Never destroyed, like the pools of fills: static objects may give entries back until the process is gone.
ProcessPools& Pools() {
    static ProcessPools& pools = *new ProcessPools;
    return pools;
}

// Made when the library is loaded, before any thread can ask.
[[maybe_unused]] const ProcessPools& s_madeAtLoad = Pools();

}  // namespace

WRCOutlineList* GetActiveOutlineList() {
    const std::shared_ptr<WRCOutlineList> active = Pools().active.lock();
    return active ? active.get() : Pools().original;
}

void SetActiveOutlineList(WRCOutlineList* list) {
    Pools().active = (list ? list : Pools().original)->GetUnowned();
}

WRCOutlineList* GetOriginalActiveOutlineList() {
    return Pools().original;
}
