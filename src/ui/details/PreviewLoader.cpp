#include "ui/details/PreviewLoader.h"

#include "project/ProjectInformation.h"
#include "ui/widgets/PreviewImage.h"

#include <QFileInfo>
#include <QtConcurrent>

namespace {

struct Preview {
    QImage image;
    bool isProjectThere = true;
};

/// The active alternative's picture. Null where any of it cannot be read: the bundle may be damaged, or gone.
QImage readPictureOf(const QString& bundlePath, QSize size) {
    try {
        const Stemhaven::ProjectInformation information(Stemhaven::informationPath(bundlePath));
        return readPreview(
            bundlePath + QStringLiteral("/Alternatives/") + information.getActiveAlternativeDir() +
                QStringLiteral("/WindowImage.jpg"),
            size);
    } catch (const std::exception& error) {
        qDebug() << "No picture of" << bundlePath << error.what();
        return {};
    }
}

Preview readPreviewOf(const QString& bundlePath, QSize size) {
    const QImage image = readPictureOf(bundlePath, size);
    return {image, !image.isNull() || QFileInfo::exists(bundlePath)};
}

} // namespace

PreviewLoader::PreviewLoader(QObject* parent) : QObject(parent) {
    m_pool.setMaxThreadCount(1);
}

PreviewLoader::~PreviewLoader() = default;

void PreviewLoader::load(const QString& bundlePath, const QSize& size) {
    m_wantedPath = bundlePath;
    m_wantedSize = size;
    ++m_request;
    if (!m_isBusy)
        start();
}

void PreviewLoader::cancel() {
    m_wantedPath.clear();
    ++m_request;
}

void PreviewLoader::start() {
    m_isBusy = true;
    QtConcurrent::run(&m_pool, readPreviewOf, m_wantedPath, m_wantedSize)
        .then(this, [this, request = m_request](const Preview& preview) {
            m_isBusy = false;
            if (request == m_request)
                emit loaded(preview.image, preview.isProjectThere);
            else if (!m_wantedPath.isEmpty())
                start();
        });
}
