#pragma once

#include "platform/OpenFolder.h"
#include "plist/Value.h"
#include "project/RecoverableProject.h"

namespace Stemhaven {

/// One repair of one bundle. No link inside the bundle is followed.
class ProjectRepair {
public:
    /// Both outlive the repair.
    ProjectRepair(const RecoverableProject& project, const RecoverableProject::StepObserver& afterStep);

    /// As RecoverableProject::recover().
    bool run();

private:
    class RestoredFile;

    QString alternativePath() const;
    void restore();
    Plist::Dictionary information() const;
    bool writeInformation();
    void removeDamaged();
    void done(const char* step) const;

    const RecoverableProject& m_project;
    const RecoverableProject::StepObserver& m_afterStep;
    OpenFolder m_bundle;
    OpenFolder m_alternative;
};

} // namespace Stemhaven
