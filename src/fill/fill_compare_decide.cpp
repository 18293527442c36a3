#include "fom/fill_compare.h"
#include "fom/refcount_fill.h"

#include "fill/fill_compare.h"

// Apart from its siblings: the one comparison that knows pooled entries.
int RCF_CompareCGEFills(const CGE_FILL& a, const CGE_FILL& b,
                        safe_function<std::optional<int>(const CGE_FILL&, const CGE_FILL&)> decide) {
    if (a.GetType() != b.GetType()) return a.GetType() < b.GetType() ? -1 : 1;
    if (decide) {
        if (const std::optional<int> decided = decide(a, b)) return *decided;
    }
    WRefCountFill first(&a);
    WRefCountFill second(&b);
    first.CalculateDigestKey();
    second.CalculateDigestKey();
    return first.Compare(&second, false);
}
