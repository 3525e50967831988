#include "project/picture/PreviewImage.h"

#include "platform/DecodingTurn.h"
#include "platform/PlainFile.h"

#include <QIODevice>
#include <QImageReader>

#include <algorithm>

namespace Stemhaven {

namespace {

constexpr qint64 maxFileSize = 16 << 20;

/// Bytes that end when they are not wanted any more: the decoders ask for them piece by piece and have no
/// other way of being stopped.
class WantedBytes : public QIODevice {
public:
    WantedBytes(const QByteArray& bytes, const std::function<bool()>& isWanted)
        : m_bytes(bytes),
          m_isWanted(isWanted) {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    qint64 size() const override { return m_bytes.size(); }

    bool seek(qint64 position) override {
        if (position > m_bytes.size() || !QIODevice::seek(position))
            return false;
        m_position = position;
        return true;
    }

protected:
    qint64 readData(char* data, qint64 maxSize) override {
        if (!m_isWanted())
            return -1;
        const qint64 count = std::min(maxSize, m_bytes.size() - m_position);
        std::copy_n(m_bytes.constData() + m_position, count, data);
        m_position += count;
        return count;
    }

    qint64 writeData(const char* /*data*/, qint64 /*maxSize*/) override { return -1; }

private:
    const QByteArray& m_bytes;
    const std::function<bool()>& m_isWanted;
    qint64 m_position = 0;
};

QSize fitted(QSize size, QSize target) {
    if (size.width() <= target.width() && size.height() <= target.height())
        return size;
    return size.scaled(target, Qt::KeepAspectRatio).expandedTo({1, 1});
}

std::optional<PlainPicture> plainPictureIn(const QString& file, const std::function<bool()>& isWanted) {
    const auto bytes = readPlainFile(file, maxFileSize, isWanted);
    return bytes ? plainPicture(*bytes) : std::nullopt;
}

} // namespace

QImage readPreview(const QString& file, QSize target, const std::function<bool()>& isWanted) {
    const auto picture = target.isEmpty() ? std::nullopt : plainPictureIn(file, isWanted);
    return picture ? previewOf(*picture, target, isWanted) : QImage();
}

QImage previewOf(const PlainPicture& picture, QSize target, const std::function<bool()>& isWanted) {
    const DecodingTurn turn(isWanted);
    if (!turn.isHeld())
        return {};
    WantedBytes bytes(picture.bytes, isWanted);
    QImageReader reader(&bytes, picture.format);
    reader.setAutoDetectImageFormat(false);
    reader.setScaledSize(fitted(picture.size, target));
    return reader.read();
}

} // namespace Stemhaven
