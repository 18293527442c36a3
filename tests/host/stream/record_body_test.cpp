#include <set>

#include "host/stream/body_fields.h"
#include "host/stream/body_io.h"
#include "host/stream/body_samples.h"

#include "gfx/fill_fields.h"
#include "gfx/wideline_fields.h"
#include "support/alloc_faults.h"
#include "support/fill_generator.h"
#include "support/golden.h"
#include "support/leak_check.h"
#include "support/outline_generator.h"

namespace {

using namespace stream_test;

class RecordBody : public testing_support::LeakCheckedTest {};

template <class T, class... Types>
concept OneOf = (std::same_as<T, Types> || ...);

/// Whether two records agree in every field that a body has, as the field lists name them.
struct SameFields {
    template <class T>
    bool operator()(const T& a, const T& b) const {
        if constexpr (host::detail::HasFields<T>) {
            bool same = true;
            host::detail::Fields<T>::Visit([&](unsigned number, auto member, const char*) {
                if constexpr (requires { host::detail::Fields<T>::IsStored(a, number); })
                    if (!host::detail::Fields<T>::IsStored(a, number)) return;
                same = same && Field(a, b, member);
            });
            return same;
        } else if constexpr (OneOf<T, POINT, RECT, CLR_COLORSPEC, VyrUtils::Guid, void*>) {
            return a == b;
        } else {
            return host::detail::FieldCompare{}(a, b) == 0;
        }
    }
    template <class T>
    bool operator()(const host::LazyRecord<T>& a, const host::LazyRecord<T>& b) const {
        return (*this)(a.Read(), b.Read());
    }
    template <class T>
    bool operator()(const std::vector<T>& a, const std::vector<T>& b) const {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(), *this);
    }
    template <std::size_t N>
    bool operator()(const host::FixedName<N>& a, const host::FixedName<N>& b) const {
        return a.Units() == b.Units();
    }
    template <class T, std::size_t N>
    bool operator()(const std::array<T, N>& a, const std::array<T, N>& b) const {
        return a == b;
    }
    bool operator()(const CGE_DOTDASHSPEC& a, const CGE_DOTDASHSPEC& b) const {
        return a.count == b.count && a.element == b.element;
    }

private:
    template <class T, class Member>
    bool Field(const T& a, const T& b, Member member) const {
        if constexpr (std::is_same_v<Member, std::uint32_t CGE_PATTERNFILL::*>)
            return (a.*member == 0) == (b.*member == 0) && (a.*member == 0 || a.*member != b.*member);
        else if constexpr (std::is_same_v<Member, HMEM CGE_PATTERNFILL::*>)
            return HasSamePatternData(a.*member, b.*member) && b.GetOwner() == nullptr;
        else if constexpr (std::is_same_v<Member, HMEM T::*>)
            return a.*member == b.*member;
        else
            return (*this)(a.*member, b.*member);
    }
    static bool HasSamePatternData(HMEM a, HMEM b) {
        if (!a || !b) return a == b;
        auto bytes = testing_support::BytesOf(a), others = testing_support::BytesOf(b);
        bytes.resize(kPatternDataSize - sizeof(void*));
        others.resize(kPatternDataSize - sizeof(void*));
        return bytes == others && MEMMANGetSize(b) == kPatternDataSize;
    }
};

/// Reads back what was written, as itself, and writes the same again.
template <class Record>
void ExpectIdentity(const Record& record, udi::PtrRemapper& remapper) {
    const ByteVector bytes = Encode(record, remapper);
    const auto read = Decode<Record>(bytes, remapper);
    ASSERT_TRUE(read);
    EXPECT_TRUE(SameFields()(record, *read));
    EXPECT_EQ(Encode(*read, remapper), bytes);
}

template <class Record>
std::vector<host::BodyField> FieldsOf(const ByteVector& body) {
    return std::same_as<Record, CGE_FILL> ? host::ReadFillFields(body) : host::ReadOutlineFields(body);
}

/// Any bytes: no record, or one that can be written and read back. It takes no more than its share of memory.
template <class Record>
void ExpectSafe(const ByteVector& bytes, udi::PtrRemapper& remapper) {
    std::size_t end = 0;
    for (const host::BodyField& field : FieldsOf<Record>(bytes)) {
        EXPECT_EQ(field.value.data(), bytes.data() + field.offset);
        EXPECT_GE(field.offset, end + 2);
        end = field.offset + field.value.size();
    }
    EXPECT_LE(end, bytes.size());
    const testing_support::HeapMeter meter;
    const auto record = Decode<Record>(bytes, remapper);
    EXPECT_LE(meter.ThreadPeak(), static_cast<std::ptrdiff_t>(16 * bytes.size() + 4096));
    if (record) ExpectIdentity(*record, remapper);
}

