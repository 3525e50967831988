#include "support/EndWithParent.h"

// macOS has no such request.
void endWithParent() {}
