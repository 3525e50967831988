#pragma once

/// Has the system end this process when its parent dies, where the system can do that: a test runner that
/// kills a test kills only the process that it started.
void endWithParent();
