// Any bytes as a picture: what is taken for plain is taken for the same again, and its decoder survives it.

#include "FuzzTarget.h"
#include "project/picture/PreviewImage.h"

#include <QCoreApplication>
#include <QLoggingCategory>

namespace {

constexpr QSize target{64, 40};
/// What is larger is slow without being different.
constexpr std::int64_t maxPixels = 1 << 16;

/// The formats are plugins, which an application object finds.
void prepare() {
    static int argc = 1;
    static char name[] = "fuzz";
    static char* argv[] = {name, nullptr};
    static const QCoreApplication application(argc, argv);
    static const bool isSilent = [] {
        QLoggingCategory::setFilterRules(QStringLiteral("qt.gui.imageio*=false"));
        return true;
    }();
    Q_UNUSED(isSilent)
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    prepare();
    const auto bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto picture = Stemhaven::plainPicture(bytes);
    if (!picture)
        return 0;
    require(picture->bytes.size() <= bytes.size() && !picture->size.isEmpty());
    const auto again = Stemhaven::plainPicture(picture->bytes);
    require(again && again->bytes == picture->bytes && again->size == picture->size);
    if (std::int64_t{picture->size.width()} * picture->size.height() > maxPixels)
        return 0;
    const QImage image = Stemhaven::previewOf(*picture, target, [] { return true; });
    require(image.width() <= target.width() && image.height() <= target.height());
    return 0;
}
