#pragma once

#include "project/ProjectDetails.h"

#include <QTimer>

#include <chrono>

namespace Stemhaven {

/// Logs the bundles that were gone when they were to be checked. A folder that is moved or deleted meanwhile
/// takes many along, so only the first is named in a warning, and the others are counted. GUI thread.
class VanishedBundles {
public:
    /// The count is logged when none has been added for quietTime.
    explicit VanishedBundles(std::chrono::milliseconds quietTime);

    void add(const ProjectDetails& details);

private:
    void logOthers();

    QTimer m_untilQuiet;
    int m_others = 0;
};

} // namespace Stemhaven
