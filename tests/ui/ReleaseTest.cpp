// The release details of a project: the dialog and the calendar of all.

#include "BrowsingFixture.h"
#include "app/errors/ErrorHandler.h"
#include "database/ReleaseDate.h"
#include "ui/calendar/CalendarPane.h"
#include "ui/calendar/CalendarView.h"
#include "ui/edits/EditHistory.h"
#include "ui/release/ReleaseCalendar.h"
#include "ui/release/ReleaseDialog.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDateEdit>
#include <QLineEdit>

namespace {

const QString all = "artist, release_name, publicly_released, ISRC, UPC, completed, date(release_date, "
                    "'unixepoch', 'localtime'), album";

class ReleaseTest : public BrowsingFixture {
protected:
    void SetUp() override {
        BrowsingFixture::SetUp();
        Stemhaven::ErrorHandler::instance().setPresenter(
            [this](const auto& details) { alerts.append(details.title); });
        QSettings().setValue("hideCompleted", false);
        open();
        select({0});
    }

    void TearDown() override {
        window.reset();
        Stemhaven::ErrorHandler::instance().setPresenter([](const auto& /*details*/) {});
    }

    /// As the user opens it, with what is stored.
    ReleaseDialog& openDialog() {
        child<QPushButton>("releaseButton").click();
        auto& dialog = *window->findChildren<ReleaseDialog*>().constLast();
        QSignalSpy filled(&dialog, &ReleaseDialog::filled);
        EXPECT_TRUE(waitUntil([&] { return !filled.isEmpty(); }));
        QApplication::setActiveWindow(&dialog);
        return dialog;
    }

    template <typename T>
    static T& in(QWidget& dialog, const char* name) {
        return *dialog.findChild<T*>(name);
    }

    static CalendarView& calendar(QWidget& dialog) {
        return in<CalendarPane>(dialog, "releaseCalendar").view();
    }

    bool isGone(const QPointer<ReleaseDialog>& dialog) {
        settle();
        return waitUntil([&] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return dialog.isNull();
        });
    }

    bool save(ReleaseDialog& dialog) {
        const QPointer pointer(&dialog);
        in<QPushButton>(dialog, "doneButton").click();
        return isGone(pointer);
    }

    QString stored() { return values(qPrintable(all)).constFirst(); }

    ReleaseCalendar& openCalendar() {
        trigger(actions().releaseCalendar);
        auto& releases = *window->findChild<ReleaseCalendar*>();
        QApplication::setActiveWindow(&releases);
        return releases;
    }

    QStringList alerts;
};

} // namespace

TEST_F(ReleaseTest, WhatIsEnteredComesBackAndIsOneStep) {
    database.rows("UPDATE projects SET UPC=NULL, album='Old' WHERE project_id=1");
    const QString before = stored();
    auto* dialog = &openDialog();
    EXPECT_EQ(dialog->windowTitle(), "Release Details");
    EXPECT_EQ(in<QDateEdit>(*dialog, "releaseDateEdit").date(), QDate::currentDate());
    EXPECT_EQ(in<QLineEdit>(*dialog, "albumEdit").text(), "Old");
    in<QLineEdit>(*dialog, "releaseNameEdit").setText("It's '%1'");
    in<QLineEdit>(*dialog, "artistNameEdit").setText("Ångström");
    in<QCheckBox>(*dialog, "isCompletedCheckbox").click();
    in<QCheckBox>(*dialog, "publiclyReleasedCheckbox").click();
    auto& upc = in<QLineEdit>(*dialog, "upcEdit");
    QGuiApplication::clipboard()->setText("\r\n 0123-45\n67 89 \n\n");
    upc.paste();
    EXPECT_EQ(upc.text(), " 0123-45 67 89 ");
    auto& date = in<QDateEdit>(*dialog, "releaseDateEdit");
    EXPECT_EQ(date.displayFormat(), "M/d/yyyy");
    date.setDate({1969, 12, 15});
    EXPECT_EQ(calendar(*dialog).currentDate(), QDate(1969, 12, 15));
    calendar(*dialog).setFocus();
    QTest::keyClick(&calendar(*dialog), Qt::Key_Right);
    EXPECT_EQ(date.date(), QDate(1969, 12, 16));
    ASSERT_TRUE(save(*dialog));
    EXPECT_EQ(stored(), "Ångström|It's '%1'|1|| 0123-45 67 89 |1|1969-12-16|Old");
    EXPECT_EQ(
        values("release_date").constFirst(), QString::number(Stemhaven::storedReleaseDate({1969, 12, 16})));

    dialog = &openDialog();
    EXPECT_EQ(in<QLineEdit>(*dialog, "releaseNameEdit").text(), "It's '%1'");
    EXPECT_TRUE(in<QCheckBox>(*dialog, "isCompletedCheckbox").isChecked());
    EXPECT_EQ(in<QDateEdit>(*dialog, "releaseDateEdit").date(), QDate(1969, 12, 16));
    EXPECT_EQ(calendar(*dialog).currentDate(), QDate(1969, 12, 16));
    ASSERT_TRUE(save(*dialog));
    EXPECT_EQ(actions().undo->text(), "Undo Release Details");
    trigger(actions().undo);
    EXPECT_EQ(stored(), before) << "saving what is stored is no step";
    EXPECT_EQ(values("quote(UPC)").constFirst(), "NULL");
    EXPECT_FALSE(actions().undo->isEnabled());
    trigger(actions().redo);
    EXPECT_TRUE(stored().endsWith("1969-12-16|Old"));

    dialog = &openDialog();
    in<QCheckBox>(*dialog, "publiclyReleasedCheckbox").click();
    EXPECT_FALSE(calendar(*dialog).isEnabled());
    ASSERT_TRUE(save(*dialog));
    EXPECT_EQ(values("quote(release_date)").constFirst(), "NULL");
}

