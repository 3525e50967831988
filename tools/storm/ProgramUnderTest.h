#pragma once

#include <QProcess>
#include <QString>

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

class QSqlQuery;

namespace Storm {

/// The real program on a profile of its own, which follows the given roots. Throws where the program does
/// anything but run until it is ended.
class ProgramUnderTest {
public:
    ProgramUnderTest(
        QString program, const QString& profile, const std::vector<std::filesystem::path>& roots,
        bool detailedLog);
    /// Ends the program if it is running.
    ~ProgramUnderTest();
    ProgramUnderTest(const ProgramUnderTest&) = delete;
    ProgramUnderTest& operator=(const ProgramUnderTest&) = delete;

    QString mainDatabase() const { return m_dataFolder + QStringLiteral("/stemhaven-main.db"); }

    bool isRunning() const { return m_process != nullptr; }

    void start();
    /// As a log-out does.
    void stop();
    /// As a power cut does.
    void kill();
    /// Follows a root no longer from the next start on.
    void takeOffList(const std::filesystem::path& root) const;
    /// Also gives Qt's process handling its turn.
    void checkAlive();

private:
    void giveRoots(const std::vector<std::filesystem::path>& roots) const;
    void changeRoots(const std::function<bool(QSqlQuery&)>& change) const;
    [[noreturn]] void fail(const std::string& what);

    QString m_program;
    QString m_profile;
    QString m_dataFolder;
    std::unique_ptr<QProcess> m_process;
};

} // namespace Storm
