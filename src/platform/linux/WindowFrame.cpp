#include "platform/WindowFrame.h"

namespace Stemhaven {

int extendContentsIntoTitleBar(WId /*window*/) {
    return 0;
}

} // namespace Stemhaven
