#pragma once

#include "LibraryFiles.h"
#include "Song.h"
#include "WindowPictures.h"

#include <string>

namespace DemoLibrary {

/// Writes songs as project bundles into a library folder. Throws std::system_error where that fails.
class BundleWriter {
public:
    struct Options {
        /// Files and folders inside each bundle. Fewer than some seven are not possible; a little fewer are
        /// made where the rest has no use.
        int entriesPerBundle = 25;
        /// Whether alternatives hold a picture of their window.
        bool pictures = true;
    };

    BundleWriter(std::string library, const Options& options)
        : m_library(std::move(library)),
          m_options(options) {}

    void write(const Song& song);

    /// Files and folders in all bundles so far, the bundles included.
    std::int64_t entriesWritten() const { return m_files.count(); }

private:
    struct Contents;

    Contents plan(const Song& song) const;
    void writeInformation(const std::string& bundle, const Song& song, const Contents& contents);
    void writeAlternative(const std::string& bundle, const Song& song, const Contents& contents, int number);
    void writeRecordings(const std::string& bundle, const Song& song, const Contents& contents);

    std::string m_library;
    Options m_options;
    LibraryFiles m_files;
    WindowPictures m_pictures;
};

} // namespace DemoLibrary
