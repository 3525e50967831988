#include "ui/widgets/PreviewImage.h"

#include "platform/PlainFile.h"
#include "ui/widgets/JpegHeader.h"

#include <QBuffer>
#include <QImageReader>

namespace {

constexpr qint64 maxFileSize = 64 << 20;
/// What is decoded piece by piece costs time alone: this is a second or two.
constexpr qint64 maxPixelsInOnePass = 512 << 20;
/// What is decoded as a whole costs up to eight bytes a pixel.
constexpr qint64 maxPixelsAtOnce = 32 << 20;
/// Each scan goes over the whole picture.
constexpr qint64 maxScans = 64;

/// The format by the first bytes, or nothing. Only these are decoded: others have no business in a bundle,
/// and some of them can be made to run without end.
QByteArray formatOf(const QByteArray& data) {
    if (data.startsWith("\xFF\xD8\xFF"))
        return "jpeg";
    if (data.startsWith("\x89PNG\r\n\x1A\n"))
        return "png";
    return {};
}

bool isAffordable(const QByteArray& data, const QByteArray& format, QSize size) {
    const qint64 pixels = qint64(size.width()) * size.height();
    if (format == "jpeg" && isJpegOfOnePass(data))
        return pixels <= maxPixelsInOnePass;
    return pixels <= maxPixelsAtOnce && data.count("\xFF\xDA") <= maxScans;
}

QSize fitted(QSize size, QSize target) {
    if (size.width() <= target.width() && size.height() <= target.height())
        return size;
    return size.scaled(target, Qt::KeepAspectRatio).expandedTo({1, 1});
}

} // namespace

QImage readPreview(const QString& file, QSize target) {
    auto data = Stemhaven::readPlainFile(file, maxFileSize);
    const QByteArray format = data ? formatOf(*data) : QByteArray();
    if (format.isEmpty() || target.isEmpty())
        return {};

    QBuffer buffer(&*data);
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.isEmpty() || !isAffordable(*data, format, size))
        return {};
    reader.setScaledSize(fitted(size, target));
    return reader.read();
}
