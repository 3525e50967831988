#include "platform/FreeMemory.h"

#include <malloc.h>

namespace Stemhaven {

void returnFreeMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace Stemhaven
