#pragma once

#include <cstdint>
#include <filesystem>

namespace Storm {

/// What the files of a project bundle say.
struct BundleContents {
    /// The storm's own number for the bundle, for whoever looks into it: in a key that the program ignores. A
    /// copy carries its original's until its next save.
    int tag = 0;
    double tempo = 0;
};

/// Makes a new bundle, file after file. Throws where the disk does not let it, as the others do.
void writeBundle(const std::filesystem::path& bundle, const BundleContents& contents);

/// Saves as a document program does: every file is written anew inside the bundle and renamed over the old
/// one.
void saveBundle(const std::filesystem::path& bundle, const BundleContents& contents);

/// Makes of a bundle one that another catalogue recorded under that id, last saved long ago.
void writeForeignNote(const std::filesystem::path& bundle, std::int64_t recordId);

} // namespace Storm
