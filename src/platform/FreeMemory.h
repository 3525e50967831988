#pragma once

namespace Stemhaven {

/// Gives the memory that has been freed back to the system. The allocator keeps it otherwise, for each thread
/// apart, so that what several threads take one after the other adds up. Takes milliseconds. Any thread.
void returnFreeMemory();

} // namespace Stemhaven
