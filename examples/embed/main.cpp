#include <cstdio>

#include "fom/fom.h"

int main() {
    if (!FOMInitialize(0, 0)) return 1;
    {
        auto document = std::make_shared<WRCFillList>();
        CLR_COLORSPEC orange, blue;
        orange.MakeRGB(255, 140, 0);
        blue.MakeRGB(0, 0, 160);

        WFillHandle circle(&orange, document), square(true, document);
        square.CreateGradientFill(FountainRadial, &orange, &blue, 256);
        square.CreateSolidFill(&orange);  // copy-on-write: the pool finds the circle's fill again

        bool shared = circle.SameContentsAs(&square);
        std::printf("2 shapes, %zu fill%s\n", document->GetCount(), shared ? "" : "s");
    }
    FOMShutdown();
}
