// Record bodies into a stream and back, against a cursor: plain structures that hold the same values, whose
// fields are copied one after the other into a buffer that is reserved once for the body, and back. The
// cursor knows beforehand which fields there are and how large they are; its bytes are ours. Both write into
// a new memory stream, and both take the body out of a stream before they parse it, as documents do.

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "host/gfx/fill.h"
#include "host/gfx/outline.h"
#include "host/stream/archive.h"

#include "cursor.h"
#include "ratio.h"

namespace {

using bench::Reader;
using bench::Writer;

struct Color {
    std::uint16_t word[8] = {0, 0, 100};
};
struct Stop {
    std::uint16_t transparency = 0, position = 0;
    Color color;
};
struct Screen {
    std::uint16_t id = 0, reserved = 0;
    std::uint32_t overprint = 0, angle = 45000000, frequency = 60;
};

struct Uniform {
    std::uint16_t kind = 0;
    Color color;
    Screen screen;

    std::uint8_t* Write(std::uint8_t* at) const {
        Writer to(at);
        to.Put(std::uint16_t{1});
        to.Field(1, 1, kind);
        std::uint8_t* const begin = to.Begin(3);
        to.Field(1, 4, color);
        to.Field(2, 4, screen);
        to.End(begin);
        return to.At();
    }
    bool Read(std::span<const std::uint8_t> body) {
        Reader from(body);
        std::uint16_t version = 0;
        return from.Get(version) && from.Field(kind) && from.Begin() && from.Field(color) &&
               from.Field(screen);
    }
};

struct Fountain {
    std::uint16_t kind = 0, type = 1;
    std::int16_t steps = 0, padding = 0;
    std::int32_t angle = 0;
    double matrix[6] = {1, 0, 0, 1, 0, 0};
    std::vector<Stop> stops;

    std::uint8_t* Write(std::uint8_t* at) const {
        Writer to(at);
        to.Put(std::uint16_t{1});
        to.Field(1, 1, kind);
        std::uint8_t* const begin = to.Begin(4);
        to.Field(1, 1, type);
        to.Field(5, 1, steps);
        to.Field(6, 1, padding);
        to.Field(9, 2, angle);
        std::uint8_t* const inner = to.Begin(14);
        to.Put(matrix);
        to.End(inner);
        std::uint8_t* const list = to.Begin(17);
        to.Put(static_cast<std::uint16_t>(sizeof(Stop)));
        for (const Stop& stop : stops)
            to.Put(stop);
        to.End(list);
        to.End(begin);
        return to.At();
    }
    bool Read(std::span<const std::uint8_t> body) {
        Reader from(body);
        std::uint16_t version = 0, step = 0;
        std::uint32_t size = 0;
        if (!(from.Get(version) && from.Field(kind) && from.Begin() && from.Field(type) &&
              from.Field(steps) && from.Field(padding) && from.Field(angle) && from.Begin() &&
              from.Get(matrix) && from.Field(size) && from.Get(step)))
            return false;
        stops.resize((size - sizeof step) / step);
        for (Stop& stop : stops)
            if (!from.Get(stop)) return false;
        return true;
    }
};

struct Outline {
    std::uint16_t type = 1, caps = 0, join = 0;
    std::int32_t width = 0, miter = 0;
    Color color;

    std::uint8_t* Write(std::uint8_t* at) const {
        Writer to(at);
        to.Put(std::uint16_t{1});
        to.Field(1, 1, type);
        to.Field(2, 1, caps);
        to.Field(3, 1, join);
        to.Field(5, 2, width);
        to.Field(9, 4, color);
        to.Field(17, 2, miter);
        return to.At();
    }
    bool Read(std::span<const std::uint8_t> body) {
        Reader from(body);
        std::uint16_t version = 0;
        return from.Get(version) && from.Field(type) && from.Field(caps) && from.Field(join) &&
               from.Field(width) && from.Field(color) && from.Field(miter);
    }
};

void Fill(CGE_FILL& fill, Uniform) {
    fill.SetType(FillUniform);
    fill.EditUniform().color.MakeCMYK(10, 20, 30, 40);
    fill.EditUniform().screen.frequency = 133;
}

void Fill(CGE_FILL& fill, Fountain) {
    fill.SetType(FillFountain);
    CGE_FOUNTAINFILL& fountain = fill.EditFountain();
    fountain.SetFountainType(FountainRadial);
    fountain.SetNumSteps(64);
    fountain.SetPadding(10);
    fountain.SetAngle(30000000);
    fountain.SetMatrix({0.5, 0, 0, 0.5, 0.5, 0.5});
    fountain.SetNumColors(5);
    for (int i = 0; i < 5; ++i) {
        CLR_FOUNTCOLOR stop;
        stop.position = static_cast<std::uint16_t>(25 * i);
        stop.color.MakeRGB(50 * i, 255, 0);
        fountain.SetColor(static_cast<unsigned>(i), stop);
    }
}

void Fill(CGE_OUTLINE& pen, Outline) {
    pen.type = OutlineSolid;
    pen.endCaps = pen.join = 1;
    pen.width = 2000;
    pen.color.MakeCMYKBlack();
    pen.SetMiterLimit(5000000);
}

/// A record, its body, and the same values for the rival.
template <class Record, class Plain>
struct Subject {
    Subject() {
        Fill(record, Plain());
        udi::OutputArchive out(stream, remapper, context);
        record.SaveIn(out);
        body = out.GetBytes();
        std::vector<std::uint8_t> bytes(body.size());
        if (!plain.Read(body) || plain.Write(bytes.data()) != bytes.data() + bytes.size() || bytes != body) {
            std::fprintf(stderr, "the cursor writes other bytes\n");
            std::abort();
        }
    }

