#pragma once

#include "LibraryModel.h"
#include "demo-library/Random.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Storm {

/// One of the things that are done to a library.
struct Operation {
    /// How often it is drawn, beside the weights of the others.
    int weight = 0;
    /// Operations that only make sense together share a name.
    std::string name;
    /// Does it and says what it did; nothing where the library has not what it needs.
    std::function<std::optional<std::string>()> perform;
};

/// What the operations have in common: choosing from the library, names, steps that are done on disk and in
/// the model together, and waiting for the catalogue.
class Toolbox {
public:
    using Path = LibraryModel::Path;

    struct Callbacks {
        /// Returns when the catalogue has followed all that was done.
        std::function<void()> settle;
        std::function<bool()> programIsRunning;
        /// As at a log-out, if it is running.
        std::function<void()> stopProgram;
        /// Has the program follow a root no longer from its next start on. Only while it is stopped.
        std::function<void(const Path& root)> takeOffList;
    };

    Toolbox(LibraryModel& library, DemoLibrary::Random& random, Callbacks callbacks);

    LibraryModel& library() const { return m_library; }

    DemoLibrary::Random& random() const { return m_random; }

    const Callbacks& callbacks() const { return m_callbacks; }

    /// One below the roots that has a record, or must get one.
    Bundle* pickListed();
    /// A root that is present, or a folder below one.
    Path pickPlace();
    std::optional<Path> pickFolder();
    /// A path in the folder whose name was never used before.
    Path newName(const Path& folder, const std::string& suffix);
    double newTempo();

    Bundle& addBundle(const Path& path);
    /// With its note.
    Bundle& copyBundle(const Bundle& original, const Path& to);
    /// A bundle or a folder.
    std::string relocate(const std::string& verb, const Path& from, const Path& to);
    std::string remove(const std::string& verb, const Path& path);

    void settleBeforeMoving(const Path& path);
    /// Before deleting or moving out of the roots.
    void settleBeforeLosing(const Path& path);
    void settleUnless(bool determined);

    std::string shown(const Path& path) const;

private:
    LibraryModel& m_library;
    DemoLibrary::Random& m_random;
    Callbacks m_callbacks;
    int m_names = 0;
    int m_tempos = 0;
};

/// Whether its record is known, and identity, note and record agree as far as the storm has not waited since.
/// The record may have another path still.
bool isCertain(const Bundle& bundle);

} // namespace Storm
