#include "WindowFixture.h"
#include "ui/edits/EditHistory.h"
#include "ui/sidebar/AddFilterForm.h"
#include "ui/table/StarEditor.h"
#include "ui/widgets/ImageView.h"

#include <QAccessible>
#include <QLineEdit>

namespace {

QAccessibleInterface& accessible(QWidget& widget) {
    return *QAccessible::queryAccessibleInterface(&widget);
}

class AccessibilityTest : public WindowFixture {};

} // namespace

TEST_F(AccessibilityTest, StarsAreASliderWhoseValueIsAnEdit) {
    insert("Song", "star_rating=3");
    open();
    table().selectRow(0);
    ASSERT_TRUE(waitUntil([&] { return details().project().isValid(); }));
    auto& stars = accessible(child<StarEditor>());
    EXPECT_EQ(stars.role(), QAccessible::Slider);
    EXPECT_EQ(stars.text(QAccessible::Name), "Rating");
    EXPECT_EQ(stars.text(QAccessible::Value), "3 of 5 stars");
    auto* value = stars.valueInterface();
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->minimumValue(), 0);
    EXPECT_EQ(value->maximumValue(), 5);
    EXPECT_EQ(value->currentValue(), 3);

    value->setCurrentValue(4.0);
    settle();
    EXPECT_EQ(database.rows("SELECT star_rating FROM projects"), QStringList("4"));
    EXPECT_EQ(value->currentValue(), 4);
    value->setCurrentValue(-7);
    settle();
    EXPECT_EQ(database.rows("SELECT star_rating FROM projects"), QStringList("0"));
    EXPECT_EQ(stars.text(QAccessible::Value), "Not rated");
}

TEST_F(AccessibilityTest, PictureCountAndErrorHaveRolesAndNames) {
    insert({"One", "Two"});
    open();
    const auto& picture = accessible(child<ImageView>());
    EXPECT_EQ(picture.role(), QAccessible::Graphic);
    EXPECT_EQ(picture.text(QAccessible::Name), "Project picture");
    auto& statusLabel = child<QLabel>("statusLabel");
    EXPECT_EQ(accessible(statusLabel).role(), QAccessible::StatusBar);

    search("Two");
    EXPECT_EQ(accessible(statusLabel).text(QAccessible::Name), "All projects matching 'Two' (1 found)");

    EditHistory history(tasks());
    auto* form = new AddFilterForm(
        tasks(), history, FilterType::TAGS, "#x", AddFilterForm::EditType::Add, -1, &*window);
    form->open();
    form->findChild<QLineEdit*>()->setText("");
    auto& error = *form->findChild<QLabel*>("errorLabel");
    ASSERT_FALSE(error.text().isEmpty());
    EXPECT_EQ(accessible(error).role(), QAccessible::AlertMessage);
    EXPECT_EQ(accessible(error).text(QAccessible::Name), error.text());
    form->reject();
}

TEST_F(AccessibilityTest, PaintedCellsAreReadWithTheirValues) {
    insert("Song", "star_rating=3, progress=0.5, publicly_released=1");
    open();
    auto* cells = accessible(table()).tableInterface();
    QStringList read;
    for (int column = 0; column < model().columnCount(); ++column)
        read.append(cells->cellAt(0, column)->text(QAccessible::Name));
    for (const char* value : {"Song", "3 of 5 stars", "50%", "Yes"})
        EXPECT_TRUE(read.contains(value)) << value << " in " << qPrintable(read.join(" | "));
}
