#include "platform/FileReplacement.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;
using Stemhaven::FileReplacement;
using Stemhaven::OpenFolder;

namespace {

bool replaceFile(const fs::path& path, const std::string& contents) {
    const OpenFolder folder(path.parent_path().string());
    std::vector<FileReplacement> files;
    files.emplace_back(folder, path.filename().string());
    return files[0].write(contents) && FileReplacement::putInPlace(files);
}

class FileReplacementTest : public testing::Test {
protected:
    static void write(const std::string& path, const std::string& text) { std::ofstream(path) << text; }

    static std::string read(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static unsigned modeOf(const std::string& path) {
        return static_cast<unsigned>(fs::symlink_status(path).permissions());
    }

    QStringList names() const {
        return QDir(m_temporary.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }

    const QTemporaryDir m_temporary;
    const std::string folder = m_temporary.path().toStdString();
    const std::string target = folder + "/Stemhaven.plist";
};

TEST_F(FileReplacementTest, WritesNewFilesUnderTheUsersMaskAndKeepsTheModeOfOldOnes) {
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
    EXPECT_EQ(names(), QStringList{"Stemhaven.plist"});
}

TEST_F(FileReplacementTest, ReplacesALinkWithoutTouchingWhatItPointsAt) {
    write(folder + "/song", "precious");
    fs::create_symlink("song", target);
    EXPECT_TRUE(replaceFile(target, "note"));
    EXPECT_FALSE(fs::is_symlink(target));
    EXPECT_EQ(read(target), "note");
    EXPECT_EQ(read(folder + "/song"), "precious");
}

TEST_F(FileReplacementTest, LeavesEverythingAsItWasWhenItCannotBeDone) {
    write(target, "old");
    fs::create_directory(folder + "/sub");
    const auto before = names();
    for (const std::string& path :
         {target + "/below-a-file", folder + "/missing/note", folder + "/sub",
          folder + "/" + std::string(255, 'n')})
        EXPECT_FALSE(replaceFile(path, "new")) << path;

    // One that is given up, and one whose folder is a link.
    FileReplacement(OpenFolder(folder), "Stemhaven.plist").write("new");
    fs::create_directory_symlink(folder, folder + "/sub/link");
    EXPECT_FALSE(replaceFile(folder + "/sub/link/Stemhaven.plist", "new"));

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

TEST_F(FileReplacementTest, RemovesWhatAKilledProgramLeftAndNothingElse) {
    const QStringList kept{
        "Other.1-2", "Stemhaven.plist", "Stemhaven.plist.1-x", "Stemhaven.plist.12-3", "Stemhaven.plist.old"};
    for (const auto& name : kept + QStringList{"Stemhaven.plist.4711-0"}) {
        const auto file = folder + '/' + name.toStdString();
        write(file, "text");
        fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(1));
    }
    // Another program may be about to rename this one.
    fs::last_write_time(folder + "/Stemhaven.plist.12-3", fs::file_time_type::clock::now());
    EXPECT_TRUE(replaceFile(target, "note"));
    EXPECT_EQ(names(), kept);
}

} // namespace
