#include "platform/OpenFolder.h"

#include <fcntl.h>
#include <unistd.h>

#include <utility>

namespace Stemhaven {

namespace {

constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
/// Not just any negative number: AT_FDCWD would stand for the current folder.
constexpr int closed = -1;

} // namespace

OpenFolder::OpenFolder(const std::string& path) : m_descriptor(open(path.c_str(), flags)) {}

OpenFolder::OpenFolder(const OpenFolder& parent, const char* name)
    // The reason why the parent is not open stands in errno, and stays there.
    : m_descriptor(parent.isOpen() ? openat(parent.descriptor(), name, flags) : closed) {}

OpenFolder::~OpenFolder() {
    if (isOpen())
        close(m_descriptor);
}

OpenFolder::OpenFolder(OpenFolder&& other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, closed)) {}

} // namespace Stemhaven
