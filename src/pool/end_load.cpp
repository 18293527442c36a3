#include "fom/fill_list.h"
#include "fom/outline_list.h"
#include "fom/serialization.h"

void FOMGREndLoad(AbstractFileStream& stream) {
    WRCFillList::EndLoad(stream);
    WRCOutlineList::EndLoad(stream);
}
