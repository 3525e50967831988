#include "platform/linux/FolderIdentity.h"

#include <sys/stat.h>

namespace Stemhaven {

FolderIdentity FolderIdentity::of(const std::string& path, bool followLink) {
    struct stat status = {};
    if ((followLink ? stat(path.c_str(), &status) : lstat(path.c_str(), &status)) != 0)
        return {};
    return {status.st_dev, status.st_ino};
}

} // namespace Stemhaven