template <class Record, class Check>
void ForEveryChange(const Named<Record>& samples, udi::PtrRemapper& remapper, Check check) {
    for (const auto& [name, record] : samples) {
        SCOPED_TRACE(name);
        const ByteVector bytes = Encode(record, remapper);
        for (std::size_t size = 0; size < bytes.size(); ++size)
            check(Record(), ByteVector(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size)));
        for (std::size_t bit = 0; bit < bytes.size() * 8; ++bit) {
            ByteVector changed = bytes;
            changed[bit / 8] ^= static_cast<std::uint8_t>(1u << (bit % 8));
            check(Record(), changed);
        }
    }
}

/// A fill of the kind with one field for its sub-record.
ByteVector FillBody(CgeFillType kind, unsigned number, const ByteVector& record) {
    BodyBuilder body;
    body.Number(std::uint16_t{1}).Number(std::uint16_t{0x0101}).Number(static_cast<std::uint16_t>(kind));
    return body.Field(number, record).bytes;
}

template <class Record>
bool IsRead(const ByteVector& bytes) {
    udi::PersistentPtrRemapper remapper;
    return Decode<Record>(bytes, remapper).has_value();
}

bool IsFountainRead(const ByteVector& fields) {
    return IsRead<CGE_FILL>(FillBody(FillFountain, 4, fields));
}

TEST_F(RecordBody, HasTheGoldenBytes) {
    const auto golden = testing_support::ReadGolden("bodies.txt");
    Samples samples;
    const auto check = [&](const auto& named) {
        for (const auto& [name, record] : named) {
            SCOPED_TRACE(name);
            udi::PersistentPtrRemapper remapper;
            ASSERT_TRUE(golden.contains(name));
            EXPECT_EQ(Encode(record, remapper), golden.at(name));
            ExpectIdentity(record, remapper);
        }
    };
    check(samples.fills);
    check(samples.outlines);
    EXPECT_EQ(golden.size(), samples.fills.size() + samples.outlines.size());
}

TEST_F(RecordBody, KeepsGeneratedRecords) {
    testing_support::FillGenerator fills(5);
    testing_support::OutlineGenerator outlines(6);
    udi::PersistentPtrRemapper remapper;
    for (int i = 0; i < 1000; ++i) {
        ExpectIdentity(fills.Make(), remapper);
        const CGE_OUTLINE pen = outlines.Make();
        ExpectIdentity(pen, remapper);
        CGE_FILL hatch(FillHatch);
        hatch.EditHatch().lines = {{{1, 2}, 3, 4, 5, pen}, {}};
        ExpectIdentity(hatch, remapper);
    }
}

TEST_F(RecordBody, SurvivesEveryTruncationAndEveryBitChange) {
    Samples samples;
    udi::PersistentPtrRemapper remapper;
    const auto check = [&]<class Record>(const Record&, const ByteVector& bytes) {
        ExpectSafe<Record>(bytes, remapper);
    };
    ForEveryChange(samples.fills, remapper, check);
    ForEveryChange(samples.outlines, remapper, check);
}

// Each value stands behind its head and at most those of two records that begin with it: nothing is left out.
TEST_F(RecordBody, AllFieldsAreListedByName) {
    Samples samples;
    udi::PersistentPtrRemapper remapper;
    std::set<std::string> all;
    const auto check = [&](const auto& named) {
        for (const auto& [name, record] : named) {
            SCOPED_TRACE(name);
            const ByteVector body = Encode(record, remapper);
            std::set<std::string> names;
            std::size_t end = 2;
            for (const host::BodyField& field : FieldsOf<std::remove_cvref_t<decltype(record)>>(body)) {
                EXPECT_TRUE(names.insert(field.name).second) << field.name;
                EXPECT_LE(field.offset - end, 3 * 6u) << field.name;
                end = field.offset + field.value.size();
            }
            EXPECT_EQ(end, body.size());
            all.merge(names);
        }
    };
    check(samples.fills);
    check(samples.outlines);
    EXPECT_EQ(all.size(), 69u) << "as many as the lists have that are no records";
    EXPECT_FALSE(all.contains("unknown field"));
}

