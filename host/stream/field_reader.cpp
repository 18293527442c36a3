#include "stream/field_reader.h"

namespace host::detail {

const std::uint8_t* FieldReader::Pass(const std::uint8_t* at, const std::uint8_t* end, unsigned last,
                                      unsigned number) noexcept {
    while (at != end && *at < number) {
        if (*at <= last) return nullptr;
        last = *at;
        const std::span value = ValueAt(at, end);
        if (value.data() == nullptr) return nullptr;
        at = value.data() + value.size();
    }
    return at;
}

}  // namespace host::detail
