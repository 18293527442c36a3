#include "host/stream/body_fields.h"

#include <type_traits>
#include <utility>

#include "host/gfx/lazy_record.h"
#include "host/gfx/shared_record.h"

#include "gfx/fill_fields.h"
#include "stream/field_reader.h"

namespace host {

namespace {

using Bytes = std::span<const std::uint8_t>;

/// The record whose fields stand in place of a field of the type; void for a value.
template <class T>
struct RecordIn : std::type_identity<std::conditional_t<detail::HasFields<T>, T, void>> {};
template <class T>
struct RecordIn<LazyRecord<T>> : RecordIn<T> {};
template <class T>
struct RecordIn<SharedRecord<T>> : RecordIn<T> {};
// Read as one value: there are two of the first, and the second has but one field.
template <>
struct RecordIn<CGE_ARROWATTRIB> : std::type_identity<void> {};
template <>
struct RecordIn<CGE_VARIABLEATTRIB> : std::type_identity<void> {};

class FieldList {
public:
    explicit FieldList(Bytes body) noexcept : m_body(body) {}

    template <class Record>
    void AddFields(Bytes bytes) {
        detail::FieldReader reader(bytes);
        while (const unsigned number = reader.Next()) {
            const Bytes value = reader.Take();
            if (value.data() == nullptr) return;
            bool isKnown = false;
            detail::Fields<Record>::Visit(
                [&]<class T, class Owner>(unsigned known, T Owner::*, const char* name) {
                    if (known != number) return;
                    isKnown = true;
                    Add<typename RecordIn<T>::type>(name, value);
                });
            if (!isKnown) Add<void>("unknown field", value);
        }
    }
    std::vector<BodyField> Take() noexcept { return std::move(m_fields); }

private:
    template <class Record>
    void Add(const char* name, Bytes value) {
        if constexpr (std::is_void_v<Record>)
            m_fields.push_back({name, static_cast<std::size_t>(value.data() - m_body.data()), value});
        else
            AddFields<Record>(value);
    }

    Bytes m_body;
    std::vector<BodyField> m_fields;
};

template <class Record>
std::vector<BodyField> ReadFields(Bytes body) {
    FieldList fields(body);
    if (body.size() > sizeof detail::kBodyVersion)
        fields.AddFields<Record>(body.subspan(sizeof detail::kBodyVersion));
    return fields.Take();
}

}  // namespace

std::vector<BodyField> ReadFillFields(Bytes body) {
    return ReadFields<CGE_FILL>(body);
}

std::vector<BodyField> ReadOutlineFields(Bytes body) {
    return ReadFields<CGE_OUTLINE>(body);
}

}  // namespace host
