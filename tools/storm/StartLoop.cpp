#include "StartLoop.h"

#include "BundleFiles.h"
#include "Catalogue.h"
#include "platform/ActivationSocket.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QThread>

#include <array>
#include <chrono>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>

namespace Storm {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::seconds longestStart(60);
constexpr std::chrono::seconds longestLook(1);
constexpr unsigned long betweenLooks = 20;

/// What Catalogue::initialRows gives once the databases are initialised.
const std::string initialRows = "1|7|5|6|6";

/// What the user gives to the project in each profile.
const UserData userData = {4, "kept", "Blues", "quick", "Album"};

} // namespace

StartLoop::StartLoop(
    int starts, std::uint64_t seed, QString program, const fs::path& folder, bool detailedLog)
    : m_starts(starts),
      m_random(seed),
      m_programPath(std::move(program)),
      m_folder(folder),
      m_detailedLog(detailedLog),
      m_bundle(folder / "library/Song.logicx") {
    constexpr double firstTempo = 60;
    m_tempo = firstTempo;
    writeBundle(m_bundle, {1, m_tempo});
}

StartLoop::~StartLoop() = default;

void StartLoop::run() {
    constexpr int newProfilePercent = 30;
    for (int start = 1; start <= m_starts; ++start) {
        if (start == 1 || m_random.chance(newProfilePercent))
            takeNewProfile();
        startAndKillEarly();
        startAndCheck();
    }
}

std::string StartLoop::summary() const {
    return std::to_string(m_starts) + " starts worked after one that was killed, on " +
        std::to_string(m_profiles) + " profiles.";
}

void StartLoop::takeNewProfile() {
    m_program.reset();
    const auto pathOf = [this](int profile) {
        return m_folder / ("profile" + std::to_string(profile));
    };
    fs::remove_all(pathOf(m_profiles));
    m_program = std::make_unique<ProgramUnderTest>(
        m_programPath, QString::fromStdString(pathOf(++m_profiles).string()),
        std::vector<fs::path>{m_bundle.parent_path()}, m_detailedLog);
    m_recordId.reset();
    m_history.emplace_back("new profile");
}

void StartLoop::leaveLockFile() {
    constexpr int percent = 40;
    if (!m_random.chance(percent))
        return;
    const std::array<std::string, 3> leftovers = {
        "", "1\nstemhaven\nanother-host\n\n00000000-0000-0000-0000-000000000000\n", "\xff\xfe garbage"};
    const fs::path data = QFileInfo(m_program->mainDatabase()).path().toStdString();
    const std::string& leftover = m_random.pick(leftovers);
    std::ofstream(data / "stemhaven.lock", std::ios::binary | std::ios::trunc) << leftover;
    m_history.push_back("lock file of " + std::to_string(leftover.size()) + " bytes");
}

void StartLoop::startAndKillEarly() {
    // More of them while the databases are made than once the program is at rest.
    constexpr std::array<int, 3> longest = {100, 300, 1'000};
    leaveLockFile();
    m_program->start();
    const int moment = m_random.between(0, m_random.pick(longest));
    QThread::msleep(static_cast<unsigned long>(moment));
    m_program->checkAlive();
    end("after " + std::to_string(moment) + " ms");
}

void StartLoop::startAndCheck() {
    constexpr int half = 50;
    leaveLockFile();
    const bool isSavedBefore = m_random.chance(half);
    if (isSavedBefore)
        save();
    m_program->start();
    waitForAnswer();
    if (!isSavedBefore)
        save();
    waitForCatalogue();
    end("once it worked");
}

void StartLoop::end(const std::string& when) {
    constexpr int stopPercent = 25;
    const bool isStop = m_random.chance(stopPercent);
    m_history.push_back((isStop ? "start, stopped " : "start, killed ") + when);
    if (isStop)
        m_program->stop();
    else
        m_program->kill();
}

void StartLoop::save() {
    m_tempo += 1;
    saveBundle(m_bundle, {1, m_tempo});
    m_history.emplace_back("save");
}

void StartLoop::waitForAnswer() const {
    const QString socket = QFileInfo(m_program->mainDatabase()).path() + QStringLiteral("/stemhaven.socket");
    const QDeadlineTimer deadline(longestStart);
    while (!Stemhaven::ActivationSocket::request(socket, {}, longestLook)) {
        m_program->checkAlive();
        if (deadline.hasExpired())
            throw std::runtime_error("The program does not answer.");
        QThread::msleep(betweenLooks);
    }
}

void StartLoop::waitForCatalogue() {
    const QDeadlineTimer deadline(longestStart);
    for (;;) {
        m_program->checkAlive();
        // Opened anew: a connection that outlives the program would take part in the next one's recovery.
        const Catalogue catalogue(m_program->mainDatabase());
        const std::string fault = faultOf(catalogue);
        if (fault.empty()) {
            if (!m_recordId) {
                m_recordId = catalogue.records().front().id;
                catalogue.setUserData(*m_recordId, userData);
            }
            return;
        }
        if (deadline.hasExpired())
            throw std::runtime_error(fault);
        QThread::msleep(betweenLooks);
    }
}

std::string StartLoop::faultOf(const Catalogue& catalogue) const {
    if (const std::string rows = catalogue.initialRows(); rows != initialRows)
        return "The rows of the version and of each status are " + rows + ", not " + initialRows;
    const auto records = catalogue.records();
    if (records.size() != 1)
        return std::to_string(records.size()) + " records of one project.";
    const Record& record = records.front();
    if (record.path != m_bundle || record.tempo != m_tempo)
        return record.path + " is recorded with tempo " + std::to_string(record.tempo) + ", not " +
            std::to_string(m_tempo);
    if (m_recordId && (record.id != *m_recordId || record.userData != userData))
        return "The record is another one, or has lost what the user gave it.";
    return {};
}

} // namespace Storm
