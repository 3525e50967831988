#include "platform/PrivateFiles.h"

#include "platform/TreeWalk.h"
#include "platform/posix/PathText.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace Stemhaven {

namespace {

constexpr mode_t ofOthers = 0077;
constexpr mode_t permissions = 07777;

/// Returns whether something was taken.
bool narrow(const std::string& path, const struct stat& status) {
    const mode_t mode = status.st_mode & permissions;
    return (mode & ofOthers) != 0 && chmod(path.c_str(), mode & ~ofOthers) == 0;
}

void narrowContents(const std::string& folder, int levels) {
    for (const auto& entry : FolderListing::of(folder).entries) {
        const std::string path = entryOf(folder, entry.name);
        struct stat status = {};
        // A socket's permissions are those of its folder.
        if (lstat(path.c_str(), &status) != 0 || !(S_ISREG(status.st_mode) || S_ISDIR(status.st_mode)))
            continue;
        narrow(path, status);
        if (S_ISDIR(status.st_mode) && levels > 1)
            narrowContents(path, levels - 1);
    }
}

} // namespace

void makePrivateFile(const QString& path) {
    constexpr mode_t ownerOnly = 0600;
    const int descriptor =
        open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, ownerOnly);
    if (descriptor >= 0)
        close(descriptor);
}

bool makePrivate(const QString& path) {
    constexpr int levels = 3;
    const std::string name = QFile::encodeName(path).toStdString();
    struct stat status = {};
    if (stat(name.c_str(), &status) != 0)
        return false;
    const bool narrowed = narrow(name, status);
    if (S_ISDIR(status.st_mode))
        narrowContents(name, levels);
    return narrowed;
}

} // namespace Stemhaven
