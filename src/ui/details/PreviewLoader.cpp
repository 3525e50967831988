#include "ui/details/PreviewLoader.h"

#include "project/ProjectInformation.h"
#include "project/picture/PreviewImage.h"

#include <QtConcurrent>

namespace {

using WantedFlag = std::shared_ptr<const std::atomic<bool>>;

/// The active alternative's picture. Null where any of it cannot be read: the bundle may be damaged, or gone.
QImage readPictureOf(const QString& bundlePath, QSize size, const WantedFlag& isWanted) {
    try {
        const Stemhaven::ProjectInformation information(Stemhaven::informationPath(bundlePath));
        return Stemhaven::readPreview(
            bundlePath + QStringLiteral("/Alternatives/") + information.getActiveAlternativeDir() +
                QStringLiteral("/WindowImage.jpg"),
            size, [&isWanted] { return isWanted->load(); });
    } catch (const std::exception& error) {
        qDebug() << "No picture of" << bundlePath << error.what();
        return {};
    }
}

} // namespace

PreviewLoader::PreviewLoader(QObject* parent) : QObject(parent) {
    m_pool.setMaxThreadCount(1);
}

PreviewLoader::~PreviewLoader() {
    giveUp();
}

void PreviewLoader::load(const QString& bundlePath, const QSize& size) {
    m_wantedPath = bundlePath;
    m_wantedSize = size;
    ++m_request;
    giveUp();
    if (!m_isBusy)
        start();
}

void PreviewLoader::cancel() {
    m_wantedPath.clear();
    ++m_request;
    giveUp();
}

void PreviewLoader::giveUp() {
    if (m_isWanted)
        *m_isWanted = false;
}

void PreviewLoader::start() {
    m_isBusy = true;
    m_isWanted = std::make_shared<std::atomic<bool>>(true);
    QtConcurrent::run(&m_pool, readPictureOf, m_wantedPath, m_wantedSize, WantedFlag(m_isWanted))
        .then(this, [this, request = m_request](const QImage& picture) {
            m_isBusy = false;
            if (request == m_request)
                emit loaded(picture);
            else if (!m_wantedPath.isEmpty())
                start();
        });
}
