#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

/// Runs the current test once more where an ordinary user may mount. Its status; 0 where the system allows
/// that to nobody.
inline int runWhereMountingIsPermitted() {
    const std::string inOwnNamespace = "unshare --user --map-root-user --mount ";
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    const auto command = "! " + inOwnNamespace + "mount -t tmpfs none . 2>/dev/null || " + inOwnNamespace +
        std::filesystem::read_symlink("/proc/self/exe").string() +
        " --gtest_filter=" + test->test_suite_name() + '.' + test->name();
    return std::system(command.c_str()); // NOLINT(cert-env33-c,concurrency-mt-unsafe)
}
