#pragma once

#include "fom/fill_painter.h"

namespace command {

// One for each kind; see PaintFill.
void PaintFountain(CairoContext& target, const CGE_FOUNTAINFILL& fountain, const ObjectBounds& object);
void PaintMonoBitmap(CairoContext& target, const CGE_MONOBMPFILL& mono, const ObjectBounds& object);
void PaintColorBitmap(CairoContext& target, const CGE_COLORBMPFILL& bitmap, const ObjectBounds& object);
void PaintTexture(CairoContext& target, const CGE_TEXTUREFILL& texture, const ObjectBounds& object);
std::string_view PaintVector(CairoContext& target, const CGE_VECTORFILL& vector, const ObjectBounds& object);
void PaintHatch(CairoContext& target, const CGE_HATCHFILL& hatch, const ObjectBounds& object);

}  // namespace command
