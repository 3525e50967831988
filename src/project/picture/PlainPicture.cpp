#include "project/picture/PlainPicture.h"

#include "project/picture/JpegReader.h"
#include "project/picture/PngReader.h"

#include <string_view>

namespace Stemhaven {

std::optional<PlainPicture> plainPicture(const QByteArray& bytes) {
    const std::string_view picture(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    if (picture.starts_with(PngReader::signature))
        return PngReader(picture).read();
    if (picture.starts_with(JpegReader::startOfImage))
        return JpegReader(picture).read();
    return std::nullopt;
}

} // namespace Stemhaven
