#pragma once

#include "host/base/export.h"
#include "host/color/context.h"
#include "host/geometry/matrix.h"
#include "host/geometry/rect.h"
#include "host/gfx/image.h"

/// Process-wide values. Plain and unlocked: they belong to the host's main thread. Pointers are borrowed: the
/// library neither copies nor frees what they point to. All start as null, 0 or empty. The active pools are
/// in fom/fill_list.h and fom/outline_list.h.

FOM_API void SetColorContext(const ColorContext& context);
/// The context set last while it is valid, otherwise the host's active one.
FOM_API const ColorContext& GetColorContext();
FOM_API void SetObjectMatrix(MATRIX* matrix);
FOM_API MATRIX* GetObjectMatrix();
FOM_API void SetFillMatrix(MATRIX* matrix);
FOM_API MATRIX* GetFillMatrix();
FOM_API void SetBoundingBox(RECT* box);
FOM_API RECT* GetBoundingBox();
/// The image that the host's bitmap editor hands over.
FOM_API void SetPixmoorImage(RIMAGE* image);
FOM_API RIMAGE* GetPixmoorImage();
FOM_API void SetInitFillDlgCalledFlag(int value);
FOM_API int GetInitFillDlgCalledFlag();
