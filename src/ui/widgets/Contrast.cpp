#include "ui/widgets/Contrast.h"

#include "ui/widgets/ControlPainting.h"

#include <QEvent>
#include <QLabel>

#include <cmath>
#include <utility>

namespace Contrast {

namespace {

double linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// Of the roles that something stands on.
QPalette::ColorRole textRoleOn(QPalette::ColorRole ground) {
    switch (ground) {
    case QPalette::Base:
    case QPalette::AlternateBase:
        return QPalette::Text;
    case QPalette::Button:
        return QPalette::ButtonText;
    case QPalette::Highlight:
        return QPalette::HighlightedText;
    case QPalette::ToolTipBase:
        return QPalette::ToolTipText;
    default:
        return QPalette::WindowText;
    }
}

/// Gives a label its colour anew when its surroundings change.
class SecondaryLabel : public QObject {
public:
    explicit SecondaryLabel(QLabel& label) : QObject(&label), m_label(label) {
        label.setForegroundRole(QPalette::WindowText);
        label.installEventFilter(this);
        apply();
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto type = event->type();
        if (type == QEvent::PaletteChange || type == QEvent::ParentChange || type == QEvent::Show)
            apply();
        return QObject::eventFilter(watched, event);
    }

private:
    void apply() {
        const QWidget* around = m_label.parentWidget();
        const QPalette palette = around ? around->palette() : QPalette();
        const QColor color = secondaryText(palette, m_label.backgroundRole());
        if (m_label.palette().color(QPalette::WindowText) == color)
            return;
        QPalette own;
        own.setColor(QPalette::WindowText, color);
        m_label.setPalette(own);
    }

    QLabel& m_label;
};

} // namespace

double between(const QColor& one, const QColor& other) {
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

QColor readable(const QColor& wish, const QColor& ground, double ratio) {
    constexpr float step = 0.04F;
    const bool darker = between(Qt::black, ground) > between(Qt::white, ground);
    const QColor end(darker ? Qt::black : Qt::white);
    QColor color = wish;
    for (float share = step; between(color, ground) < ratio && share < 1; share += step)
        color = QColor(ControlPainting::mixed(wish, end, share).rgb()); // as it is painted
    return between(color, ground) < ratio ? end : color;
}

double shapeRatio(const QPalette& palette) {
    constexpr double blackAndWhite = 20;
    const double ratio =
        between(palette.color(QPalette::Active, QPalette::Text), palette.color(QPalette::Base));
    return ratio > blackAndWhite ? more : shape;
}

QColor secondaryText(const QPalette& palette, QPalette::ColorRole ground) {
    constexpr float strength = 0.7F;
    const QColor below = palette.color(ground);
    const QColor wish =
        ControlPainting::mixed(below, palette.color(QPalette::Active, textRoleOn(ground)), strength);
    return readable(wish, below, shapeRatio(palette) == more ? more : text);
}

QColor dimmedText(const QPalette& palette, QPalette::ColorRole ground) {
    constexpr float weakest = 0.5F;
    constexpr float step = 0.04F;
    const QColor below = palette.color(ground);
    const QColor own = palette.color(textRoleOn(ground));
    const double ratio = shapeRatio(palette) == more ? more : text;
    // Towards the text itself: the other way it would look like another kind of text.
    for (float strength = weakest; strength < 1; strength += step) {
        const QColor color(ControlPainting::mixed(below, own, strength).rgb());
        if (between(color, below) >= ratio)
            return color;
    }
    return own;
}

void makeSecondary(QLabel& label) {
    new SecondaryLabel(label);
}

QPalette mended(const QPalette& palette) {
    QPalette result;
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        const auto color = [&](QPalette::ColorRole role) {
            return palette.color(group, role);
        };
        const QColor base = color(QPalette::Base);
        for (const auto ground :
             {QPalette::Window, QPalette::Base, QPalette::Button, QPalette::Highlight,
              QPalette::ToolTipBase}) {
            const auto role = textRoleOn(ground);
            if (const QColor written = readable(color(role), color(ground), text); written != color(role))
                result.setColor(group, role, written);
        }
        const QColor written = readable(color(QPalette::Text), base, text);
        if (between(written, color(QPalette::AlternateBase)) < text)
            result.setColor(group, QPalette::AlternateBase, ControlPainting::mixed(base, written, 0.03F));
        const QColor secondary = secondaryText(palette, QPalette::Base);
        if (secondary != color(QPalette::PlaceholderText))
            result.setColor(group, QPalette::PlaceholderText, secondary);
    }
    return result;
}

} // namespace Contrast
