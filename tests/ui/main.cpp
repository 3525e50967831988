#include "app/logging/Log.h"
#include "support/PrivateProfile.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

/// The screen of a small notebook, and beside it the same one at a scale of 2.
void useScreens() {
    QFile file(QDir::tempPath() + "/screens.json");
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.write(R"({"screens": [{"name": "notebook", "x": 0, "y": 0, "width": 1366, "height": 768,
                                "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1},
                               {"name": "enlarged", "x": 1366, "y": 0, "width": 683, "height": 384,
                                "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 2}]})");
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(file.fileName()));
}

} // namespace

int main(int argc, char** argv) {
    return runWithPrivateProfile(argc, argv, [&] {
        testing::InitGoogleTest(&argc, argv);
        // What the developer's desktop looks like is no matter of these tests.
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
        qunsetenv("XDG_RUNTIME_DIR");
        useScreens();
        // Its first use would take the place of a test's own handler.
        Logging::Log::instance();
        const QApplication application(argc, argv);
        return RUN_ALL_TESTS();
    });
}
