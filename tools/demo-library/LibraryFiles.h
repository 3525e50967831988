#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

namespace DemoLibrary {

/// Makes folders and files and counts them. Everything throws std::system_error with the path in its text.
class LibraryFiles {
public:
    /// In a folder that is there. The folder itself must not be.
    void makeFolder(const std::string& path);
    /// Makes what is missing of a path of several folders.
    void makeFolders(const std::string& path);
    /// The file must not be there.
    void writeFile(const std::string& path, const std::vector<char>& bytes, std::time_t modified);

    static void setModified(const std::string& path, std::time_t modified);

    std::int64_t count() const { return m_count; }

private:
    std::int64_t m_count = 0;
};

} // namespace DemoLibrary
