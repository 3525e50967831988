#include "monitor/VanishedBundles.h"

#include <QDebug>

#include <utility>

namespace Stemhaven {

VanishedBundles::VanishedBundles(std::chrono::milliseconds quietTime) {
    m_untilQuiet.setSingleShot(true);
    m_untilQuiet.setInterval(quietTime);
    m_untilQuiet.callOnTimeout([this] { logOthers(); });
}

void VanishedBundles::add(const ProjectDetails& details) {
    const bool isFirst = !m_untilQuiet.isActive();
    (isFirst ? qWarning() : qDebug())
        << "Could not find project on drive. Project will not be added: " << details;
    if (!isFirst)
        ++m_others;
    m_untilQuiet.start();
}

void VanishedBundles::logOthers() {
    if (const int others = std::exchange(m_others, 0); others > 0)
        qWarning() << "Could not find that many more projects on drive:" << others;
}

} // namespace Stemhaven
