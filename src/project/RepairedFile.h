#pragma once

#include "platform/FileReplacement.h"
#include "platform/OpenFolder.h"

#include <string>
#include <string_view>
#include <vector>

namespace Stemhaven {

/// A file in a bundle that is to take the place of a damaged one, which is kept beside it under its name with
/// ".damaged" appended until removeDamaged() is called. Links are replaced and never followed; a folder in
/// the file's place stays. Where a step cannot be done, or the object goes before putInPlace(), the folder is
/// as it was.
class RepairedFile {
public:
    /// The folder outlives the file.
    RepairedFile(const OpenFolder& folder, std::string name);
    ~RepairedFile();
    RepairedFile(const RepairedFile&) = delete;
    RepairedFile& operator=(const RepairedFile&) = delete;

    const std::string& name() const { return m_name; }

    /// Whether anything is in the file's place.
    bool isReplacing() const;
    /// Whether the folder takes new files.
    bool isWritable();

    bool write(std::string_view contents);
    /// Copies a plain file that is not empty. May be gigabytes, which are never in memory.
    bool copyFrom(const OpenFolder& folder);
    /// Whether copyFrom() has something to copy.
    bool isIn(const OpenFolder& folder) const;

    /// Keeps what is in the file's place under its other name.
    bool setAside();
    /// In one step, once the new file is on the disk.
    bool putInPlace();

    /// Removes what was set aside by this repair and by interrupted ones.
    static void removeDamaged(const OpenFolder& folder, const std::string& name);

private:
    bool setAsideAs(const std::string& damagedName);
    void putBack();

    const OpenFolder& m_folder;
    std::string m_name;
    std::vector<FileReplacement> m_replacement;
    /// The name under which the damaged file is kept. Empty while it is not.
    std::string m_damagedName;
    /// The damaged file has its other name only.
    bool m_isMoved = false;
};

} // namespace Stemhaven
