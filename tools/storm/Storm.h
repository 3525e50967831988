#pragma once

#include "Catalogue.h"
#include "Checker.h"
#include "LibraryModel.h"
#include "Operations.h"
#include "ProgramUnderTest.h"
#include "demo-library/Random.h"

#include <QString>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace Storm {

struct Options {
    std::uint64_t seed = 1;
    int steps = 200;
    /// How many operations there are between two checks.
    int settleEach = 20;
    /// The names of the operations to choose from; all if it is empty.
    std::vector<std::string> only;
    QString program;
    bool detailedLog = false;
};

/// Operations on a library, one after the other, while the program that follows it runs, is stopped and is
/// killed. The same options give the same operations; at which moment the program sees each is left to
/// chance.
class Storm {
public:
    /// The profile and the library are made in the folder, which must exist.
    Storm(Options options, const std::filesystem::path& folder);

    /// Throws with what is wrong where the catalogue does not follow.
    void run();

    /// All that was done so far, a line each.
    const std::vector<std::string>& history() const { return m_history; }

    /// What was reached, in words.
    std::string summary() const;

private:
    static std::vector<std::filesystem::path> followed(const LibraryModel& library);
    Toolbox::Callbacks callbacks();
    void changeProgramState();
    void stopProgram();
    void pause();
    /// Waits until the catalogue is what it must be.
    void settle();
    void check();
    void giveUserData();
    void note(const std::string& what);

    Options m_options;
    DemoLibrary::Random m_random;
    LibraryModel m_library;
    ProgramUnderTest m_program;
    Operations m_operations;
    Checker m_checker;
    std::unique_ptr<Catalogue> m_catalogue;
    std::vector<std::string> m_history;
    int m_checks = 0;
};

} // namespace Storm
