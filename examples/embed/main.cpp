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

        WRCOutlineList pens;
        WOutlineHandle edge(7056, &blue, nullptr, 0, 0, &pens), border(762, &blue, nullptr, 0, 0, &pens);
        border.SetWidth(7056);  // likewise: the pool finds the edge's outline

        std::printf("2 shapes, %zu fill%s, %zu outline%s\n", document->GetCount(), shared ? "" : "s",
                    pens.GetCount(), pens.GetCount() == 1 ? "" : "s");
    }
    FOMShutdown();
}
