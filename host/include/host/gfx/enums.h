#pragma once

#include <cstdint>

/// The kind of a fill. 3, 4 and 5 are not used.
enum CgeFillType : std::uint16_t {
    FillNone = 0,
    FillUniform = 1,
    FillFountain = 2,
    FillPostScript = 6,
    FillMonoBitmap = 7,
    FillMonoBitmapAlt = 8,
    FillColorBitmap = 9,
    FillVector = 10,
    FillTexture = 11,
    FillHatch = 12,
};

enum ClrFountainFillType : std::uint16_t {
    FountainNone = 0,
    FountainLinear = 1,
    FountainRadial = 2,
    FountainConical = 3,
    FountainSquare = 4,
};

enum ClrBlendRateMethod : std::uint16_t { BlendRateDefault = 0, BlendRateCustom = 1 };
enum CgeFountainFillSpreadMethod : std::uint16_t { SpreadPad = 0, SpreadReflect = 1, SpreadRepeat = 2 };
/// The way that older documents named how a fountain runs through its colours.
enum CgeFountainFillBlendMode : std::uint16_t {
    BlendDirect = 0,
    BlendClockwise = 1,
    BlendCounterClockwise = 2,
    BlendCustom = 3,
};
/// What a fountain's matrix is measured in.
enum CgeFountainFillUnits : std::uint32_t { FountainObjectBounds = 0, FountainWorldCoordinates = 1 };

enum OVERPRINT_FLAG : int { OVERPRINT_NONE = 0, OVERPRINT_ON = 1, OVERPRINT_OFF = 2 };
enum MONOCHROME_INDEX : int { MONOCHROME_FOREGROUND = 0, MONOCHROME_BACKGROUND = 1 };
