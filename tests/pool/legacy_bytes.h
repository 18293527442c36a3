#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <stdexcept>
#include <vector>

#include "host/color/context.h"
#include "host/stream/ptr_remapper.h"

/// Bytes and numbers of pointers for the tests of legacy records.
namespace legacy_test {

template <class Bytes>
void FillRandom(Bytes& bytes, std::mt19937& random) {
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random() % 4 == 0 ? 0 : random());
}

/// Knows the pointers that a test gives it, by number and kind; all others have the number 99. After
/// `throwAfter` questions it throws.
class FakeRemapper : public udi::PtrRemapper {
public:
    struct Refused : std::runtime_error {
        Refused() : runtime_error("refused") {}
    };
    std::map<std::pair<std::uint32_t, int>, void*> known;
    void* unknownBlock = nullptr;
    int throwAfter = -1;

    std::uint32_t MapPtr(const void* object, int kind) override {
        Ask();
        for (const auto& [key, pointer] : known)
            if (pointer == object && key.second == kind) return key.first;
        return object ? 99 : 0;
    }
    void* UnmapPtr(std::uint32_t id, int kind) override {
        Ask();
        const auto found = known.find({id, kind});
        if (found != known.end()) return found->second;
        return id != 0 && kind == udi::kPtrBlock ? unknownBlock : nullptr;
    }

private:
    void Ask() {
        if (throwAfter >= 0 && throwAfter-- == 0) throw Refused();
    }
};

}  // namespace legacy_test
