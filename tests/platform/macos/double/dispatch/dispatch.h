#pragma once

// What the program uses of the macOS header of this name. MacosDouble.cpp stands behind it.

#include <cstdint>

using dispatch_queue_t = struct DispatchQueueDouble*;

#define DISPATCH_QUEUE_PRIORITY_DEFAULT 0

dispatch_queue_t dispatch_get_global_queue(std::intptr_t identifier, std::uintptr_t flags);
