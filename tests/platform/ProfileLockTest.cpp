#include "platform/ProfileLock.h"

#include "support/LogCapture.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

using Stemhaven::ProfileLock;

namespace {

class ProfileLockTest : public testing::Test {
protected:
    void write(const QByteArray& contents) const {
        QFile file(m_path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("lock");
};

TEST_F(ProfileLockTest, IsHeldByOneObjectAtATimeWhateverTheFileContains) {
    const QByteArray otherHost = "1\nstemhaven\nanother-host\n\n00000000-0000-0000-0000-000000000000\n";
    for (const QByteArray& contents : {QByteArray(), otherHost, QByteArray(10'000, '\xff')}) {
        write(contents);
        {
            ProfileLock first(m_path);
            ProfileLock second(m_path);
            EXPECT_TRUE(first.tryToTake()) << contents.toStdString();
            EXPECT_FALSE(second.tryToTake());
            EXPECT_TRUE(first.tryToTake());
        }
        EXPECT_TRUE(ProfileLock(m_path).tryToTake());
        EXPECT_TRUE(QFile::exists(m_path));
    }
    QFile::remove(m_path);
    EXPECT_TRUE(ProfileLock(m_path).tryToTake());
}

TEST_F(ProfileLockTest, DiesWithItsProcess) {
    const pid_t child = fork();
    if (child == 0) {
        ProfileLock lock(m_path);
        raise(lock.tryToTake() ? SIGSTOP : SIGABRT);
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, WUNTRACED), child);
    ASSERT_TRUE(WIFSTOPPED(status));
    ProfileLock lock(m_path);
    EXPECT_FALSE(lock.tryToTake());
    kill(child, SIGKILL);
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(lock.tryToTake());
}

TEST_F(ProfileLockTest, IsNotInheritedByPrograms) {
    QProcess child;
    {
        ProfileLock lock(m_path);
        ASSERT_TRUE(lock.tryToTake());
        child.start("cat");
        ASSERT_TRUE(child.waitForStarted());
    }
    EXPECT_TRUE(ProfileLock(m_path).tryToTake());
    child.closeWriteChannel();
    child.waitForFinished();
}

TEST_F(ProfileLockTest, IsDoneWithoutAndLoggedWhereThereCanBeNone) {
    ProfileLock lock(m_folder.filePath("no such folder/lock"));
    LogCapture log;
    EXPECT_TRUE(lock.tryToTake());
    EXPECT_EQ(log.count("C: Could not lock"), 1);
}

} // namespace
