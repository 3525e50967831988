#include "platform/linux/BundleNames.h"

#include <QFile>

#include <algorithm>

namespace Stemhaven {

BundleNames::BundleNames(const QStringList& suffixes) {
    for (const auto& suffix : suffixes)
        m_suffixes.push_back(QFile::encodeName(suffix).toStdString());
}

bool BundleNames::isBundle(std::string_view path) const {
    return std::any_of(m_suffixes.begin(), m_suffixes.end(), [&](const std::string& suffix) {
        return path.ends_with(suffix);
    });
}

} // namespace Stemhaven
