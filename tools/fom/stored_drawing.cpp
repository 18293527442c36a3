#include "fom/stored_drawing.h"

#include <algorithm>

#include "fom/drawing_name.h"

namespace command {
namespace {

bool ReadOmissions(PayloadReader& reader, svg::Omissions& omissions) {
    std::uint16_t count = 0;
    if (!reader.Read(count)) return false;
    std::string_view last;
    for (; count != 0; --count) {
        const std::uint64_t offset = reader.Offset();
        std::uint64_t times = 0;
        std::uint8_t length = 0;
        std::string_view name;
        if (!reader.Read(times, length) || !reader.ReadText(length, name)) return false;
        if (times == 0 || !IsPlainText(name)) return reader.Fail(offset, "an omission is damaged");
        if (name <= last) return reader.Fail(offset, "omissions are out of order");
        omissions.Count(name, static_cast<std::size_t>(times));
        last = name;
    }
    return true;
}

}  // namespace

bool ReadDrawing(PayloadReader& reader, SourceDrawing& drawing) {
    const std::uint64_t offset = reader.Offset();
    std::span<const std::uint8_t> digest;
    std::uint32_t shapes = 0;
    std::uint16_t length = 0;
    std::string_view name;
    if (!reader.Read(drawing.bytes) || !reader.ReadBytes(drawing.digest.size(), digest) ||
        !reader.Read(shapes, length) || !reader.ReadText(length, name))
        return false;
    if (!IsDrawingName(name)) return reader.Fail(offset, "a drawing has no valid name");
    std::copy(digest.begin(), digest.end(), drawing.digest.begin());
    drawing.name = name;
    drawing.shapes = shapes;
    return ReadOmissions(reader, drawing.omissions);
}

}  // namespace command
