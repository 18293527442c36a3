#include "fom/outline_list.h"

namespace {

struct ProcessPools {
    WRCOutlineList* original = new WRCOutlineList;
    WRCOutlineList* active = original;
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
    return Pools().active;
}

void SetActiveOutlineList(WRCOutlineList* list) {
    Pools().active = list;
}

WRCOutlineList* GetOriginalActiveOutlineList() {
    return Pools().original;
}