TEST_F(ReleaseTest, ARefusedWriteLosesNothingThatWasTyped) {
    auto& dialog = openDialog();
    auto& artist = in<QLineEdit>(dialog, "artistNameEdit");
    auto& done = in<QPushButton>(dialog, "doneButton");
    artist.setText("Typed");
    refuse("UPDATE ON projects");
    done.click();
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible()) << "while it is being written";
    ASSERT_TRUE(waitUntil([&] { return !alerts.isEmpty() && done.isEnabled(); }));
    EXPECT_EQ(alerts, QStringList("Could not save project release details"));
    EXPECT_EQ(log.count("Could not update project release details! "), 1);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(artist.text(), "Typed");

    refuseNoMore();
    database.rows("DELETE FROM projects WHERE project_id=1");
    done.click();
    ASSERT_TRUE(waitUntil([&] { return alerts.size() == 2 && done.isEnabled(); })) << "there is no record";
    EXPECT_EQ(artist.text(), "Typed");
    const QPointer pointer(&dialog);
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_TRUE(isGone(pointer));
}

TEST_F(ReleaseTest, IsOfOneProjectThatHasARecord) {
    select({0, 1});
    EXPECT_FALSE(actions().release->isEnabled());
    EXPECT_FALSE(child<QPushButton>("releaseButton").isEnabled());
    EditHistory history(tasks());
    for (const qint64 project : {-1, 0, 99}) {
        ReleaseDialog dialog(tasks(), history, project);
        database.rows("SELECT 1");
        EXPECT_FALSE(in<QPushButton>(dialog, "doneButton").isEnabled());
        dialog.accept();
        EXPECT_FALSE(history.isWriting());
    }
}

TEST_F(ReleaseTest, TheCalendarShowsMovesAndTakesBack) {
    const QDate today = QDate::currentDate();
    const auto day = [](QDate date) {
        return QString::number(Stemhaven::storedReleaseDate(date));
    };
    database.rows("UPDATE projects SET publicly_released=1, release_name='', release_date=" + day(today));
    database.rows("UPDATE projects SET publicly_released=0 WHERE project_id=2");
    database.rows("UPDATE projects SET release_name='Hit' WHERE project_id=3");
    auto& releases = openCalendar();
    auto& view = *releases.findChild<CalendarView*>();
    ASSERT_TRUE(waitUntil([&] { return view.events().countOn(today) == 2; }));
    EXPECT_EQ(view.events().find(1)->title, "Alpha");
    EXPECT_EQ(view.events().find(3)->title, "Hit");
    EXPECT_EQ(view.events().find(3)->kind, CalendarEvent::Kind::Tentative) << "not completed";

    const QDate tomorrow = today.addDays(1);
    QTest::keyClick(&view, Qt::Key_Tab);
    QTest::keyClick(&view, Qt::Key_Right, Qt::AltModifier);
    settle();
    EXPECT_EQ(values("release_date").constFirst(), day(tomorrow));
    EXPECT_EQ(view.events().find(1)->date, tomorrow);
    EXPECT_EQ(actions().undo->text(), "Undo Release Date");
    QTest::keyClick(&releases, Qt::Key_Z, Qt::ControlModifier);
    ASSERT_TRUE(waitUntil([&] { return view.events().find(1)->date == today; }));
    EXPECT_EQ(values("release_date").constFirst(), day(today));

    refuse("UPDATE ON projects");
    view.makeCurrent(today, 1);
    QTest::keyClick(&view, Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(view.events().find(1)->date, tomorrow);
    ASSERT_TRUE(waitUntil([&] { return view.events().find(1)->date == today; })) << "it goes back";
    EXPECT_EQ(alerts, QStringList("Could not save project release details"));
    refuseNoMore();

    // What others change is read again.
    database.rows("UPDATE projects SET publicly_released=1 WHERE project_id=2");
    emit monitor.projectsDbModified();
    ASSERT_TRUE(waitUntil([&] { return view.events().countOn(today) == 3; }));

    view.makeCurrent(today, 3);
    QTest::keyClick(&view, Qt::Key_Return);
    auto* dialog = releases.findChild<ReleaseDialog*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->projectId(), 3);
    dialog->reject();
}
