#include "ui/widgets/Contrast.h"

#include "ui/table/ProjectsTableModel.h"
#include "ui/table/StarDelegate.h"
#include "ui/widgets/Palettes.h"
#include "ui/widgets/Theme.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyleFactory>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

using Stemhaven::ColorScheme;

namespace {

/// Colours as a desktop hands them over: what it does not name stays Qt's own, which is made for light
/// windows.
QPalette
desktopPalette(QRgb window, QRgb base, QRgb text, QRgb fieldText, QRgb highlight, QRgb highlightedText) {
    const std::unique_ptr<QStyle> fallBack(QStyleFactory::create("Fusion"));
    QPalette palette = fallBack->standardPalette();
    for (const auto& [role, color] :
         {std::pair{QPalette::Window, window},
          {QPalette::WindowText, text},
          {QPalette::Button, window},
          {QPalette::ButtonText, text},
          {QPalette::Base, base},
          {QPalette::Text, fieldText},
          {QPalette::Highlight, highlight},
          {QPalette::HighlightedText, highlightedText}})
        palette.setColor(role, QColor(color));
    return palette;
}

std::vector<std::pair<const char*, QPalette>> palettes() {
    return {
        {"own light", designedPalette(ColorScheme::Light, {})},
        {"own dark", designedPalette(ColorScheme::Dark, {})},
        {"own light, yellow", designedPalette(ColorScheme::Light, QColor("#f9f06b"))},
        {"own light, teal", designedPalette(ColorScheme::Light, QColor("#2190a4"))},
        {"own dark, orange", designedPalette(ColorScheme::Dark, QColor("#ed5b00"))},
        {"own light, more contrast", designedPalette(ColorScheme::Light, {}, true)},
        {"own dark, more contrast", designedPalette(ColorScheme::Dark, {}, true)},
        {"dark desktop", desktopPalette(0x31363b, 0x1b1e20, 0xfcfcfc, 0xfcfcfc, 0x3daee9, 0xfcfcfc)},
        {"grey desktop", desktopPalette(0x4d4d4d, 0x3c3c3c, 0xdddddd, 0xdddddd, 0x505050, 0xffffff)},
        {"white on black", desktopPalette(0x000000, 0x000000, 0xffffff, 0xffffff, 0xffff00, 0x000000)},
        {"black on white", desktopPalette(0xffffff, 0xffffff, 0x000000, 0x000000, 0x000000, 0xffffff)},
        {"light fields in a dark window",
         desktopPalette(0x303030, 0xffffff, 0xf0f0f0, 0x101010, 0x305090, 0xffffff)}};
}

/// What stands out most from the commonest colour of a picture.
double contrastIn(const QImage& image) {
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    }
    const QRgb ground = std::max_element(counts.cbegin(), counts.cend()).key();
    double best = 1;
    for (auto color = counts.cbegin(); color != counts.cend(); ++color)
        best = std::max(best, Contrast::between(QColor(color.key()), QColor(ground)));
    return best;
}

/// A window in the program's style with one control in it, painted in one of the palettes.
class Scene {
public:
    explicit Scene(QWidget* control, QSize size = {240, 60}) {
        // Large, so that the middle of a stroke has the colour of the text.
        QFont font = control->font();
        font.setPixelSize(28);
        font.setBold(true);
        control->setFont(font);
        m_window.resize(size + QSize(40, 40));
        control->setParent(&m_window);
        control->setGeometry(QRect({20, 20}, size));
        m_window.ensurePolished();
        m_window.setAttribute(Qt::WA_DontShowOnScreen);
        m_window.show();
        m_control = control;
    }

    QImage inside() { return m_control->grab(m_control->rect().adjusted(8, 4, -8, -4)).toImage(); }

    /// Across the left edge, with the ground of the window before it.
    QImage edge() { return m_window.grab(QRect(10, 20 + m_control->height() / 2, 14, 1)).toImage(); }

    QImage all() { return m_window.grab().toImage(); }

private:
    QWidget m_window;
    QWidget* m_control;
};

class ContrastTest : public testing::Test {
protected:
    void TearDown() override {
        QApplication::setStyle(QStringLiteral("Fusion"));
        QApplication::setPalette(atStart);
    }

    const QPalette atStart = QApplication::palette();
};

