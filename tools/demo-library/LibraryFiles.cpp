#include "LibraryFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <system_error>

namespace DemoLibrary {

namespace {

[[noreturn]] void fail(const std::string& path, int error) {
    throw std::system_error(error, std::generic_category(), path);
}

std::array<timespec, 2> accessedAndModified(std::time_t time) {
    return {{{time, 0}, {time, 0}}};
}

class OpenFile {
public:
    explicit OpenFile(const std::string& path)
        : m_path(path),
          m_descriptor(open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0644)) {
        if (m_descriptor < 0)
            fail(m_path, errno);
    }

    ~OpenFile() { close(m_descriptor); }

    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    void write(const std::vector<char>& bytes) const {
        for (std::size_t done = 0; done < bytes.size();) {
            const ssize_t written = ::write(m_descriptor, bytes.data() + done, bytes.size() - done);
            if (written < 0 && errno != EINTR)
                fail(m_path, errno);
            done += written < 0 ? 0 : static_cast<std::size_t>(written);
        }
    }

    void setModified(std::time_t modified) const {
        if (futimens(m_descriptor, accessedAndModified(modified).data()) != 0)
            fail(m_path, errno);
    }

private:
    const std::string& m_path;
    int m_descriptor;
};

} // namespace

void LibraryFiles::makeFolder(const std::string& path) {
    if (mkdir(path.c_str(), 0755) != 0)
        fail(path, errno);
    ++m_count;
}

void LibraryFiles::makeFolders(const std::string& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error)
        fail(path, error.value());
}

void LibraryFiles::writeFile(const std::string& path, const std::vector<char>& bytes, std::time_t modified) {
    const OpenFile file(path);
    file.write(bytes);
    file.setModified(modified);
    ++m_count;
}

void LibraryFiles::setModified(const std::string& path, std::time_t modified) {
    if (utimensat(AT_FDCWD, path.c_str(), accessedAndModified(modified).data(), 0) != 0)
        fail(path, errno);
}

} // namespace DemoLibrary
