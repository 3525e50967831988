#pragma once

#include <functional>

/// Runs the tests in a child process with a private home, profile and temporary folder, all removed
/// afterwards.
///
/// The child is the same program started anew, so that even what is computed before main sees the private
/// folders. run is called in the child and gives its exit status.
int runWithPrivateProfile(int argc, char** argv, const std::function<int()>& run);
