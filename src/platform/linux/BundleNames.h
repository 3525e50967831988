#pragma once

#include <QStringList>

#include <string>
#include <string_view>
#include <vector>

namespace Stemhaven {

/// What bundles are named like, in bytes as names are on disk.
class BundleNames {
public:
    explicit BundleNames(const QStringList& suffixes);

    /// Takes a name or a path.
    bool isBundle(std::string_view path) const;

private:
    std::vector<std::string> m_suffixes;
};

} // namespace Stemhaven
