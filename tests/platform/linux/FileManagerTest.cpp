#include "platform/FileManager.h"

#include "support/FakeCommand.h"
#include "support/PrivateBus.h"
#include "support/Waiting.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <gtest/gtest.h>

#include <optional>

using Stemhaven::openProject;
using Stemhaven::revealInFileManager;

namespace {

const QString service = "org.freedesktop.FileManager1";
const QString bundle = "/music/Old & 100% \"new\" -$HOME-'x' ä.logicx";

/// Stands in for a file manager. It lives in the thread of the test, so whoever waited for it would wait in
/// vain.
class FileManager : public QDBusVirtualObject {
public:
    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        lastCall = message;
        connection.send(refuses ? message.createErrorReply(QDBusError::Failed, "no") : message.createReply());
        return true;
    }

    std::optional<QDBusMessage> lastCall;
    bool refuses = false;
};

} // namespace

TEST(FileManagerTest, OpensWithTheDesktopsProgram) {
    {
        const FakeCommand xdgOpen("xdg-open");
        EXPECT_EQ(openProject(bundle), 0);
        ASSERT_TRUE(waitUntil([&] { return xdgOpen.wasCalled(); }));
        EXPECT_EQ(xdgOpen.takeArguments(), QStringList{bundle});
    }
    {
        const FakeCommand xdgOpen("xdg-open", 3);
        int status = 0;
        EXPECT_EQ(openProject(bundle, [&](int told) { status = told; }), 0);
        EXPECT_EQ(status, 0) << "waited for the command";
        EXPECT_TRUE(waitUntil([&] { return status == 3; }));
    }
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    EXPECT_NE(openProject(bundle), 0);
    EXPECT_NE(revealInFileManager(bundle), 0);
    qputenv("PATH", path);
}

TEST(FileManagerTest, RevealsInTheFileManagerOrOpensTheFolder) {
    const FakeCommand xdgOpen("xdg-open");
    const auto isOpened = [&](const QString& folder) {
        return waitUntil([&] { return xdgOpen.wasCalled(); }) &&
            xdgOpen.takeArguments() == QStringList{folder};
    };
    EXPECT_EQ(revealInFileManager(bundle), 0);
    EXPECT_TRUE(isOpened("/music")) << "without a bus";

    const PrivateBus bus;
    ASSERT_FALSE(PrivateBus::address().isEmpty());
    EXPECT_EQ(revealInFileManager(bundle + "/Alternatives/"), 0);
    EXPECT_TRUE(isOpened(bundle)) << "without a file manager";

    FileManager fileManager;
    auto connection = QDBusConnection::connectToBus(PrivateBus::address(), "file manager");
    ASSERT_TRUE(connection.registerVirtualObject("/org/freedesktop/FileManager1", &fileManager));
    ASSERT_TRUE(connection.registerService(service));
    EXPECT_EQ(revealInFileManager(bundle + "/Alternatives/"), 0);
    ASSERT_TRUE(waitUntil([&] { return fileManager.lastCall.has_value(); }));
    EXPECT_EQ(fileManager.lastCall->interface(), service);
    EXPECT_EQ(fileManager.lastCall->member(), "ShowItems");
    const QString uri =
        "file:///music/Old%20&%20100%25%20%22new%22%20-$HOME-'x'%20%C3%A4.logicx/Alternatives";
    EXPECT_EQ(fileManager.lastCall->arguments(), (QVariantList{QStringList{uri}, QString()}));

    fileManager.refuses = true;
    EXPECT_EQ(revealInFileManager(bundle), 0);
    EXPECT_TRUE(isOpened("/music")) << "with a file manager that refuses";
    QDBusConnection::disconnectFromBus("file manager");
}
