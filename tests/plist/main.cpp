#include "support/PrivateProfile.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    return runWithPrivateProfile(argc, argv, [&] {
        testing::InitGoogleTest(&argc, argv);
        return RUN_ALL_TESTS();
    });
}
