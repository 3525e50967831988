#include "support/EndWithParent.h"

#include <sys/prctl.h>

#include <csignal>

void endWithParent() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}
