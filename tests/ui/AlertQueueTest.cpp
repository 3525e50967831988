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
    const QtMsgType types[] = {QtWarningMsg, QtCriticalMsg, QtFatalMsg, QtInfoMsg};
    std::thread reporter([&] {
        int number = 0;
        for (const QtMsgType type : types) {
            handler.reportError(
                QStringLiteral("Title %1").arg(number++), Exception(QStringLiteral("<b>why</b>")), type);
        }
    });
    reporter.join();

    for (int number = 0; number < 4; ++number) {
        ASSERT_TRUE(waitUntil([] { return !shownAlerts().isEmpty(); }));
        ASSERT_EQ(shownAlerts().size(), 1);
        const QPointer<QMessageBox> box = shownAlerts().constFirst();
        EXPECT_EQ(box->text(), QStringLiteral("Title %1").arg(number));
        EXPECT_EQ(box->informativeText(), QStringLiteral("<b>why</b>"));
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
    alerts.add({QStringLiteral("title"), QStringLiteral("message"), QtCriticalMsg});
    QSignalSpy lastWindowClosed(qApp, &QGuiApplication::lastWindowClosed);
    constexpr int reachedTheEnd = 7;
    QObject::connect(shownAlerts().constFirst(), &QObject::destroyed, qApp, [] {
        QTimer::singleShot(0, [] { QApplication::exit(reachedTheEnd); });
    });
    QTimer::singleShot(0, [] { shownAlerts().constFirst()->close(); });
    EXPECT_EQ(QApplication::exec(), reachedTheEnd);
    EXPECT_EQ(lastWindowClosed.count(), 0);
}

TEST(AlertQueueTest, SaysTheSameOnceWhileItWaits) {
    AlertQueue alerts;
    for (const char* title : {"first", "again", "again", "last", "again"})
        alerts.add({QString::fromLatin1(title), QStringLiteral("why"), QtCriticalMsg});
    QStringList titles;
    while (!shownAlerts().isEmpty()) {
        const QPointer<QMessageBox> box = shownAlerts().constFirst();
        titles.append(box->text());
        box->reject();
        ASSERT_TRUE(waitUntil([&] { return box.isNull(); }));
    }
    EXPECT_EQ(titles, (QStringList{"first", "again", "last"}));
}

TEST(AlertQueueTest, MayEndWithAlertsLeft) {
    Stemhaven::ErrorHandler::Presenter presenter;
    {
        AlertQueue alerts;
        presenter = alerts.presenter();
        presenter({QStringLiteral("shown"), {}, QtCriticalMsg});
        presenter({QStringLiteral("waiting"), {}, QtCriticalMsg});
        EXPECT_EQ(shownAlerts().size(), 1);
    }
    presenter({QStringLiteral("late"), {}, QtCriticalMsg});
    EXPECT_TRUE(shownAlerts().isEmpty());
}
