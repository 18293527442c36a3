#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

/// Small ICC profiles, put together byte by byte.
namespace icc_bytes {

using Bytes = std::vector<std::byte>;

inline void Byte(Bytes& out, unsigned value) {
    out.push_back(static_cast<std::byte>(value & 0xFFu));
}
inline void Short(Bytes& out, unsigned value) {
    Byte(out, value >> 8);
    Byte(out, value);
}
inline void Word(Bytes& out, unsigned value) {
    Short(out, value >> 16);
    Short(out, value);
}
inline void Name(Bytes& out, std::string_view name) {
    for (const char c : name)
        Byte(out, static_cast<unsigned char>(c));
}
inline void Fixed(Bytes& out, double value) {
    Word(out, static_cast<unsigned>(static_cast<int>(std::lround(value * 65536))));
}

inline Bytes XyzTag(const std::array<double, 3>& xyz) {
    Bytes tag;
    Name(tag, "XYZ ");
    Word(tag, 0);
    for (const double value : xyz)
        Fixed(tag, value);
    return tag;
}

inline Bytes GammaTag(double gamma) {
    Bytes tag;
    Name(tag, "curv");
    Word(tag, 0);
    Word(tag, 1);
    Short(tag, static_cast<unsigned>(std::lround(gamma * 256)));
    Short(tag, 0);
    return tag;
}

/// A table of two grid points a side; `nodes` holds them with the last input varying fastest.
inline Bytes TableTag(unsigned inputs, unsigned outputs, const std::vector<unsigned>& nodes) {
    Bytes tag;
    Name(tag, "mft1");
    Word(tag, 0);
    for (const unsigned value : {inputs, outputs, 2u, 0u})
        Byte(tag, value);
    for (unsigned i = 0; i < 9; ++i)
        Fixed(tag, i % 4 == 0 ? 1 : 0);
    for (unsigned i = 0; i < inputs * 256; ++i)
        Byte(tag, i);
    for (const unsigned node : nodes)
        Byte(tag, node);
    for (unsigned i = 0; i < outputs * 256; ++i)
        Byte(tag, i);
    return tag;
}

inline Bytes Profile(std::string_view deviceClass, std::string_view space, std::string_view pcs,
                     const std::vector<std::pair<std::string_view, Bytes>>& tags) {
    Bytes table;
    Bytes body;
    Word(table, static_cast<unsigned>(tags.size()));
    for (const auto& [name, data] : tags) {
        Name(table, name);
        Word(table, static_cast<unsigned>(132 + 12 * tags.size() + body.size()));
        Word(table, static_cast<unsigned>(data.size()));
        body.insert(body.end(), data.begin(), data.end());
        while (body.size() % 4 != 0)
            Byte(body, 0);
    }
    Bytes out;
    Word(out, static_cast<unsigned>(128 + table.size() + body.size()));
    Word(out, 0);
    Word(out, 0x02400000);
    for (const std::string_view name : {deviceClass, space, pcs})
        Name(out, name);
    for (const unsigned value : {2020u, 1u, 1u, 0u, 0u, 0u})
        Short(out, value);
    Name(out, "acsp");
    out.resize(68);
    for (const double value : {0.9642, 1.0, 0.8249})
        Fixed(out, value);
    out.resize(128);
    out.insert(out.end(), table.begin(), table.end());
    out.insert(out.end(), body.begin(), body.end());
    return out;
}

/// The primaries of sRGB with a gamma of 2.2.
inline Bytes Rgb() {
    const Bytes curve = GammaTag(2.2);
    return Profile("mntr", "RGB ", "XYZ ",
                   {{"wtpt", XyzTag({0.9642, 1, 0.8249})},
                    {"rXYZ", XyzTag({0.43607, 0.22249, 0.01392})},
                    {"gXYZ", XyzTag({0.38515, 0.71687, 0.09708})},
                    {"bXYZ", XyzTag({0.14307, 0.06061, 0.71410})},
                    {"rTRC", curve},
                    {"gTRC", curve},
                    {"bTRC", curve}});
}

inline Bytes Gray() {
    return Profile("mntr", "GRAY", "XYZ ", {{"wtpt", XyzTag({0.9642, 1, 0.8249})}, {"kTRC", GammaTag(2.2)}});
}

/// An odd press: black alone makes lightness, in proportion; cyan, magenta and yellow darken by a tenth each.
/// It reproduces every colour with black alone.
inline Bytes Cmyk() {
    std::vector<unsigned> seen;
    for (unsigned node = 0; node < 16; ++node) {
        const unsigned inks = (node >> 3 & 1u) + (node >> 2 & 1u) + (node >> 1 & 1u);
        seen.push_back((node & 1u) != 0 ? 0 : 255 - 25 * inks);
        seen.insert(seen.end(), {128, 128});
    }
    std::vector<unsigned> printed;
    for (unsigned node = 0; node < 8; ++node) {
        printed.insert(printed.end(), {0, 0, 0, (node & 4u) != 0 ? 0u : 255u});
    }
    return Profile("prtr", "CMYK", "Lab ",
                   {{"wtpt", XyzTag({0.9642, 1, 0.8249})},
                    {"A2B0", TableTag(4, 3, seen)},
                    {"B2A0", TableTag(3, 4, printed)}});
}

}  // namespace icc_bytes
