#include "monitor/ReplayProgress.h"

#include <utility>

namespace Stemhaven {

ReplayProgress::Ticket::~Ticket() {
    if (!m_isAbandoned)
        m_progress.finish(m_id);
}

ReplayProgress::ReplayProgress(std::function<void(unsigned long long)> advanceTo)
    : m_advanceTo(std::move(advanceTo)) {}

std::shared_ptr<ReplayProgress::Ticket> ReplayProgress::begin(unsigned long long lastEventID) {
    const std::lock_guard lock(m_mutex);
    ++m_open[lastEventID];
    return std::make_shared<Ticket>(*this, lastEventID);
}

void ReplayProgress::startAnew() {
    const std::lock_guard lock(m_mutex);
    m_open.clear();
}

bool ReplayProgress::isComplete() const {
    const std::lock_guard lock(m_mutex);
    for (const auto& [id, open] : m_open) {
        if (open > 0)
            return false;
    }
    return true;
}

void ReplayProgress::finish(unsigned long long id) {
    const std::lock_guard lock(m_mutex);
    --m_open[id];
    unsigned long long reached = 0;
    while (!m_open.empty() && m_open.begin()->second == 0) {
        reached = m_open.begin()->first;
        m_open.erase(m_open.begin());
    }
    if (reached != 0)
        m_advanceTo(reached);
}

} // namespace Stemhaven
