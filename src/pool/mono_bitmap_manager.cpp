#include "fom/mono_bitmap_manager.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "host/base/guid.h"
#include "host/base/singleton.h"

#include "fom/fill_compare.h"

using VyrPlatform::VyrStringT;

namespace {

class CPrivateMonoBmpMgr final : public FOMMonoBmpMgr {
public:
    ~CPrivateMonoBmpMgr() override { FreeAllBitmaps(); }

    HMEM AddOrGetBitmap(HMEM bitmap) override {
        if (!bitmap || Find(bitmap) != m_held.end()) return bitmap;
        const auto equal = std::find_if(m_held.begin(), m_held.end(), [bitmap](const Held& held) {
            return CompareBitmaps(held.bitmap, bitmap);
        });
        if (equal != m_held.end()) {
            MEMMANFree(bitmap);
            return equal->bitmap;
        }
        m_held.push_back({bitmap, VyrUtils::Guid::Generate().ToString()});
        return bitmap;
    }

    VyrStringT<wchar_t> GetIdentifier(HMEM bitmap) const override {
        const auto found = Find(bitmap);
        return found == m_held.end() ? VyrStringT<wchar_t>() : found->identifier;
    }

    void FreeAllBitmaps() noexcept override {
        for (const Held& held : std::exchange(m_held, {}))
            MEMMANFree(held.bitmap);
    }

private:
    struct Held {
        HMEM bitmap;
        VyrStringT<wchar_t> identifier;
    };

    std::vector<Held>::const_iterator Find(HMEM bitmap) const noexcept {
        return std::find_if(m_held.begin(), m_held.end(),
                            [bitmap](const Held& held) { return held.bitmap == bitmap; });
    }

    std::vector<Held> m_held;  // in the order in which they were registered
};

}  // namespace

FOMMonoBmpMgr::~FOMMonoBmpMgr() = default;

FOMMonoBmpMgr* FOMMonoBmpMgr::GetInst() {
    return VyrUtils::Singleton<CPrivateMonoBmpMgr>::GetInstance();
}

bool FOMMonoBmpMgr::CompareBitmaps(HMEM a, HMEM b) noexcept {
    return RCF_CompareBitmaps(a, b) == 0;
}
