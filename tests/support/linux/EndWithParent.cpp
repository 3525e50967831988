#include "support/EndWithParent.h"

#include <csignal>
#include <sys/prctl.h>

void endWithParent() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}
