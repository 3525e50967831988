#include "ui/wizard/Wizard.h"

#include "ProjectsFixture.h"
#include "database/RootPathStatements.h"
#include "monitor/ProjectMonitor.h"
#include "support/TestBundle.h"
#include "ui/folders/WatchedFoldersModel.h"

#include <QFile>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTextBrowser>

#include <optional>

namespace RootPathStatements = Stemhaven::RootPathStatements;
namespace SettingsKeys = Stemhaven::SettingsKeys;

namespace {

class WizardTest : public ProjectsFixture {
protected:
    void open() {
        QFile file(agreement);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("Be <b>fair</b> & “kind”.");
        file.close();
        show();
    }

    void show() {
        wizard.emplace(tasks(), monitor, agreement);
        wizard->show();
        QApplication::setActiveWindow(&*wizard);
        database.rootRows("SELECT 1");
    }

    template <typename T>
    T& child(const char* name = nullptr) {
        return *wizard->findChild<T*>(name);
    }

    QPushButton& next() { return child<QPushButton>("nextButton"); }

    QPushButton& previous() { return child<QPushButton>("previousButton"); }

    bool answer(QMessageBox::StandardButton button) {
        auto* question = wizard->findChild<QMessageBox*>();
        if (question)
            question->button(button)->click();
        // It frees itself later.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return question != nullptr;
    }

    static bool isCompleted() { return QSettings().value(SettingsKeys::completedWizard).toBool(); }

    const QString agreement = database.folder.path() + "/eula.txt";
    Stemhaven::ProjectMonitor monitor{tasks()};
    std::optional<Wizard> wizard;
};

} // namespace

TEST_F(WizardTest, LeadsForthAndBackAndIsCompletedOnceOneSaysSo) {
    open();
    EXPECT_EQ(child<QTextBrowser>("eulaBrowser").toPlainText(), "Be <b>fair</b> & “kind”.");
    const auto texts = [&] {
        return QStringList{
            previous().text(), next().text(), child<QLabel>("progressLabel").text(),
            QString::number(child<QProgressBar>("progressBar").value())};
    };
    EXPECT_EQ(texts(), QStringList({"&Close", "A&gree", "1/2", "1"}));
    // By keyboard alone.
    QTest::keyClick(wizard->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(wizard->currentPage(), WizardTab::Monitor);
    EXPECT_EQ(texts(), QStringList({"&Previous", "&Finish", "2/2", "2"}));
    QTest::keyClick(wizard->focusWidget(), Qt::Key_P, Qt::AltModifier);
    EXPECT_TRUE(waitUntil([&] { return wizard->currentPage() == WizardTab::Agreement; }));

    wizard->next();
    wizard->next();
    ASSERT_TRUE(answer(QMessageBox::No));
    EXPECT_TRUE(wizard->isVisible());
    EXPECT_FALSE(isCompleted());
    wizard->next();
    ASSERT_TRUE(answer(QMessageBox::Yes));
    EXPECT_EQ(wizard->result(), QDialog::Accepted);
    EXPECT_TRUE(isCompleted());

    open();
    previous().click();
    EXPECT_EQ(wizard->result(), QDialog::Rejected);
    EXPECT_FALSE(wizard->isVisible());
}

TEST_F(WizardTest, GoesNoFurtherWithoutAnAgreement) {
    show();
    EXPECT_FALSE(next().isEnabled());
    wizard->next();
    QTest::keyClick(&child<QTabWidget>(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(wizard->currentPage(), WizardTab::Agreement);
    EXPECT_TRUE(
        child<QTextBrowser>("eulaBrowser").toPlainText().startsWith("Missing EULA file! Cannot proceed..."));
    // A folder is there but cannot be read as a file, whoever runs this.
    ASSERT_TRUE(QDir().mkdir(agreement));
    show();
    EXPECT_FALSE(next().isEnabled());
    EXPECT_TRUE(child<QTextBrowser>("eulaBrowser")
                    .toPlainText()
                    .startsWith("Could not read EULA file: " + agreement));
}

TEST_F(WizardTest, KeepsTheMonitorStoppedAndSearchesTheFoldersAtItsEnd) {
    const QString music = database.folder.path() + "/music";
    TestBundle().write((music + "/Song.logicx").toStdString());
    database.rootRows(RootPathStatements::insert(music));
    open();
    QSignalSpy started(&monitor, &Stemhaven::ProjectMonitor::wasStarted);
    // The start-up's chain comes to this only now.
    monitor.updateWatchedDirs(true);
    ASSERT_TRUE(waitUntil([&] { return !started.isEmpty(); }));
    EXPECT_FALSE(monitor.isWatching());
    EXPECT_TRUE(waitUntil([&] { return child<QListView>().model()->rowCount() == 1; }));
    EXPECT_EQ(
        child<QListView>().model()->index(0, 0).data(WatchedFoldersModel::DetailsRole).toString(),
        "Not watched yet");

    wizard->next();
    wizard->next();
    EXPECT_EQ(wizard->result(), QDialog::Accepted);
    EXPECT_TRUE(monitor.isSearching());
    EXPECT_TRUE(waitUntil([&] { return monitor.isWatching(); }));
    EXPECT_EQ(database.rows("SELECT name FROM projects"), QStringList("Song"));
}
