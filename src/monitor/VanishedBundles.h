#pragma once

#include "project/ProjectDetails.h"

#include <QTimer>

#include <chrono>

namespace Stemhaven {

/// Logs the bundles that were gone when their check came to them. A folder that is moved or deleted while its
/// bundles wait for theirs takes many along: the first is named, the others of its kind are counted. GUI
/// thread.
class VanishedBundles {
public:
    /// The others are counted until that long none has been added.
    explicit VanishedBundles(std::chrono::milliseconds quietTime);

    void add(const ProjectDetails& details);

private:
    void logOthers();

    QTimer m_untilQuiet;
    int m_others = 0;
};

} // namespace Stemhaven
