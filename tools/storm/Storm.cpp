#include "Storm.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QThread>

#include <stdexcept>
#include <utility>

namespace Storm {

namespace {

constexpr int longestSettling = 60'000;
constexpr unsigned long betweenLooks = 50;

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const auto& line : lines)
        text += "  " + line + "\n";
    return text;
}

} // namespace

Storm::Storm(Options options, const std::filesystem::path& folder)
    : m_options(std::move(options)),
      m_random(m_options.seed),
      m_library(folder / "library"),
      m_program(
          m_options.program, QString::fromStdString((folder / "profile").string()), followed(m_library),
          m_options.detailedLog),
      m_operations(m_library, m_random, callbacks(), m_options.only) {}

std::vector<std::filesystem::path> Storm::followed(const LibraryModel& library) {
    auto roots = library.roots();
    roots.push_back(library.formerRoot());
    return roots;
}

Toolbox::Callbacks Storm::callbacks() {
    return {
        [this] { settle(); },
        [this] { return m_program.isRunning(); },
        [this] { stopProgram(); },
        [this](const std::filesystem::path& root) { m_program.takeOffList(root); },
    };
}

void Storm::run() {
    m_operations.prepare();
    settle();
    for (int step = 1; step <= m_options.steps; ++step) {
        changeProgramState();
        note(m_operations.doOne());
        pause();
        if (m_program.isRunning())
            m_program.checkAlive();
        if (step % m_options.settleEach == 0)
            settle();
    }
    settle();
    stopProgram();
    check();
}

void Storm::changeProgramState() {
    constexpr int startPercent = 30;
    constexpr int stopPercent = 5;
    constexpr int killPercent = 5;
    if (!m_program.isRunning()) {
        if (m_random.chance(startPercent)) {
            m_program.start();
            note("start");
        }
    } else if (m_random.chance(stopPercent)) {
        stopProgram();
    } else if (m_random.chance(killPercent)) {
        m_program.kill();
        note("kill");
    }
}

void Storm::stopProgram() {
    if (!m_program.isRunning())
        return;
    m_program.stop();
    note("stop");
}

void Storm::pause() {
    // From at once to longer than events are held back to come together.
    constexpr int shortPercent = 30;
    constexpr int longPercent = 5;
    constexpr int shortest = 1;
    constexpr int shortPause = 200;
    constexpr int longPause = 4000;
    unsigned long length = 0;
    if (m_random.chance(longPercent))
        length = static_cast<unsigned long>(m_random.between(shortest, longPause));
    else if (m_random.chance(shortPercent))
        length = static_cast<unsigned long>(m_random.between(shortest, shortPause));
    QThread::msleep(length);
}

void Storm::settle() {
    if (!m_program.isRunning()) {
        m_program.start();
        note("start");
    }
    QDeadlineTimer deadline(longestSettling);
    for (;;) {
        m_program.checkAlive();
        try {
            check();
            break;
        } catch (const std::exception&) {
            if (deadline.hasExpired())
                throw;
        }
        QThread::msleep(betweenLooks);
    }
    m_checker.adopt(m_library);
    ++m_checks;
    note("settled");
    giveUserData();
}

void Storm::check() {
    if (!m_catalogue && QFile::exists(m_program.mainDatabase()))
        m_catalogue = std::make_unique<Catalogue>(m_program.mainDatabase());
    const auto complaints =
        m_checker.complaints(m_library, m_catalogue ? m_catalogue->records() : std::vector<Record>());
    if (!complaints.empty())
        throw std::runtime_error("the catalogue is not what it must be:\n" + joined(complaints));
}

void Storm::giveUserData() {
    constexpr int givenPercent = 30;
    constexpr int mostStars = 5;
    constexpr int fewNames = 3;
    for (auto& bundle : m_library.bundles()) {
        if (!m_library.isListed(bundle) || !m_random.chance(givenPercent))
            continue;
        const auto oneOfFew = [this](const char* kind) {
            return kind + std::to_string(m_random.between(1, fewNames));
        };
        bundle.userData = {
            m_random.between(1, mostStars),
            "#" + std::to_string(bundle.tag) + ", check " + std::to_string(m_checks), oneOfFew("genre "),
            oneOfFew("tag "), oneOfFew("collection ")};
        m_catalogue->setUserData(*bundle.recordId, *bundle.userData);
    }
}

void Storm::note(const std::string& what) {
    m_history.push_back(what);
}

std::string Storm::summary() const {
    return "seed " + std::to_string(m_options.seed) + ": " + std::to_string(m_options.steps) +
        " operations, " + std::to_string(m_checks) + " checks, " +
        std::to_string(m_library.bundles().size()) + " bundles, " +
        std::to_string(m_catalogue ? m_catalogue->records().size() : 0) + " records";
}

} // namespace Storm
