#include "ui/details/PreviewLoader.h"

#include "project/ProjectInformation.h"
#include "ui/widgets/PreviewImage.h"

#include <QtConcurrent>

namespace {

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
    QtConcurrent::run(&m_pool, readPictureOf, m_wantedPath, m_wantedSize)
        .then(this, [this, request = m_request](const QImage& picture) {
            m_isBusy = false;
            if (request == m_request)
                emit loaded(picture);
            else if (!m_wantedPath.isEmpty())
                start();
        });
}
