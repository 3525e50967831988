#include "platform/FreeMemory.h"

#include <malloc/malloc.h>

namespace Stemhaven {

void returnFreeMemory() {
    malloc_zone_pressure_relief(nullptr, 0);
}

} // namespace Stemhaven
