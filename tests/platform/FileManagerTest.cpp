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

const QString service = QStringLiteral("org.freedesktop.FileManager1");
const QString object = QStringLiteral("/org/freedesktop/FileManager1");
const QString bundle = QStringLiteral("/music/Old & 100% \"new\" -$HOME-'x' ä.logicx");

/// Stands in for a file manager. It lives in the thread of the test, so whoever waited for it would wait in
/// vain.
class FileManager : public QDBusVirtualObject {
public:
    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        lastCall = message;
        connection.send(
            refuses ? message.createErrorReply(QDBusError::Failed, QStringLiteral("no"))
                    : message.createReply());
        return true;
    }

    std::optional<QDBusMessage> lastCall;
    bool refuses = false;
};

} // namespace

TEST(FileManagerTest, OpensWithTheDesktopsProgram) {
    {
        const FakeCommand xdgOpen(QStringLiteral("xdg-open"));
        EXPECT_EQ(openProject(bundle), 0);
        ASSERT_TRUE(waitUntil([&] { return xdgOpen.wasCalled(); }));
        EXPECT_EQ(xdgOpen.takeArguments(), QStringList{bundle});
    }
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nowhere");
    EXPECT_NE(openProject(bundle), 0);
    EXPECT_NE(revealInFileManager(bundle), 0);
    qputenv("PATH", path);
}

TEST(FileManagerTest, RevealsInTheFileManagerOrOpensTheFolder) {
    const FakeCommand xdgOpen(QStringLiteral("xdg-open"));
    const auto folderIsOpened = [&](const QString& folder) {
        return waitUntil([&] { return xdgOpen.wasCalled(); }) &&
            xdgOpen.takeArguments() == QStringList{folder};
    };
    EXPECT_EQ(revealInFileManager(bundle), 0);
    EXPECT_TRUE(folderIsOpened(QStringLiteral("/music"))) << "without a bus";

    const PrivateBus bus;
    ASSERT_FALSE(PrivateBus::address().isEmpty());
    EXPECT_EQ(revealInFileManager(bundle + QStringLiteral("/Alternatives/")), 0);
    EXPECT_TRUE(folderIsOpened(bundle)) << "without a file manager";

    FileManager fileManager;
    const QString name = QStringLiteral("file manager");
    {
        auto connection = QDBusConnection::connectToBus(QString::fromLatin1(PrivateBus::address()), name);
        ASSERT_TRUE(connection.registerVirtualObject(object, &fileManager));
        ASSERT_TRUE(connection.registerService(service));
    }
    EXPECT_EQ(revealInFileManager(bundle + QStringLiteral("/Alternatives/")), 0);
    ASSERT_TRUE(waitUntil([&] { return fileManager.lastCall.has_value(); }));
    EXPECT_EQ(fileManager.lastCall->interface(), service);
    EXPECT_EQ(fileManager.lastCall->member(), QStringLiteral("ShowItems"));
    const QString uri = QStringLiteral(
        "file:///music/Old%20&%20100%25%20%22new%22%20-$HOME-'x'%20%C3%A4.logicx/Alternatives");
    EXPECT_EQ(fileManager.lastCall->arguments(), (QVariantList{QStringList{uri}, QString()}));

    fileManager.refuses = true;
    EXPECT_EQ(revealInFileManager(bundle), 0);
    EXPECT_TRUE(folderIsOpened(QStringLiteral("/music"))) << "with a file manager that refuses";
    QDBusConnection::disconnectFromBus(name);
}
