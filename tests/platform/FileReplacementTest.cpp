#include "platform/FileReplacement.h"

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

namespace fs = std::filesystem;
using Stemhaven::replaceFile;

namespace {

class FileReplacement : public testing::Test {
protected:
    void SetUp() override {
        folder = fs::temp_directory_path() / "replacement-XXXXXX";
        ASSERT_NE(mkdtemp(folder.data()), nullptr);
        target = folder + "/Stemhaven.plist";
    }

    void TearDown() override { fs::remove_all(folder); }

    static void write(const std::string& path, const std::string& text) { std::ofstream(path) << text; }

    static std::string read(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static mode_t modeOf(const std::string& path) {
        struct stat status = {};
        EXPECT_EQ(lstat(path.c_str(), &status), 0);
        return status.st_mode & 07777U;
    }

    std::set<std::string> names() const {
        std::set<std::string> found;
        for (const auto& entry : fs::directory_iterator(folder))
            found.insert(entry.path().filename());
        return found;
    }

    std::string folder;
    std::string target;
};

TEST_F(FileReplacement, WritesNewFilesUnderTheUsersMaskAndKeepsTheModeOfOldOnes) {
    const std::string binary("\0\xff\n\0", 4);
    const mode_t mask = umask(027);
    EXPECT_TRUE(replaceFile(target, binary));
    EXPECT_EQ(read(target), binary);
    EXPECT_EQ(modeOf(target), 0640U);

    chmod(target.c_str(), 0604);
    EXPECT_TRUE(replaceFile(target, ""));
    umask(mask);
    EXPECT_EQ(read(target), "");
    EXPECT_EQ(modeOf(target), 0604U);
    EXPECT_EQ(names(), std::set<std::string>{"Stemhaven.plist"});
}

TEST_F(FileReplacement, ReplacesALinkWithoutTouchingWhatItPointsAt) {
    write(folder + "/song", "precious");
    fs::create_symlink("song", target);
    EXPECT_TRUE(replaceFile(target, "note"));
    EXPECT_FALSE(fs::is_symlink(target));
    EXPECT_EQ(read(target), "note");
    EXPECT_EQ(read(folder + "/song"), "precious");
}

TEST_F(FileReplacement, LeavesEverythingAsItWasWhenItCannotBeDone) {
    write(target, "old");
    fs::create_directory(folder + "/sub");
    const auto before = names();
    for (const std::string& path :
         {target + "/below-a-file", folder + "/missing/note", folder + "/sub",
          folder + "/" + std::string(255, 'n')})
        EXPECT_FALSE(replaceFile(path, "new")) << path;

    // A disk that fills up in the middle of the write.
    rlimit unlimited = {};
    getrlimit(RLIMIT_FSIZE, &unlimited);
    rlimit small = unlimited;
    small.rlim_cur = 1000;
    const auto onLimit = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const bool replaced = replaceFile(target, std::string(5000, 'n'));
    setrlimit(RLIMIT_FSIZE, &unlimited);
    std::signal(SIGXFSZ, onLimit);
    EXPECT_FALSE(replaced);

    EXPECT_EQ(read(target), "old");
    EXPECT_EQ(names(), before);
}

// Watchers of the folder tell the program's own writes by the name.
TEST_F(FileReplacement, NamesTheTemporaryFileAfterTheTarget) {
    const int watcher = inotify_init1(IN_NONBLOCK);
    ASSERT_GE(inotify_add_watch(watcher, folder.c_str(), IN_CREATE | IN_MOVE), 0);
    EXPECT_TRUE(replaceFile(target, "note"));

    alignas(inotify_event) std::array<char, 4096> events = {};
    const ssize_t size = ::read(watcher, events.data(), events.size());
    close(watcher);
    int seen = 0;
    for (ssize_t at = 0; at < size; ++seen) {
        const auto* event = reinterpret_cast<const inotify_event*>(&events.at(static_cast<std::size_t>(at)));
        EXPECT_TRUE(std::string(event->name).starts_with("Stemhaven.plist")) << event->name;
        at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
    EXPECT_EQ(seen, 3);
}

TEST_F(FileReplacement, RemovesWhatAKilledProgramLeftAndNothingElse) {
    const std::set<std::string> kept{
        "Stemhaven.plist", "Stemhaven.plist.12-3", "Stemhaven.plist.old", "Stemhaven.plist.1-x", "Other.1-2"};
    std::set<std::string> all = kept;
    all.insert("Stemhaven.plist.4711-0");
    for (const auto& name : all) {
        write(folder + "/" + name, "text");
        fs::last_write_time(folder + "/" + name, fs::file_time_type::clock::now() - std::chrono::hours(1));
    }
    // Another program may be about to rename this one.
    fs::last_write_time(folder + "/Stemhaven.plist.12-3", fs::file_time_type::clock::now());
    EXPECT_TRUE(replaceFile(target, "note"));
    EXPECT_EQ(names(), kept);
}

TEST_F(FileReplacement, IsNeverSeenHalfDoneByAReader) {
    const std::string first(100'000, 'a');
    const std::string second(70'000, 'b');
    ASSERT_TRUE(replaceFile(target, first));

    std::atomic<bool> done = false;
    std::atomic<int> reads = 0;
    std::atomic<int> torn = 0;
    std::thread reader([&] {
        while (!done) {
            const std::string seen = read(target);
            torn += seen != first && seen != second;
            ++reads;
        }
    });
    for (int round = 0; round < 300 || reads < 20; ++round)
        EXPECT_TRUE(replaceFile(target, round % 2 == 0 ? second : first));
    done = true;
    reader.join();
    EXPECT_EQ(torn, 0);
}

} // namespace
