#pragma once

#include "platform/OpenFolder.h"

#include <string>
#include <string_view>
#include <vector>

namespace Stemhaven {

/// A file that is to take the place of whatever has its name in a folder, in one step: a reader sees the old
/// file or the whole new one, also after a power cut. A link of that name is replaced, not followed.
///
/// Until then it is a temporary file beside its target, whose name it begins with, and goes with its object.
/// Where a step cannot be done it returns false, and everything is as it was.
class FileReplacement {
public:
    /// The folder outlives the replacement. The new file has the permissions of a plain file that it
    /// replaces.
    FileReplacement(const OpenFolder& folder, std::string name);
    ~FileReplacement();
    FileReplacement(FileReplacement&& other) noexcept;
    FileReplacement& operator=(FileReplacement&&) = delete;

    bool write(std::string_view contents);

    /// Puts files that were written in their places, and waits for the disk, which takes many together in
    /// little more time than one. Each that cannot be put is left out. Also removes what a killed program
    /// left of earlier replacements of the same names, once it is old.
    static bool putInPlace(std::vector<FileReplacement>& files);

private:
    bool isOpen() const { return m_descriptor >= 0; }

    void open();
    void takePermissions() const;
    void beginFlush() const;
    bool flush() const;
    bool close();
    bool rename();

    int m_folder;
    std::string m_name;
    /// Empty while there is no temporary file.
    std::string m_temporary;
    int m_descriptor = -1;
};

} // namespace Stemhaven
