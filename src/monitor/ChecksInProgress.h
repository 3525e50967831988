#pragma once

#include "project/ProjectDetails.h"

#include <QList>

#include <condition_variable>
#include <functional>
#include <mutex>

namespace Stemhaven {

/// The bundles whose check is running: no bundle is checked twice at a time, and a search does not run far
/// ahead of the checks that it causes. Safe from any thread.
class ChecksInProgress {
public:
    /// False, with nothing changed, when the same details are being checked already.
    bool begin(const ProjectDetails& details);
    void finish(const ProjectDetails& details);

    /// Blocks until fewer than limit checks are running. Looks at giveUp now and then, and returns when it
    /// says so.
    void waitForRoom(qsizetype limit, const std::function<bool()>& giveUp);

private:
    std::mutex m_mutex;
    std::condition_variable m_finished;
    QList<ProjectDetails> m_details;
};

} // namespace Stemhaven