    /// A body taken out of the stream, which begins anew.
    std::vector<std::uint8_t> Take() {
        stream.Rewind();
        std::vector<std::uint8_t> bytes(body.size());
        stream.Read(bytes.data(), bytes.size());
        return bytes;
    }

    MemoryFileStream stream;
    udi::PersistentPtrRemapper remapper;
    ColorSystem::ColorContext context;
    Record record;
    Plain plain;
    std::vector<std::uint8_t> body;
};

template <class Record, class Plain>
void Write(benchmark::State& state) {
    Subject<Record, Plain> subject;
    for (auto _ : state) {
        MemoryFileStream stream;
        {
            udi::OutputArchive out(stream, subject.remapper, subject.context);
            subject.record.SaveIn(out);
        }
        benchmark::DoNotOptimize(stream.GetBytes().data());
        benchmark::ClobberMemory();
    }
}

template <class Record, class Plain>
void WriteCursor(benchmark::State& state) {
    Subject<Record, Plain> subject;
    for (auto _ : state) {
        MemoryFileStream stream;
        {
            std::vector<std::uint8_t> bytes(subject.body.size());
            subject.plain.Write(bytes.data());
            stream.Write(bytes.data(), bytes.size());
        }
        benchmark::DoNotOptimize(stream.GetBytes().data());
        benchmark::ClobberMemory();
    }
}

template <class Record, class Plain>
void Parse(benchmark::State& state) {
    Subject<Record, Plain> subject;
    Record record;  // every load begins with the default
    for (auto _ : state) {
        const std::vector<std::uint8_t> body = subject.Take();
        udi::InputArchive in(body, subject.remapper, subject.context);
        if (!record.LoadFrom(in)) return state.SkipWithError("the body cannot be read");
        benchmark::DoNotOptimize(&record);
        benchmark::ClobberMemory();
    }
}

template <class Record, class Plain>
void ParseCursor(benchmark::State& state) {
    Subject<Record, Plain> subject;
    for (auto _ : state) {
        Plain plain;
        const std::vector<std::uint8_t> body = subject.Take();
        if (!plain.Read(body)) return state.SkipWithError("the body cannot be read");
        benchmark::DoNotOptimize(&plain);
        benchmark::ClobberMemory();
    }
}

std::vector<bench::Row> Rows() {
    std::vector<bench::Row> rows;
    for (const auto& [label, subject] : {std::pair("uniform fill", "<CGE_FILL, Uniform>"),
                                         std::pair("fountain, 5 stops", "<CGE_FILL, Fountain>"),
                                         std::pair("plain outline", "<CGE_OUTLINE, Outline>")})
        for (const auto& [work, reach] : {std::pair("Write", 3.2), std::pair("Parse", 2.5)})
            rows.push_back({std::string(label) + ", " + work + ", cursor", std::string(work) + subject,
                            std::string(work) + "Cursor" + subject, reach});
    return rows;
}

}  // namespace

BENCHMARK_TEMPLATE(Write, CGE_FILL, Uniform);
BENCHMARK_TEMPLATE(WriteCursor, CGE_FILL, Uniform);
BENCHMARK_TEMPLATE(Parse, CGE_FILL, Uniform);
BENCHMARK_TEMPLATE(ParseCursor, CGE_FILL, Uniform);
BENCHMARK_TEMPLATE(Write, CGE_FILL, Fountain);
BENCHMARK_TEMPLATE(WriteCursor, CGE_FILL, Fountain);
BENCHMARK_TEMPLATE(Parse, CGE_FILL, Fountain);
BENCHMARK_TEMPLATE(ParseCursor, CGE_FILL, Fountain);
BENCHMARK_TEMPLATE(Write, CGE_OUTLINE, Outline);
BENCHMARK_TEMPLATE(WriteCursor, CGE_OUTLINE, Outline);
BENCHMARK_TEMPLATE(Parse, CGE_OUTLINE, Outline);
BENCHMARK_TEMPLATE(ParseCursor, CGE_OUTLINE, Outline);

int main(int argc, char** argv) {
    return bench::RunAndCompare(argc, argv, Rows());
}
