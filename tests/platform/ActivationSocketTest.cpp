#include "platform/ActivationSocket.h"

#include "support/LogCapture.h"
#include "support/Waiting.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

using Stemhaven::ActivationSocket;
using namespace std::chrono_literals;

namespace {

class ActivationSocketTest : public testing::Test {
protected:
    /// Asks from another thread, as another process does, while the event loop of this one runs.
    bool request(const QByteArray& token = {}) const {
        std::atomic<bool> hasEnded = false;
        bool wasAnswered = false;
        std::thread asking([&] {
            wasAnswered = ActivationSocket::request(m_path, token, 30s);
            hasEnded = true;
        });
        EXPECT_TRUE(waitUntil([&] { return hasEnded.load(); }));
        asking.join();
        return wasAnswered;
    }

    /// What arrives at the socket is appended to the tokens.
    std::unique_ptr<ActivationSocket> listen() {
        auto socket = std::make_unique<ActivationSocket>(m_path);
        QObject::connect(
            socket.get(), &ActivationSocket::activationRequested,
            [this](const QByteArray& token) { m_tokens.push_back(token); });
        return socket;
    }

    QTemporaryDir m_folder;
    QString m_path = m_folder.filePath("socket");
    std::vector<QByteArray> m_tokens;
};

TEST_F(ActivationSocketTest, AnswersEachRequestThatHasATokenOfAnyUsualLength) {
    const auto socket = listen();
    const std::vector<QByteArray> tokens = {"", "some-token_TIME123", QByteArray(4'000, 't')};
    for (const auto& token : tokens)
        EXPECT_TRUE(request(token)) << token.size();
    EXPECT_EQ(m_tokens, tokens);
    EXPECT_FALSE(request(QByteArray(100'000, 't')));
    EXPECT_EQ(m_tokens, tokens);

    struct stat status = {};
    ASSERT_EQ(stat(QFile::encodeName(m_path).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U) << "for its user alone";
}

TEST_F(ActivationSocketTest, TakesThePlaceOfWhatACrashHasLeft) {
    // A socket that nobody listens at any more stays on the disk under a second name.
    const QString kept = m_folder.filePath("kept");
    {
        const auto crashed = listen();
        ASSERT_EQ(link(QFile::encodeName(m_path).constData(), QFile::encodeName(kept).constData()), 0);
    }
    EXPECT_FALSE(QFile::exists(m_path));
    ASSERT_TRUE(QFile::rename(kept, m_path));
    EXPECT_FALSE(ActivationSocket::request(m_path, {}, 30s));
    const auto socket = listen();
    EXPECT_TRUE(request());
}

TEST_F(ActivationSocketTest, IsReachedByAPathThatNoAddressHasRoomFor) {
    for (const int length : {60, 90, 100, 110, 250}) {
        const QString folder = m_folder.filePath(QString(length, 'x'));
        ASSERT_TRUE(QDir().mkpath(folder));
        m_path = folder + "/socket";
        const auto socket = listen();
        EXPECT_TRUE(request()) << m_path.size();
    }
    EXPECT_EQ(m_tokens.size(), 5U);
}

TEST_F(ActivationSocketTest, GivesUpAProcessThatDoesNotAnswer) {
    EXPECT_FALSE(ActivationSocket::request(m_path, {}, 30s));
    const auto socket = listen();
    // Nobody runs the event loop.
    EXPECT_FALSE(ActivationSocket::request(m_path, "given up", 50ms));
    EXPECT_FALSE(ActivationSocket::request(m_path, "given up too", 50ms));
    // The answers to those who have gone do no harm.
    EXPECT_TRUE(request("answered"));
    EXPECT_EQ(m_tokens, (std::vector<QByteArray>{"given up", "given up too", "answered"}));
}

TEST_F(ActivationSocketTest, IsDoneWithoutAndLoggedWhereThereCanBeNone) {
    m_path = m_folder.filePath("no such folder/socket");
    LogCapture log;
    const auto socket = listen();
    EXPECT_EQ(log.count("C: Could not listen"), 1);
    EXPECT_FALSE(ActivationSocket::request(m_path, {}, 30s));
}

} // namespace
