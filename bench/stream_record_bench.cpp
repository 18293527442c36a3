// Whole stream records, against a cursor: straight code for the one kind of record, which knows which fields
// there are and how large the record is. Both begin with the same record and end with the same bytes, or the
// other way round: head and body of the current section, its fields with numbers, width codes and sizes, the
// 12.50 section with its record, and the end. The cursor copies the fields one after the other into a buffer
// that is reserved once, of the right size, and writes that to the stream in one; reading, it takes all bytes
// out of the stream at once and copies the fields out of them, the end checked before each, past the 12.50
// section. Records are emptied before they are read on both sides; streams are new memory streams, or
// rewound.

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "host/stream/file_stream.h"

#include "fom/serialization.h"

#include "cursor.h"
#include "ratio.h"

namespace {

using bench::Reader;
using bench::Writer;

/// A colour as 12.x has it.
void PutOldColor(Writer& to, const CLR_COLORSPEC& color) {
    to.Put(color.GetModel());
    to.Put(color.GetPaletteType());
    for (unsigned i = 0; i < 4; ++i)
        to.Put(color.GetComponent(i));
}

/// A colour without its identity block, which is zeros.
struct ShortColor {
    std::uint16_t model, palette, density, reserved, component[4];

    static ShortColor Of(const CLR_COLORSPEC& color) {
        ShortColor part;
        std::memcpy(&part, &color, sizeof part);
        return part;
    }
    CLR_COLORSPEC Whole() const {
        CLR_COLORSPEC color;
        std::memcpy(static_cast<void*>(&color), this, sizeof *this);
        return color;
    }
};

struct ShortStop {
    std::uint16_t transparency, position;
    ShortColor color;
};

/// Where the payload of a section begins, and its two sizes.
class Section {
public:
    Section(Writer& to, std::uint32_t tag, std::uint32_t kind) : m_to(to) {
        to.Put(tag);
        m_sizes = to.At();
        to.Put(std::uint32_t{0});
        to.Put(kind);
        to.Put(std::uint32_t{0});
    }
    ~Section() {
        const auto size = static_cast<std::uint32_t>(m_to.At() - m_sizes - 12), all = size + 8;
        std::memcpy(m_sizes, &all, sizeof all);
        std::memcpy(m_sizes + 8, &size, sizeof size);
    }

private:
    Writer& m_to;
    std::uint8_t* m_sizes;
};

/// The head of the current section and the body's version.
bool EnterBody(Reader& from) {
    std::uint32_t tag = 0, size = 0, kind = 0, length = 0;
    std::uint16_t version = 0;
    return from.Get(tag) && from.Get(size) && from.Get(kind) && from.Get(length) && from.Get(version);
}

/// The 12.50 section and the end.
bool LeaveBody(Reader& from) {
    std::uint32_t tag = 0, size = 0;
    return from.Get(tag) && from.Get(size) && from.Skip(size) && from.Get(tag) && from.Get(size) && tag == 0;
}

void PutEnd(Writer& to) {
    to.Put(std::uint64_t{0});
}

VyrUtils::Guid SampleGuid() {
    std::array<std::uint8_t, 16> bytes;
    bytes.fill(0x5A);
    return VyrUtils::Guid(bytes);
}

struct FillRecord {
    using Record = CGE_FILL;
    static void WriteOurs(AbstractFileStream& stream, CGE_FILL& fill, udi::PtrRemapper& remapper) {
        FOMFillSerialization::WriteTo(stream, fill, remapper);
    }
    static void ReadOurs(AbstractFileStream& stream, CGE_FILL& fill, udi::PtrRemapper& remapper) {
        CGE_FILL* record = &fill;
        FOMFillSerialization::ReadFrom(stream, record, remapper);
    }
    static void Empty(CGE_FILL& fill) {
        fill.FreeMemoryAndClear();
        fill.Clear();
    }
};

struct UniformFill : FillRecord {
    static void Make(CGE_FILL& fill) {
        fill.SetType(FillUniform);
        fill.SetGuid(SampleGuid());
        fill.EditUniform().color.MakeCMYK(10, 20, 30, 40);
        fill.EditUniform().screen.frequency = 133;
    }
    static std::uint8_t* Write(std::uint8_t* at, const CGE_FILL& fill) {
        Writer to(at);
        const CGE_UNIFORMFILL& uniform = fill.Uniform();
        {
            const Section section(to, 2, fill.GetType());
            to.Put(std::uint16_t{1});
            to.Field(1, 1, fill.GetType());
            to.Field(2, 4, fill.GetGuid());
            std::uint8_t* const begin = to.Begin(3);
            to.Field(1, 4, ShortColor::Of(uniform.color));
            to.Field(2, 4, uniform.screen);
            to.End(begin);
        }
        {
            const Section section(to, 1, fill.GetType());
            to.Put(std::uint64_t{fill.GetType()});
            PutOldColor(to, uniform.color);
            to.Put(uniform.screen);
        }
        PutEnd(to);
        return to.At();
    }
    static bool Read(std::span<const std::uint8_t> bytes, CGE_FILL& fill) {
        Reader from(bytes);
        CgeFillType kind{};
        VyrUtils::Guid guid;
        ShortColor color{};
        if (!(EnterBody(from) && from.Field(kind) && from.Field(guid) && from.Begin() && from.Field(color) &&
              from.Field(fill.EditUniform().screen) && LeaveBody(from)))
            return false;
        fill.SetType(kind);
        fill.SetGuid(guid);
        fill.EditUniform().color = color.Whole();
        return true;
    }
};

struct FountainFill : FillRecord {
    static void Make(CGE_FILL& fill) {
        fill.SetType(FillFountain);
        fill.SetGuid(SampleGuid());
        CGE_FOUNTAINFILL& fountain = fill.EditFountain();
        fountain.SetFountainType(FountainRadial);
        fountain.SetNumSteps(64);
        fountain.SetPadding(10);
        fountain.SetAngle(30000000);
        fountain.SetMatrix({0.5, 0, 0, 0.5, 0.5, 0.5});
        fountain.SetNumColors(3);
        for (unsigned i = 0; i < 3; ++i) {
            CLR_FOUNTCOLOR stop;
            stop.position = static_cast<std::uint16_t>(50 * i);
            stop.color.MakeRGB(static_cast<int>(50 * i), 255, 0);
            fountain.SetColor(i, stop);
        }
    }
    static std::uint8_t* Write(std::uint8_t* at, const CGE_FILL& fill) {
        Writer to(at);
        const CGE_FOUNTAINFILL& fountain = fill.Fountain();
        {
            const Section section(to, 2, fill.GetType());
            to.Put(std::uint16_t{1});
            to.Field(1, 1, fill.GetType());
            to.Field(2, 4, fill.GetGuid());
            std::uint8_t* const begin = to.Begin(4);
            to.Field(1, 1, fountain.GetFountainType());
            to.Field(5, 1, fountain.GetNumSteps());
            to.Field(6, 1, fountain.GetPadding());
            to.Field(9, 2, fountain.GetAngle());
            std::uint8_t* const matrix = to.Begin(14);
            to.Put(fountain.GetMatrix());
            to.End(matrix);
            std::uint8_t* const list = to.Begin(17);
            to.Put(static_cast<std::uint16_t>(sizeof(ShortStop)));
            for (const CLR_FOUNTCOLOR& stop : fountain.GetColors())
                to.Put(ShortStop{stop.transparency, stop.position, ShortColor::Of(stop.color)});
            to.End(list);
            to.End(begin);
        }
        {
            const Section section(to, 1, fill.GetType());
            WriteOld(to, fountain);
        }
        PutEnd(to);
        return to.At();
    }
    static void WriteOld(Writer& to, const CGE_FOUNTAINFILL& fountain) {
        to.Put(std::uint64_t{FillFountain});
        to.Put(std::uint32_t{fountain.GetFountainType()});
        to.Put(fountain.GetScreen());
        to.Put(std::int32_t{fountain.GetPadding()});
        to.Put(fountain.GetAngle());
        to.Put(fountain.GetCenterOffsetX());
        to.Put(fountain.GetCenterOffsetY());
        to.Put(fountain.GetNumSteps());
        to.Put(fountain.GetLegacyBlendMode());
        to.Put(fountain.GetBlendRateMethod());
        to.Put(fountain.GetBlendRateValue());
        to.Put(std::uint32_t{fountain.GetNumColors()});
        for (const CLR_FOUNTCOLOR& stop : fountain.GetColors()) {
            PutOldColor(to, stop.color);
            to.Put(std::uint32_t{stop.position});
        }
    }
    static bool Read(std::span<const std::uint8_t> bytes, CGE_FILL& fill) {
        Reader from(bytes);
        CgeFillType kind{};
        VyrUtils::Guid guid;
        ClrFountainFillType type{};
        std::int16_t steps = 0, padding = 0;
        std::int32_t angle = 0;
        MATRIX matrix;
        std::uint32_t size = 0;
        std::uint16_t step = 0;
        if (!(EnterBody(from) && from.Field(kind) && from.Field(guid) && from.Begin() && from.Field(type) &&
              from.Field(steps) && from.Field(padding) && from.Field(angle) && from.Begin() &&
              from.Get(matrix) && from.Field(size) && from.Get(step)))
            return false;
        CLR_FOUNTCOLOR_ARRAY stops((size - sizeof step) / step);
        for (CLR_FOUNTCOLOR& stop : stops) {
            ShortStop part;
            if (!from.Get(part)) return false;
            stop = {part.transparency, part.position, part.color.Whole()};
        }
        fill.SetType(kind);
        fill.SetGuid(guid);
        CGE_FOUNTAINFILL& fountain = fill.EditFountain();
        fountain.SetFountainType(type);
        fountain.SetNumSteps(steps);
        fountain.SetPadding(padding);
        fountain.SetAngle(angle);
        fountain.SetMatrix(matrix);
        fountain.SetColors(std::move(stops));
        return LeaveBody(from);
    }
};

struct PlainOutline {
    using Record = CGE_OUTLINE;
    static void WriteOurs(AbstractFileStream& stream, CGE_OUTLINE& pen, udi::PtrRemapper& remapper) {
        FOMOutlineSerialization::WriteTo(stream, pen, remapper);
    }
    static void ReadOurs(AbstractFileStream& stream, CGE_OUTLINE& pen, udi::PtrRemapper& remapper) {
        FOMOutlineSerialization::ReadFrom(stream, pen, remapper);
    }
    static void Empty(CGE_OUTLINE& pen) { pen.SetToNoOutline(); }
    static void Make(CGE_OUTLINE& pen) {
        pen.type = OutlineSolid;
        pen.endCaps = pen.join = 1;
        pen.width = 2000;
        pen.color.MakeCMYKBlack();
        pen.guid = SampleGuid();
        pen.SetMiterLimit(5000000);
    }
    static std::uint8_t* Write(std::uint8_t* at, const CGE_OUTLINE& pen) {
        Writer to(at + 4);
        to.Put(std::uint16_t{1});
        to.Field(1, 1, pen.type);
        to.Field(2, 1, pen.endCaps);
        to.Field(3, 1, pen.join);
        to.Field(5, 2, pen.width);
        to.Field(9, 4, ShortColor::Of(pen.color));
        to.Field(16, 4, pen.guid);
        to.Field(17, 2, pen.GetMiterLimit());
        to.End(at + 4);
        return to.At();
    }
    static bool Read(std::span<const std::uint8_t> bytes, CGE_OUTLINE& pen) {
        Reader from(bytes);
        std::uint32_t size = 0;
        std::uint16_t version = 0;
        std::int32_t miter = 0;
        ShortColor color{};
        if (!(from.Get(size) && from.Get(version) && from.Field(pen.type) && from.Field(pen.endCaps) &&
              from.Field(pen.join) && from.Field(pen.width) && from.Field(color) && from.Field(pen.guid) &&
              from.Field(miter)))
            return false;
        pen.color = color.Whole();
        pen.SetMiterLimit(miter);
        return true;
    }
};

/// A record and its bytes, which the cursor must write and understand.
template <class Kind>
struct Subject {
    Subject() {
        Kind::Make(record);
        Kind::WriteOurs(stream, record, remapper);
        const auto stored = stream.GetBytes();
        size = stored.size();
        std::vector<std::uint8_t> bytes(size + 64);
        const std::uint8_t* end = Kind::Write(bytes.data(), record);
        typename Kind::Record read;
        bool same = end == bytes.data() + size && std::memcmp(bytes.data(), stored.data(), size) == 0;
        same = same && Kind::Read({bytes.data(), size}, read);
        MemoryFileStream again;
        Kind::WriteOurs(again, read, remapper);
        if (same && std::ranges::equal(again.GetBytes(), stored)) return;
        std::fprintf(stderr, "the cursor has another form\n");
        std::abort();
    }

