#include "WindowPictures.h"

#include "Random.h"

#include <QBuffer>
#include <QColor>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <stdexcept>

namespace DemoLibrary {

namespace {

constexpr std::uint64_t variants = 24;
constexpr int quality = 50;

constexpr int width = 720;
constexpr int height = 450;
constexpr int toolbarHeight = 34;
constexpr int rulerHeight = 16;
constexpr int headerWidth = 132;
constexpr int barWidth = 9;
constexpr int bars = (width - headerWidth) / barWidth;

/// One arrangement, from top to bottom. No texts, so that it needs neither fonts nor a platform.
class Arrangement {
public:
    Arrangement(QImage& image, std::uint64_t seed) : m_painter(&image), m_random(seed) {}

    void draw() {
        m_trackHeight = m_random.between(18, 34);
        m_songBars = m_random.between(bars / 2, bars);
        m_painter.fillRect(QRect(0, 0, width, height), QColor(43, 44, 48));
        drawToolbar();
        drawRuler();
        int hue = m_random.between(0, 359);
        const int tracks = m_random.between(7, 22);
        for (int track = 0; track < tracks && top(track) < height; ++track) {
            if (m_random.chance(45))
                hue = (hue + m_random.between(25, 80)) % 360;
            drawTrack(track, QColor::fromHsv(hue, m_random.between(110, 190), m_random.between(165, 215)));
        }
        drawPlayhead();
    }

private:
    int top(int track) const { return toolbarHeight + rulerHeight + track * m_trackHeight; }

    void drawToolbar() {
        m_painter.fillRect(QRect(0, 0, width, toolbarHeight), QColor(60, 61, 66));
        const QRect display(width / 2 - 90, 6, 180, toolbarHeight - 12);
        m_painter.fillRect(display, QColor(24, 25, 28));
        for (int digit = 0; digit < 9; ++digit)
            m_painter.fillRect(
                QRect(display.left() + 14 + digit * 17, display.top() + 6, 10, 10), QColor(150, 205, 235));
        for (int button = 0; button < 6; ++button)
            m_painter.fillRect(QRect(14 + button * 26, 9, 18, 16), QColor(88, 90, 97));
    }

    void drawRuler() {
        m_painter.fillRect(QRect(0, toolbarHeight, width, rulerHeight), QColor(52, 53, 58));
        for (int bar = 0; bar < bars; ++bar) {
            const int length = bar % 4 == 0 ? 10 : 4;
            const int bottom = toolbarHeight + rulerHeight;
            m_painter.fillRect(
                QRect(headerWidth + bar * barWidth, bottom - length, 1, length), QColor(125, 127, 135));
            if (bar % 4 == 0)
                m_painter.fillRect(
                    QRect(headerWidth + bar * barWidth, bottom, 1, height - bottom), QColor(51, 52, 57));
        }
    }

    void drawTrack(int track, const QColor& colour) {
        const int y = top(track);
        m_painter.fillRect(QRect(0, y, headerWidth, m_trackHeight - 1), QColor(66, 67, 73));
        m_painter.fillRect(QRect(0, y, 5, m_trackHeight - 1), colour);
        m_painter.fillRect(QRect(14, y + 5, m_random.between(30, 64), 5), QColor(165, 167, 175));
        m_painter.fillRect(QRect(96, y + 5, 9, 7), QColor(96, 98, 106));
        m_painter.fillRect(QRect(109, y + 5, 9, 7), QColor(96, 98, 106));
        m_painter.fillRect(QRect(headerWidth, y + m_trackHeight - 1, width, 1), QColor(37, 38, 42));

        const bool audio = m_random.chance(50);
        int bar = m_random.between(0, 5) * 4;
        while (bar < m_songBars) {
            const int length = std::min(m_random.between(1, 5) * 4, m_songBars - bar);
            drawRegion(
                QRect(headerWidth + bar * barWidth + 1, y + 1, length * barWidth - 2, m_trackHeight - 3),
                colour, audio);
            bar += length + (m_random.chance(55) ? 0 : m_random.between(1, 4) * 4);
        }
    }

    void drawRegion(const QRect& region, const QColor& colour, bool audio) {
        m_painter.fillRect(region, colour.darker(115));
        m_painter.fillRect(QRect(region.left(), region.top(), region.width(), 4), colour);
        const QColor ink = colour.darker(210);
        const int middle = region.top() + 4 + (region.height() - 4) / 2;
        const int reach = std::max(2, (region.height() - 8) / 2);
        for (int x = region.left() + 2; x < region.right() - 2; x += audio ? 2 : 7) {
            if (audio) {
                const int swing = m_random.between(1, reach);
                m_painter.fillRect(QRect(x, middle - swing, 1, 2 * swing), ink);
            } else if (m_random.chance(75)) {
                m_painter.fillRect(
                    QRect(x, middle + m_random.between(-reach, reach - 2), m_random.between(3, 6), 2), ink);
            }
        }
    }

    void drawPlayhead() {
        const int x = headerWidth + m_random.between(0, m_songBars) * barWidth;
        m_painter.fillRect(QRect(x, toolbarHeight, 1, height - toolbarHeight), QColor(235, 235, 240));
    }

    QPainter m_painter;
    Random m_random;
    int m_trackHeight = 0;
    int m_songBars = 0;
};

std::vector<char> drawPicture(std::uint64_t seed) {
    QImage image(width, height, QImage::Format_RGB32);
    Arrangement(image, seed).draw();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "JPG", quality))
        throw std::runtime_error("Qt cannot write JPEG here");
    return {buffer.data().cbegin(), buffer.data().cend()};
}

} // namespace

const std::vector<char>& WindowPictures::picture(std::uint64_t seed) {
    std::vector<char>& picture = m_pictures[seed % variants];
    if (picture.empty())
        picture = drawPicture(seed % variants);
    return picture;
}

} // namespace DemoLibrary
