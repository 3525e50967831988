#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>
#include <QThreadPool>

#include <atomic>
#include <memory>

/// Reads the pictures of projects in the background, one at a time: a newer request overtakes one that waits,
/// and the reading of a picture that is not wanted any more is given up.
class PreviewLoader : public QObject {
    Q_OBJECT

public:
    explicit PreviewLoader(QObject* parent = nullptr);
    /// Gives up the picture that is being read, and waits for that.
    ~PreviewLoader() override;
    Q_DISABLE_COPY(PreviewLoader)

    /// size is in pixels.
    void load(const QString& bundlePath, const QSize& size);
    /// What is on its way is not wanted any more.
    void cancel();

signals:
    /// The picture that was asked for last; null where the project has none.
    void loaded(const QImage& image);

private:
    void start();
    void giveUp();

    QThreadPool m_pool;
    /// Whether the picture that is being read is wanted. Shared with the thread that reads it.
    std::shared_ptr<std::atomic<bool>> m_isWanted;
    QString m_wantedPath;
    QSize m_wantedSize;
    quint64 m_request = 0; ///< counts the requests, so that a late answer is known as one
    bool m_isBusy = false;
};