TEST_F(RecordBody, BlocksAndTemporaryDataComeFromElsewhere) {
    Samples samples;
    udi::PersistentPtrRemapper writing, reading;
    const auto read = [&](const CGE_FILL& fill) {
        return Decode<CGE_FILL>(Encode(fill, writing), reading).value();
    };
    for (const auto& [name, fill] : samples.fills) {
        const CGE_FILL other = read(fill);
        EXPECT_EQ(other.MonoBitmap().bitmap == host::UnresolvedBlock(), name == "fill-mono");
        const CGE_PATTERNFILL* pattern = other.Pattern();
        if (!pattern) continue;
        EXPECT_EQ(pattern->instance, nullptr) << "a pointer of another process";
        EXPECT_EQ(TMPOpenTmpFile(pattern->tmpFile) != nullptr, name == "fill-vector");
        EXPECT_EQ(UDIIMGFromTmpFile(pattern->tmpFile), nullptr);
    }
    const CGE_OUTLINE pen =
        Decode<CGE_OUTLINE>(Encode(samples.outlines.back().second, writing), reading).value();
    EXPECT_EQ(pen.leftArrow, host::UnresolvedBlock());
    EXPECT_EQ(pen.rightArrow, host::UnresolvedBlock());
}

TEST_F(RecordBody, LoadingReplacesEverything) {
    Samples samples;
    udi::PersistentPtrRemapper remapper;
    const ColorSystem::ColorContext context;
    for (const auto& [name, fill] : samples.fills) {
        CGE_FILL target(fill);
        udi::InputArchive broken({}, remapper, context);
        EXPECT_FALSE(target.LoadFrom(broken));
        EXPECT_EQ(target.GetType(), FillNone);
        EXPECT_TRUE(target.GetGuid().IsNil());
    }
    CGE_OUTLINE pen = samples.outlines[2].second;
    const ByteVector empty = Encode(CGE_OUTLINE(), remapper);
    udi::InputArchive archive(empty, remapper, context);
    EXPECT_TRUE(pen.LoadFrom(archive));
    EXPECT_TRUE(SameFields()(pen, CGE_OUTLINE()));
}

TEST_F(RecordBody, NewerBodiesAreRead) {
    udi::PersistentPtrRemapper remapper;
    CGE_FILL fill;
    fill.SetType(FillUniform);
    fill.EditUniform().color = Cmyk(1);
    const ByteVector own = Encode(fill, remapper);
    ByteVector newer = own;
    newer[0] = 9;
    // Fields beyond the list, one of each width.
    for (std::uint8_t code = 0; code < 5; ++code) {
        newer.insert(newer.end(), {static_cast<std::uint8_t>(200 + code), code});
        newer.resize(newer.size() + (std::size_t{1} << code), 0xAA);
    }
    newer = BodyBuilder{newer}.Field(255, {1, 2, 3}).bytes;
    const auto read = Decode<CGE_FILL>(newer, remapper);
    ASSERT_TRUE(read);
    EXPECT_EQ(Encode(*read, remapper), own);
    const std::vector<host::BodyField> fields = FieldsOf<CGE_FILL>(newer);
    ASSERT_EQ(fields.size(), 8u);
    EXPECT_STREQ(fields[1].name, "colour");
    EXPECT_STREQ(fields[7].name, "unknown field");
    EXPECT_EQ(fields[7].value.back(), 3);

    BodyBuilder stops;  // a step above ours
    for (std::size_t i = 0; i < 80; ++i)
        stops.Number(static_cast<std::uint8_t>(i == 0 ? 39 : i == 1 ? 0 : 1));
    EXPECT_TRUE(IsFountainRead(BodyBuilder().Field(17, stops.bytes).bytes));

    newer[0] = newer[1] = 0;
    EXPECT_FALSE(IsRead<CGE_FILL>(newer)) << "there is no version 0";
}

TEST_F(RecordBody, WrongFieldsAreRefused) {
    const ByteVector version = {1, 0};
    const auto outline = [&](const ByteVector& fields) {
        return IsRead<CGE_OUTLINE>(BodyBuilder{version}.Append(fields).bytes);
    };
    EXPECT_TRUE(outline({2, 1, 1, 0, 3, 1, 1, 0}));
    EXPECT_FALSE(outline({3, 1, 1, 0, 2, 1, 1, 0})) << "numbers fall";
    EXPECT_FALSE(outline({2, 1, 1, 0, 2, 1, 1, 0})) << "a number comes twice";
    EXPECT_FALSE(outline({200, 0, 1, 100, 0, 1})) << "unknown numbers fall";
    EXPECT_FALSE(outline({0, 0, 1})) << "number 0";
    EXPECT_FALSE(outline({2, 2, 1, 0, 0, 0})) << "a wider value";
    EXPECT_FALSE(outline({200, 6, 1})) << "a width of no meaning";
    EXPECT_FALSE(outline({200, 5, 0xFF, 0xFF, 0xFF, 0xFF})) << "a size beyond the end";
    const auto dashes = [&](std::size_t size) {
        return outline(BodyBuilder().Field(12, ByteVector(size)).bytes);
    };
    EXPECT_TRUE(dashes(2) && dashes(42));
    EXPECT_FALSE(dashes(0) || dashes(4) || dashes(46));
    const auto wideline = [&](const ByteVector& value) {
        return outline(BodyBuilder().Field(19, BodyBuilder().Field(1, value).bytes).bytes);
    };
    EXPECT_TRUE(wideline({9, 0}));
    EXPECT_FALSE(wideline({8, 0}) || wideline({9}));

    const auto name = [](std::size_t size) {
        return IsRead<CGE_FILL>(FillBody(FillHatch, 10, BodyBuilder().Field(6, ByteVector(size, 'x')).bytes));
    };
    EXPECT_TRUE(name(62));
    EXPECT_FALSE(name(61) || name(64));
    const auto pattern = [](std::size_t size) {
        return IsRead<CGE_FILL>(FillBody(FillVector, 7, BodyBuilder().Field(1, ByteVector(size)).bytes));
    };
    EXPECT_TRUE(pattern(576));
    EXPECT_FALSE(pattern(577));
}

