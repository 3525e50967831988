#include "project/BundlePlist.h"

#include "plist/PropertyList.h"

#include <QFile>
#include <QFileInfo>

namespace Stemhaven {

Plist::Dictionary readBundlePlist(const QFileInfo& info) {
    const QString path = info.filePath();
    QFile file(path);
    // Opening a pipe would wait for its other end.
    if (!info.isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw IOException(file, QStringLiteral("Could not open file."));

    Plist::Dictionary dictionary;
    Plist::readPlist(QFile::encodeName(path).constData(), dictionary);
    return dictionary;
}

} // namespace Stemhaven