    udi::PersistentPtrRemapper remapper;
    MemoryFileStream stream;
    typename Kind::Record record;
    std::size_t size = 0;
};

template <class Kind>
void Write(benchmark::State& state) {
    Subject<Kind> subject;
    for (auto _ : state) {
        MemoryFileStream stream;
        Kind::WriteOurs(stream, subject.record, subject.remapper);
        benchmark::DoNotOptimize(stream.GetBytes().data());
        benchmark::ClobberMemory();
    }
}

template <class Kind>
void WriteCursor(benchmark::State& state) {
    Subject<Kind> subject;
    for (auto _ : state) {
        MemoryFileStream stream;
        {
            std::vector<std::uint8_t> bytes(subject.size);
            Kind::Write(bytes.data(), subject.record);
            stream.Write(bytes.data(), bytes.size());
        }
        benchmark::DoNotOptimize(stream.GetBytes().data());
        benchmark::ClobberMemory();
    }
}

template <class Kind>
void Parse(benchmark::State& state) {
    Subject<Kind> subject;
    typename Kind::Record record;
    for (auto _ : state) {
        subject.stream.Rewind();
        Kind::ReadOurs(subject.stream, record, subject.remapper);
        if (!subject.stream.IsGood()) return state.SkipWithError("the record cannot be read");
        benchmark::DoNotOptimize(&record);
        benchmark::ClobberMemory();
    }
}

template <class Kind>
void ParseCursor(benchmark::State& state) {
    Subject<Kind> subject;
    typename Kind::Record record;
    for (auto _ : state) {
        subject.stream.Rewind();
        std::vector<std::uint8_t> bytes(subject.size);
        subject.stream.Read(bytes.data(), bytes.size());
        Kind::Empty(record);
        if (!Kind::Read(bytes, record)) return state.SkipWithError("the record cannot be read");
        benchmark::DoNotOptimize(&record);
        benchmark::ClobberMemory();
    }
}

std::vector<bench::Row> Rows() {
    std::vector<bench::Row> rows;
    for (const auto& [label, kind] :
         {std::pair("uniform fill", "<UniformFill>"), std::pair("fountain, 3 stops", "<FountainFill>"),
          std::pair("plain outline", "<PlainOutline>")})
        for (const auto& [work, reach] : {std::pair("Write", 3.2), std::pair("Parse", 2.5)})
            rows.push_back({std::string(label) + ", record, " + work + ", cursor", std::string(work) + kind,
                            std::string(work) + "Cursor" + kind, reach});
    return rows;
}

}  // namespace

BENCHMARK_TEMPLATE(Write, UniformFill);
BENCHMARK_TEMPLATE(WriteCursor, UniformFill);
BENCHMARK_TEMPLATE(Parse, UniformFill);
BENCHMARK_TEMPLATE(ParseCursor, UniformFill);
BENCHMARK_TEMPLATE(Write, FountainFill);
BENCHMARK_TEMPLATE(WriteCursor, FountainFill);
BENCHMARK_TEMPLATE(Parse, FountainFill);
BENCHMARK_TEMPLATE(ParseCursor, FountainFill);
BENCHMARK_TEMPLATE(Write, PlainOutline);
BENCHMARK_TEMPLATE(WriteCursor, PlainOutline);
BENCHMARK_TEMPLATE(Parse, PlainOutline);
BENCHMARK_TEMPLATE(ParseCursor, PlainOutline);

int main(int argc, char** argv) {
    return bench::RunAndCompare(argc, argv, Rows());
}
