#include "ui/dialogs/AlertQueue.h"

#include "app/errors/Exception.h"
#include "support/Waiting.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

#include <thread>

namespace {

QList<QMessageBox*> shownAlerts() {
    QList<QMessageBox*> shown;
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* box = qobject_cast<QMessageBox*>(widget);
        if (box && box->isVisible())
            shown.append(box);
    }
    return shown;
}

} // namespace

TEST(AlertQueueTest, ShowsErrorsOfAnyThreadOneAtATimeInOrder) {
    using namespace Stemhaven;
    AlertQueue alerts;
    ErrorHandler handler;
    handler.setPresenter(alerts.presenter());
    std::thread reporter([&] {
        int number = 0;
        for (const QtMsgType type : {QtWarningMsg, QtCriticalMsg, QtFatalMsg, QtInfoMsg})
            handler.reportError(QString("Title %1").arg(number++), Exception("<b>why</b>"), type);
    });
    reporter.join();

    for (int number = 0; number < 4; ++number) {
        ASSERT_TRUE(waitUntil([] { return !shownAlerts().isEmpty(); }));
        ASSERT_EQ(shownAlerts().size(), 1);
        const QPointer<QMessageBox> box = shownAlerts().constFirst();
        EXPECT_EQ(box->text(), QString("Title %1").arg(number));
        EXPECT_EQ(box->informativeText(), "<b>why</b>");
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        const bool critical = number == 1 || number == 2;
        EXPECT_EQ(box->icon(), critical ? QMessageBox::Critical : QMessageBox::Warning);
        if (number % 2 == 0)
            box->button(QMessageBox::Ok)->click();
        else
            box->reject();
        EXPECT_TRUE(waitUntil([&] { return box.isNull(); }));
    }
    EXPECT_TRUE(shownAlerts().isEmpty());
}

TEST(AlertQueueTest, DismissingTheOnlyWindowDoesNotEndTheProgram) {
    AlertQueue alerts;
    alerts.add({"title", "message", QtCriticalMsg});
    QSignalSpy lastWindowClosed(qApp, &QGuiApplication::lastWindowClosed);
    constexpr int reachedTheEnd = 7;
    QObject::connect(shownAlerts().constFirst(), &QObject::destroyed, qApp, [] {
        QTimer::singleShot(0, [] { QApplication::exit(reachedTheEnd); });
    });
    QTimer::singleShot(0, [] { shownAlerts().constFirst()->close(); });
    EXPECT_EQ(QApplication::exec(), reachedTheEnd);
    EXPECT_EQ(lastWindowClosed.count(), 0);
}

TEST(AlertQueueTest, SaysTheSameOnceWhileItWaitsAndMayEndWithAlertsLeft) {
    auto alerts = std::make_unique<AlertQueue>();
    const auto presenter = alerts->presenter();
    for (const char* title : {"first", "again", "again", "last", "again", "left", "never shown"})
        presenter({title, "why", QtCriticalMsg});
    for (const char* title : {"first", "again", "last"}) {
        ASSERT_EQ(shownAlerts().size(), 1);
        const QPointer<QMessageBox> box = shownAlerts().constFirst();
        EXPECT_EQ(box->text(), title);
        box->reject();
        ASSERT_TRUE(waitUntil([&] { return box.isNull(); }));
    }
    EXPECT_EQ(shownAlerts().size(), 1);
    alerts.reset();
    presenter({"late", {}, QtCriticalMsg});
    EXPECT_TRUE(shownAlerts().isEmpty());
}
