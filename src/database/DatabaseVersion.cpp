#include "database/DatabaseVersion.h"

namespace Stemhaven {

DatabaseVersion DatabaseVersionFromString(const QString& text) {
    for (const auto version :
         {DatabaseVersion::V1_0, DatabaseVersion::V1_1, DatabaseVersion::V1_2, DatabaseVersion::V1_3}) {
        if (text == DatabaseVersionToString(version))
            return version;
    }
    return DatabaseVersion::Unknown;
}

QString DatabaseVersionToString(DatabaseVersion version) {
    switch (version) {
    case DatabaseVersion::V1_0:
        return QStringLiteral("v1.0");
    case DatabaseVersion::V1_1:
        return QStringLiteral("v1.1");
    case DatabaseVersion::V1_2:
        return QStringLiteral("v1.2");
    case DatabaseVersion::V1_3:
        return QStringLiteral("v1.3");
    case DatabaseVersion::Unknown:
        break;
    }
    return QStringLiteral("Unknown");
}

} // namespace Stemhaven
