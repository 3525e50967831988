#pragma once

#include "ProgramUnderTest.h"
#include "demo-library/Random.h"

#include <QString>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Storm {

class Catalogue;

/// Starts of the program, each killed at a random moment of its first second and followed by one that must
/// work: it brings its window forward when asked, its catalogue is initialised once, and it follows the only
/// project of its library. Lock files of crashes that cannot be had at will are thrown in.
class StartLoop {
public:
    /// The profiles and the library are made in the folder, which must exist.
    StartLoop(
        int starts, std::uint64_t seed, QString program, const std::filesystem::path& folder,
        bool detailedLog);
    ~StartLoop();

    /// Throws with what is wrong where a start does not work.
    void run();

    /// All that was done so far, a line each.
    const std::vector<std::string>& history() const { return m_history; }

    /// What was reached, in words.
    std::string summary() const;

private:
    void takeNewProfile();
    void leaveLockFile();
    void startAndKillEarly();
    void startAndCheck();
    void end(const std::string& when);
    void save();

    void waitForAnswer() const;
    void waitForCatalogue();
    /// What is wrong with it, or nothing.
    std::string faultOf(const Catalogue& catalogue) const;

    int m_starts;
    DemoLibrary::Random m_random;
    QString m_programPath;
    std::filesystem::path m_folder;
    bool m_detailedLog;
    std::filesystem::path m_bundle;
    double m_tempo = 0;

    std::unique_ptr<ProgramUnderTest> m_program;
    int m_profiles = 0;
    /// Of the project's record in this profile, once it has one.
    std::optional<std::int64_t> m_recordId;
    std::vector<std::string> m_history;
};

} // namespace Storm
