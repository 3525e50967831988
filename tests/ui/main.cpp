#include "support/PrivateProfile.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    return runWithPrivateProfile(argc, argv, [&] {
        testing::InitGoogleTest(&argc, argv);
        // What the developer's desktop looks like is no matter of these tests.
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qunsetenv("XDG_RUNTIME_DIR");
        const QApplication application(argc, argv);
        return RUN_ALL_TESTS();
    });
}
