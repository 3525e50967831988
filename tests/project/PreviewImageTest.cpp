#include "project/picture/PreviewImage.h"

#include <QBuffer>
#include <QFile>
#include <QImageWriter>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <random>

using Stemhaven::readPreview;

namespace {

constexpr QSize target{640, 400};

QByteArray picture(QSize size, const char* format) {
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(Qt::darkGray);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    writer.write(image);
    return bytes;
}

/// The most memory that this process had, in MiB.
int peakMemory() {
    QFile status("/proc/self/status");
    status.open(QIODevice::ReadOnly);
    const QRegularExpression line("VmHWM:\\s*(\\d+) kB");
    return line.match(status.readAll()).captured(1).toInt() / 1024;
}

class PreviewTest : public testing::Test {
protected:
    QString write(const QByteArray& bytes) const {
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(bytes);
        return path;
    }

    QTemporaryDir folder;
    QString path = folder.filePath("WindowImage.jpg");
};

} // namespace

TEST_F(PreviewTest, IsScaledDownInProportionAtLittleCost) {
    const std::tuple<QSize, const char*, QSize> cases[] = {
        {{1600, 1000}, "jpg", {640, 400}}, {{1000, 1600}, "png", {250, 400}}, {{320, 100}, "jpg", {320, 100}},
        {{12'000, 4}, "jpg", {640, 1}},    {{2, 4000}, "png", {1, 400}},
    };
    for (const auto& [size, format, expected] : cases)
        EXPECT_EQ(readPreview(write(picture(size, format)), target).size(), expected) << size.width();

    const QString wide = write(picture({20'000, 9000}, "jpg"));
    // The peak from now on.
    std::ofstream("/proc/self/clear_refs") << 5;
    const int before = peakMemory();
    ASSERT_GT(before, 0);
    EXPECT_EQ(readPreview(wide, target).size(), QSize(640, 288));
    EXPECT_LT(peakMemory() - before, 100);
}

TEST_F(PreviewTest, RefusesWhatIsNoPictureOrCostsTooMuch) {
    const auto isRefused = [](const QString& file) {
        return readPreview(file, target).isNull();
    };
    for (const QString& file : {path, folder.path(), QString("/dev/zero")})
        EXPECT_TRUE(isRefused(file)) << qPrintable(file);

    ASSERT_EQ(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    EXPECT_TRUE(isRefused(path)) << "a pipe that nobody writes to";
    QFile::remove(path);
    ASSERT_TRUE(QFile::link("/dev/zero", path));
    EXPECT_TRUE(isRefused(path)) << "a link to a device";
    QFile::remove(path);

    const QByteArray whole = picture({800, 500}, "jpg");
    // As large as a JPEG can be.
    QByteArray huge = whole;
    huge.replace(huge.indexOf("\xFF\xC0") + 5, 4, "\xFF\xDC\xFF\xDC");
    const std::pair<const char*, QByteArray> contents[] = {
        {"text", "This is no picture."},
        {"markup", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"},
        {"an animation", QByteArray("GIF89a\x01\0\x01\0\0\0\0;", 14)},
        {"the beginning of a header", whole.left(30)},
        {"a header that promises everything", huge},
    };
    for (const auto& [name, bytes] : contents)
        EXPECT_TRUE(isRefused(write(bytes))) << name;

    QFile large(write(whole));
    ASSERT_TRUE(large.resize((16 << 20) + 1));
    EXPECT_TRUE(isRefused(path)) << "larger than any picture need be";
    ASSERT_TRUE(large.resize(whole.size()));
    EXPECT_FALSE(isRefused(path));
    EXPECT_TRUE(readPreview(path, QSize()).isNull()) << "no place for it";
}

TEST_F(PreviewTest, GivesUpWhatIsNotWantedAnyMore) {
    const std::pair<const char*, bool> cases[] = {{"png", false}, {"jpg", false}, {"jpg", true}};
    for (const auto& [format, progressive] : cases) {
        QImage noise(700, 700, QImage::Format_RGB32);
        std::mt19937 random(1);
        std::generate_n(reinterpret_cast<quint32*>(noise.bits()), 700 * 700, [&] { return random(); });
        QImageWriter writer(path, format);
        writer.setProgressiveScanWrite(progressive);
        ASSERT_TRUE(writer.write(noise));

        int wanted = 0;
        EXPECT_FALSE(readPreview(path, target, [&] { return ++wanted > 0; }).isNull());
        for (const int answers : {0, 2, 9}) {
            int asked = 0;
            readPreview(path, target, [&] { return ++asked <= answers; });
            EXPECT_LE(asked, answers + 4) << format;
            EXPECT_GT(wanted, answers + 20) << format;
        }
    }
}