QLabel* secondaryLabel() {
    auto* label = new QLabel("HELP");
    Contrast::makeSecondary(*label);
    return label;
}

template <typename Item>
Item* selected(Item* list) {
    list->addItem("HELP");
    list->setCurrentRow(0);
    return list;
}

QTableWidget* tableWithHeader() {
    auto* table = new QTableWidget(0, 1);
    table->setHorizontalHeaderLabels({"HELP"});
    return table;
}

enum TableRow { First, Alternate, Selected };

/// A row of the projects' table.
QImage tableRow(TableRow row, bool isMissing) {
    constexpr int height = 60;
    auto* table = new QTableWidget(3, 1);
    table->setItemDelegate(new StarDelegate(table));
    table->setAlternatingRowColors(true);
    table->setShowGrid(false);
    table->setFrameShape(QFrame::NoFrame);
    table->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table->horizontalHeader()->hide();
    table->verticalHeader()->hide();
    table->verticalHeader()->setDefaultSectionSize(height);
    auto* item = new QTableWidgetItem("HELP");
    item->setData(ProjectsTableModel::NotFoundRole, isMissing);
    table->setItem(row, 0, item);
    item->setSelected(row == Selected);
    Scene scene(table, {240, height});
    table->verticalScrollBar()->setValue(row * height);
    return scene.inside();
}

template <typename Button>
Button* button(bool checked) {
    auto* made = new Button;
    made->setCheckable(true);
    made->setChecked(checked);
    return made;
}

QToolButton* toolButton(bool checked) {
    auto* made = button<QToolButton>(checked);
    made->setAutoRaise(true);
    return made;
}

} // namespace

TEST_F(ContrastTest, TextsCanBeReadAndControlsBeSeenInThePaletteOfEveryDesktop) {
    for (const auto& [name, palette] : palettes()) {
        SCOPED_TRACE(name);
        QApplication::setPalette(palette);
        const Theme theme;

        auto* hint = new QLineEdit;
        hint->setPlaceholderText("HELP");
        hint->setFocusPolicy(Qt::NoFocus);
        auto* standard = new QPushButton("HELP");
        standard->setDefault(true);
        auto* combo = new QComboBox;
        combo->addItem("HELP");
        const std::pair<const char*, QImage> texts[] = {
            {"label", Scene(new QLabel("HELP")).inside()},
            {"secondary label", Scene(secondaryLabel()).inside()},
            {"hint", Scene(hint).inside()},
            {"button", Scene(new QPushButton("HELP")).inside()},
            {"standard button", Scene(standard).inside()},
            {"combo box", Scene(combo).inside()},
            {"selected entry", Scene(selected(new QListWidget)).inside()},
            {"column title", Scene(tableWithHeader()).inside()}};
        for (const auto& [text, image] : texts)
            EXPECT_GE(contrastIn(image), Contrast::text) << text;
        for (const TableRow row : {First, Alternate, Selected}) {
            const double dimmed = contrastIn(tableRow(row, true));
            EXPECT_GE(dimmed, Contrast::text) << row;
            const double ratio = contrastIn(tableRow(row, false)) / dimmed;
            EXPECT_GE(ratio, row == Selected ? 1.0 : 1.2) << row;
        }

        const std::pair<const char*, QWidget*> edged[] = {
            {"field", new QLineEdit},
            {"button", new QPushButton},
            {"combo box", new QComboBox},
            {"check box", new QCheckBox},
            {"radio button", new QRadioButton}};
        for (const auto& [control, widget] : edged)
            EXPECT_GE(contrastIn(Scene(widget).edge()), Contrast::shape) << control;

        const std::pair<QWidget*, QWidget*> toggles[] = {
            {button<QCheckBox>(false), button<QCheckBox>(true)},
            {button<QRadioButton>(false), button<QRadioButton>(true)},
            {toolButton(false), toolButton(true)}};
        for (const auto& [off, on] : toggles) {
            SCOPED_TRACE(off->metaObject()->className());
            const QImage before = Scene(off).all();
            const QImage after = Scene(on).all();
            int changed = 0;
            for (int y = 0; y < before.height(); ++y) {
                for (int x = 0; x < before.width(); ++x)
                    changed +=
                        Contrast::between(before.pixelColor(x, y), after.pixelColor(x, y)) >= Contrast::shape;
            }
            EXPECT_GE(changed, 12);
        }
    }
}
