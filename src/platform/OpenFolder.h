#pragma once

#include <string>

namespace Stemhaven {

/// A folder that is held open: what is done relative to its descriptor happens in this folder, whatever comes
/// to its path meanwhile. Can be moved, and closes with its object.
class OpenFolder {
public:
    /// Opens the folder at path, in the file system's encoding. Links above it are followed, but a link at
    /// path itself is no folder. isOpen() is false where there is none, and errno says why.
    explicit OpenFolder(const std::string& path);
    /// As above, for a folder in another one.
    OpenFolder(const OpenFolder& parent, const char* name);
    ~OpenFolder();
    OpenFolder(OpenFolder&& other) noexcept;
    OpenFolder& operator=(OpenFolder&&) = delete;

    bool isOpen() const { return m_descriptor >= 0; }

    /// Negative where the folder is not open: the system refuses calls relative to it then.
    int descriptor() const { return m_descriptor; }

private:
    int m_descriptor;
};

} // namespace Stemhaven
