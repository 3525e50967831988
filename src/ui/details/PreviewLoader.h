#pragma once

#include <QImage>
#include <QObject>
#include <QSize>
#include <QString>
#include <QThreadPool>

/// Reads the pictures of projects in the background, one at a time: a newer request overtakes one that waits.
class PreviewLoader : public QObject {
    Q_OBJECT

public:
    explicit PreviewLoader(QObject* parent = nullptr);
    /// Waits for the picture that is being read.
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

    QThreadPool m_pool;
    QString m_wantedPath;
    QSize m_wantedSize;
    quint64 m_request = 0; ///< counts the requests, so that a late answer is known as one
    bool m_isBusy = false;
};
