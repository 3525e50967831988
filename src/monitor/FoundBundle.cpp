#include "monitor/FoundBundle.h"

#include "project/NoteFile.h"
#include "project/ProjectInformation.h"

#include <QFileInfo>

#include <chrono>

namespace Stemhaven {

namespace {

qint64 nanosecondsNow() {
    using namespace std::chrono;
    return duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
}

} // namespace

FoundBundle FoundBundle::read(const QString& path) {
    FoundBundle found;
    found.readAt = nanosecondsNow();
    found.details = ProjectDetails(path);
    if (!found.isThere())
        return found;
    try {
        found.note = loadStemhavenPlistDetails(found.details);
    } catch (...) {
        found.noteFailure = std::current_exception();
    }
    try {
        found.data = std::make_shared<ProjectData>(path);
    } catch (...) {
        found.dataFailure = std::current_exception();
    }
    const auto savedAt =
        found.data ? found.data->lastModified() : QFileInfo(informationPath(path)).lastModified();
    found.savedAt = savedAt.isValid() ? savedAt.toSecsSinceEpoch() : 0;
    return found;
}

} // namespace Stemhaven
