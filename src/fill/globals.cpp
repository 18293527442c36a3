#include "fom/globals.h"

namespace {

struct Globals {
    ColorContext colorContext;
    MATRIX* objectMatrix = nullptr;
    MATRIX* fillMatrix = nullptr;
    RECT* boundingBox = nullptr;
    RIMAGE* bitmapEditorImage = nullptr;
    int fillDialogCalled = 0;
};

/// Never destroyed: what is destroyed at exit may still ask.
Globals& TheGlobals() {
    static Globals& globals = *new Globals;
    return globals;
}

}  // namespace

void SetColorContext(const ColorContext& context) {
    TheGlobals().colorContext = context;
}

const ColorContext& GetColorContext() {
    const ColorContext& own = TheGlobals().colorContext;
    return own.IsValid() ? own : ColorContext::GetActiveColorContext();
}

void SetObjectMatrix(MATRIX* matrix) {
    TheGlobals().objectMatrix = matrix;
}

MATRIX* GetObjectMatrix() {
    return TheGlobals().objectMatrix;
}

void SetFillMatrix(MATRIX* matrix) {
    TheGlobals().fillMatrix = matrix;
}

MATRIX* GetFillMatrix() {
    return TheGlobals().fillMatrix;
}

void SetBoundingBox(RECT* box) {
    TheGlobals().boundingBox = box;
}

RECT* GetBoundingBox() {
    return TheGlobals().boundingBox;
}

void SetPixmoorImage(RIMAGE* image) {
    TheGlobals().bitmapEditorImage = image;
}

RIMAGE* GetPixmoorImage() {
    return TheGlobals().bitmapEditorImage;
}

void SetInitFillDlgCalledFlag(int value) {
    TheGlobals().fillDialogCalled = value;
}

int GetInitFillDlgCalledFlag() {
    return TheGlobals().fillDialogCalled;
}