TEST_F(RecordBody, ListsAreBounded) {
    const auto stops = [](std::size_t step, std::size_t bytes) {
        BodyBuilder list;
        list.Number(static_cast<std::uint16_t>(step)).Append(ByteVector(bytes));
        return IsFountainRead(BodyBuilder().Field(17, list.bytes).bytes);
    };
    EXPECT_TRUE(stops(20, 20 * 65535) && stops(36, 36) && stops(36, 0));
    EXPECT_FALSE(stops(20, 20 * 65536)) << "more than a fountain has";
    EXPECT_FALSE(stops(0, 0) || stops(0, 20) || stops(19, 19) || stops(21, 21) || stops(20, 30));

    CGE_OUTLINE pen;
    CGE_DES9_WIDELINE wideline = Wideline();
    wideline.entries.resize(50000);
    pen.SetToWideline(wideline);
    CGE_FILL hatch(FillHatch);
    hatch.EditHatch().SetHatchArraySize(50000);
    udi::PersistentPtrRemapper remapper;
    ExpectSafe<CGE_OUTLINE>(Encode(pen, remapper), remapper);
    ExpectSafe<CGE_FILL>(Encode(hatch, remapper), remapper);
    // Elements without the values that every element has.
    BodyBuilder lines;
    for (int i = 0; i < 1000; ++i)
        lines.Element({});
    EXPECT_FALSE(IsRead<CGE_FILL>(FillBody(FillHatch, 10, BodyBuilder().Field(8, lines.bytes).bytes)));
}

TEST_F(RecordBody, FigurePointsBelongToStylePoints) {
    Samples samples;
    udi::PersistentPtrRemapper remapper;
    const ByteVector bytes = Encode(samples.outlines[3].second, remapper);
    // The switch of the figures, field 4 of the cyclical line: a u8 that is 1, before the list of points.
    const ByteVector on = {4, 0, 1, 5, 5};
    const auto place = std::search(bytes.begin(), bytes.end(), on.begin(), on.end());
    ASSERT_NE(place, bytes.end());
    ByteVector off = bytes;
    off[static_cast<std::size_t>(place - bytes.begin()) + 2] = 0;
    EXPECT_TRUE(IsRead<CGE_OUTLINE>(bytes));
    EXPECT_FALSE(IsRead<CGE_OUTLINE>(off));
}

TEST_F(RecordBody, WithoutMemoryNothingIsHalfDone) {
    Samples samples;
    const auto check = [](const auto& record) {
        using Record = std::remove_cvref_t<decltype(record)>;
        const ColorSystem::ColorContext context;
        MemoryFileStream stream;
        udi::PersistentPtrRemapper remapper;
        const ByteVector bytes = Encode(record, remapper);
        udi::PersistentPtrRemapper fresh;
        udi::OutputArchive archive(stream, fresh, context);
        EXPECT_GE(testing_support::FailEachAllocation([&] { record.SaveIn(archive); },
                                                      [&] { EXPECT_TRUE(archive.GetBytes().empty()); }),
                  1u);
        EXPECT_EQ(archive.GetBytes(), bytes);
        Record target(record);
        udi::InputArchive input(bytes, remapper, context);
        testing_support::FailEachAllocation([&] { EXPECT_TRUE(target.LoadFrom(input)); },
                                            [&] { EXPECT_TRUE(SameFields()(target, Record())); });
        EXPECT_TRUE(SameFields()(record, target));
    };
    for (const auto& [name, fill] : samples.fills)
        check(fill);
    for (const auto& [name, pen] : samples.outlines)
        check(pen);
}

}  // namespace
