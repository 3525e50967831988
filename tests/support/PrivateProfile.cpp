#include "support/PrivateProfile.h"

#include "support/EndWithParent.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

constexpr const char* marker = "STEMHAVEN_TEST_HOME";

void startAgainIn(const std::string& home, char** argv) {
    endWithParent();
    setenv(marker, home.c_str(), 1);
    setenv("HOME", home.c_str(), 1);
    setenv("XDG_DATA_HOME", (home + "/data").c_str(), 1);
    setenv("XDG_CONFIG_HOME", (home + "/config").c_str(), 1);
    setenv("XDG_CACHE_HOME", (home + "/cache").c_str(), 1);
    setenv("TMPDIR", (home + "/tmp").c_str(), 1);
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    execvp(argv[0], argv);
    std::perror("execvp");
    _exit(127);
}

} // namespace

int runWithPrivateProfile(int /*argc*/, char** argv, const std::function<int()>& run) {
    if (std::getenv(marker) != nullptr)
        return run();

    std::string home = std::filesystem::temp_directory_path() / "stemhaven-test-XXXXXX";
    if (mkdtemp(home.data()) == nullptr) {
        std::perror("mkdtemp");
        return 127;
    }
    std::filesystem::create_directories(home + "/tmp");
    std::filesystem::create_directories(home + "/data");

    const pid_t child = fork();
    if (child == 0)
        startAgainIn(home, argv);
    int status = 127 << 8;
    if (child > 0)
        waitpid(child, &status, 0);
    std::error_code ignored;
    std::filesystem::remove_all(home, ignored);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}
