#include "WindowFixture.h"
#include "ui/dialogs/Alert.h"
#include "ui/edits/EditHistory.h"
#include "ui/sidebar/RemoveFilter.h"
#include "ui/widgets/ScreenFitting.h"
#include "ui/widgets/Style.h"
#include "ui/widgets/ToolButton.h"
#include "ui/widgets/ZFontIcon.h"

#include <QScreen>
#include <QScrollBar>
#include <QSplitter>
#include <QTranslator>

namespace {

QScreen* screenNamed(const QString& name) {
    const auto screens = QGuiApplication::screens();
    const auto found = std::find_if(
        screens.begin(), screens.end(), [&](const QScreen* screen) { return screen->name() == name; });
    return found == screens.end() ? nullptr : *found;
}

/// Windows on small screens, in the program's own style.
class GeometryTest : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        ASSERT_NE(notebook, nullptr);
        ASSERT_NE(enlarged, nullptr);
        QApplication::setStyle(new Style);
        // Without it buttons show texts, which need more room.
        ASSERT_TRUE(ZFontIcon::addFont(ICON_FONT));
    }

    void TearDown() override {
        window.reset();
        QApplication::setStyle(QStringLiteral("Fusion"));
    }

    static testing::AssertionResult isInside(const QWidget& shown, const QScreen& screen) {
        const QRect available = screen.availableGeometry();
        if (available.contains(shown.geometry()))
            return testing::AssertionSuccess();
        const QRect place = shown.geometry();
        return testing::AssertionFailure() << place.x() << "," << place.y() << " " << place.width() << "x"
                                           << place.height() << " on " << qPrintable(screen.name());
    }

    /// By its size alone: where dialogs are placed is left to the window manager.
    static testing::AssertionResult fits(const QWidget& shown, const QScreen& screen) {
        constexpr QSize frame(0, 40);
        const QSize size = shown.size() + frame;
        if (size.boundedTo(screen.availableSize()) == size)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << size.width() << "x" << size.height();
    }

    QScreen* notebook = screenNamed("notebook");
    QScreen* enlarged = screenNamed("enlarged");
    const ScreenFitting fitting;
};

} // namespace

TEST(ScreenFittingTest, MovesFirstAndMakesSmallerOnlyWhatIsLargerThanTheScreen) {
    const QRect screen(100, 30, 1000, 700);
    const std::tuple<const char*, QRect, QRect> cases[] = {
        {"inside", {200, 100, 500, 400}, {200, 100, 500, 400}},
        {"exactly", screen, screen},
        {"over the right edge", {900, 100, 500, 400}, {600, 100, 500, 400}},
        {"over the upper left corner", {-50, -50, 500, 400}, {100, 30, 500, 400}},
        {"on a screen that is gone", {5000, 3000, 500, 400}, {600, 330, 500, 400}},
        {"too wide", {200, 100, 2159, 400}, {100, 100, 1000, 400}},
        {"too large both ways", {0, 0, 2159, 1290}, screen}};
    for (const auto& [name, frame, expected] : cases)
        EXPECT_EQ(fittedInto(screen, frame), expected) << name;
}

TEST_F(GeometryTest, TheMainWindowFitsSmallScreensInEveryLanguage) {
    for (const bool german : {false, true}) {
        SCOPED_TRACE(german ? "German" : "English");
        QTranslator translator;
        if (german) {
            ASSERT_TRUE(translator.load(":/i18n/Stemhaven_de_DE"));
            QApplication::installTranslator(&translator);
        }
        QSettings().clear();
        open();
        EXPECT_TRUE(isInside(*window, *window->screen()));
        for (const auto* button : window->findChildren<ToolButton*>())
            EXPECT_FALSE(button->icon().isNull()) << qPrintable(button->toolTip());
        const QSize smallest = window->minimumSizeHint();
        EXPECT_LE(smallest.width(), 680);
        EXPECT_LE(smallest.height(), 340);
        window->resize(800, smallest.height());
        EXPECT_TRUE(waitUntil([&] { return emptyState().horizontalScrollBar()->maximum() == 0; }));

        // Left on a large screen, restored on this one.
        window->setGeometry(0, 0, 2159, 1290);
        window->close();
        open();
        EXPECT_TRUE(isInside(*window, *window->screen()));

        // The screen is unplugged, and the window appears on a smaller one as it was.
        window->setGeometry(QRect(enlarged->geometry().topLeft(), QSize(1111, 613)));
        ASSERT_EQ(window->screen(), enlarged);
        emit enlarged->availableGeometryChanged(enlarged->availableGeometry());
        EXPECT_TRUE(waitUntil([&] { return bool(isInside(*window, *enlarged)); }))
            << isInside(*window, *enlarged).message();
        window.reset();
    }
}

TEST_F(GeometryTest, DialogsFitTheScreenThatTheyAreOn) {
    EditHistory history(tasks());
    insertNumbered(300);
    database.rows("INSERT INTO genres VALUES(1, 'Pop')");
    database.rows("UPDATE projects SET genre_id=1");
    const QString longest = QString("INSERT INTO projects VALUES('a song with a long name'); ").repeated(400);
    for (QScreen* screen : {notebook, enlarged}) {
        SCOPED_TRACE(qPrintable(screen->name()));
        QWidget owner;
        owner.setGeometry(screen->availableGeometry());
        owner.show();

        QMessageBox* alert = makeAlert(&owner, QMessageBox::Warning, "Could not save", longest);
        alert->show();
        EXPECT_TRUE(fits(*alert, *screen));
        EXPECT_EQ(alert->detailedText(), longest);
        delete alert;

        auto* form =
            new RemoveFilter(tasks(), history, FilterType::GENRES, 1, QString("Pop").repeated(50), &owner);
        form->open();
        form->move(screen->availableGeometry().center());
        ASSERT_TRUE(
            waitUntil([&] { return form->findChild<QAbstractItemView*>()->model()->rowCount() == 300; }));
        QCoreApplication::processEvents();
        EXPECT_TRUE(isInside(*form, *screen));
        delete form;
    }
}

TEST_F(GeometryTest, AWidenedDetailsPaneKeepsItsWidthThroughHiding) {
    open();
    auto& splitter = child<QSplitter>("projectInfoSplitter");
    splitter.setSizes({splitter.width() - 420, 420});
    emit splitter.splitterMoved(splitter.width() - 420, 1);
    const int width = details().width();
    ASSERT_NEAR(width, 420, 8);
    actions().hideDetails->trigger();
    actions().showDetails->trigger();
    EXPECT_EQ(details().width(), width);
    actions().hideDetails->trigger();
    window->close();
    open();
    EXPECT_FALSE(details().isVisible());
    actions().showDetails->trigger();
    EXPECT_EQ(details().width(), width);
}
