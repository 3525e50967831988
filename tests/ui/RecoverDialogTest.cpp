#include "ui/recovery/RecoverDialog.h"

#include "WindowFixture.h"
#include "database/RootPathStatements.h"
#include "support/DamagedBundle.h"

#include <QCheckBox>
#include <QDir>
#include <QListWidget>
#include <QProgressBar>

#include <condition_variable>

namespace {

using Damage = DamagedBundle::Damage;

/// Holds up the thread that logs a message with a text, at every such message.
class Gate {
public:
    explicit Gate(const char* text) {
        s_text = text;
        s_isOpen = false;
        s_arrivals = 0;
        s_previous = qInstallMessageHandler(&Gate::pass);
    }

    ~Gate() {
        open();
        qInstallMessageHandler(s_previous);
    }

    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    static bool isReached() {
        const std::lock_guard lock(s_mutex);
        return s_arrivals > 0;
    }

    static void open() {
        const std::lock_guard lock(s_mutex);
        s_isOpen = true;
        s_opened.notify_all();
    }

private:
    static void pass(QtMsgType type, const QMessageLogContext& context, const QString& message) {
        if (message.contains(QLatin1String(s_text))) {
            std::unique_lock lock(s_mutex);
            ++s_arrivals;
            s_opened.wait(lock, [] { return s_isOpen; });
        }
        s_previous(type, context, message);
    }

    inline static std::mutex s_mutex;
    inline static std::condition_variable s_opened;
    inline static const char* s_text = nullptr;
    inline static bool s_isOpen = false;
    inline static int s_arrivals = 0;
    inline static QtMessageHandler s_previous = nullptr;
};

const char* const searching = "Attempt to read ProjectInformation failed";
const char* const repairing = "Beginning project recovery for: ";

/// The dialog over a watched folder with damaged bundles.
class RecoverDialogTest : public WindowFixture {
protected:
    void SetUp() override {
        WindowFixture::SetUp();
        QDir().mkpath(music);
        watch(music + '/');
    }

    void TearDown() override { window.reset(); }

    void watch(const QString& folder) {
        database.rootRows(Stemhaven::RootPathStatements::insert(folder));
        monitor.requestUpdateWatchedDirs();
        monitor.restartMonitoring();
        ASSERT_TRUE(waitUntil([&] {
            return monitor.rootSearchPaths().contains(folder) && monitor.isWatching() &&
                !monitor.isSearching();
        }));
    }

    const DamagedBundle& add(const char* name, Damage damage) {
        bundles.push_back(std::make_unique<DamagedBundle>(
            std::filesystem::path(music.toStdString()) / (std::string(name) + ".logicx"), damage));
        return *bundles.back();
    }

    void openDialog() {
        if (!window)
            open();
        actions().recoverProjects->trigger();
        dialog = window->findChildren<RecoverDialog*>().constLast();
        QApplication::setActiveWindow(dialog);
    }

    template <typename T>
    T& part(const char* name) {
        return *dialog->findChild<T*>(name);
    }

    QString label(const char* name) { return part<QLabel>(name).text(); }

    QPushButton& button(const char* name) { return part<QPushButton>(name); }

    QListWidget& list() { return part<QListWidget>("recoverableList"); }

    QStringList entries() {
        QStringList texts;
        for (int row = 0; row < list().count(); ++row)
            texts += list().item(row)->text().remove(music + '/');
        return texts;
    }

    bool waitForEnd() {
        return waitUntil([&] { return !dialog->isWorking(); });
    }

    bool find() {
        button("findRecoverableButton").click();
        return waitForEnd();
    }

    /// The question or message on top of the dialog.
    QMessageBox* box() {
        QMessageBox* shown = nullptr;
        for (auto* candidate : window->findChildren<QMessageBox*>()) {
            if (candidate->isVisible())
                shown = candidate;
        }
        return shown;
    }

    bool reply(QMessageBox::StandardButton answer) {
        auto* shown = box();
        if (!shown)
            return false;
        shown->button(answer)->click();
        return true;
    }

    bool isGone() {
        return waitUntil([&] {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            return dialog.isNull();
        });
    }

    static bool isWhole(const DamagedBundle& bundle) {
        return !Stemhaven::isProjectRecoverable(bundle.path());
    }

    const QString music = database.folder.path() + "/music";
    std::vector<std::unique_ptr<DamagedBundle>> bundles;
    QPointer<RecoverDialog> dialog;
};

} // namespace

TEST_F(RecoverDialogTest, RepairsWhatIsCheckedAfterAYesAndSaysWhatFailed) {
    add("A", Damage::All);
    const auto& hopeless = add("B", Damage::NoData);
    hopeless.folder("Alternatives/000/ProjectData");
    add("C", Damage::NoInformation);
    const auto& left = add("D", Damage::EmptyList);
    // Its lists are real ones.
    TestBundle().write(music.toStdString() + "/E.logicx");
    QFile::remove(music + "/E.logicx/Resources/ProjectInformation.plist");
    openDialog();
    EXPECT_EQ(dialog->windowTitle(), "Project Recovery");
    EXPECT_EQ(label("statusLabel"), "Ready to Find Recoverable Projects...");
    ASSERT_TRUE(find());
    EXPECT_EQ(label("statusLabel"), "Found 5 recoverable projects!");
    EXPECT_EQ(label("noteLabel"), "Projects looked at: 5.");
    EXPECT_EQ(entries(), QStringList({"A.logicx", "B.logicx", "C.logicx", "D.logicx", "E.logicx"}));
    EXPECT_EQ(
        label("detailsLabel"),
        "Alternative 000 gets the files of its automatic backup 00. A new ProjectInformation.plist is "
        "written, with alternative 000 active.");
    EXPECT_FALSE(button("recoverButton").isEnabled()) << "nothing is checked";

    // All but one, with the keyboard.
    EXPECT_TRUE(list().hasFocus());
    QTest::keyClick(&part<QCheckBox>("selectAllCheckbox"), Qt::Key_Space);
    EXPECT_EQ(part<QCheckBox>("selectAllCheckbox").checkState(), Qt::Checked);
    list().setCurrentRow(3);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(part<QCheckBox>("selectAllCheckbox").checkState(), Qt::PartiallyChecked);
    QTest::keyClick(&list(), Qt::Key_Return);
    ASSERT_NE(box(), nullptr);
    EXPECT_EQ(box()->text(), "Do you want Stemhaven to recover 4 project(s)?");
    EXPECT_EQ(box()->defaultButton(), box()->button(QMessageBox::No));
    const auto before = bundles[0]->everything();
    const auto untouched = left.everything();
    ASSERT_TRUE(reply(QMessageBox::No));
    EXPECT_FALSE(dialog->isWorking());
    EXPECT_EQ(bundles[0]->everything(), before);

    button("recoverButton").click();
    ASSERT_TRUE(reply(QMessageBox::Yes));
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(
        entries(),
        QStringList(
            {"A.logicx (Recovered)", "B.logicx (Failed)", "C.logicx (Recovered)", "D.logicx",
             "E.logicx (Recovered)"}));
    EXPECT_EQ(label("statusLabel"), "Recovered 3/4 projects");
    EXPECT_EQ(part<QProgressBar>("progressBar").value(), 75);
    ASSERT_NE(box(), nullptr);
    EXPECT_EQ(box()->text(), "Stemhaven recovered 3 project(s)!");
    ASSERT_TRUE(reply(QMessageBox::Ok));
    EXPECT_TRUE(isWhole(*bundles[0]) && isWhole(*bundles[2]));
    EXPECT_EQ(left.everything(), untouched);
    EXPECT_EQ(log.count("C: Error occurred during project recovery!"), 1);
    EXPECT_EQ(
        label("detailsLabel"),
        "Could not be recovered: Could not remove old, empty, or corrupt ProjectData! Recovery failed...");

    EXPECT_TRUE(waitUntil([&] { return names() == QStringList("E"); })) << "the table follows";

    // What is recovered stays so; the rest can be tried again.
    list().setCurrentRow(0);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(list().item(0)->checkState(), Qt::Unchecked);
    part<QCheckBox>("selectAllCheckbox").click();
    hopeless.remove("Alternatives/000/ProjectData");
    button("recoverButton").click();
    EXPECT_EQ(box()->text(), "Do you want Stemhaven to recover 2 project(s)?");
    ASSERT_TRUE(reply(QMessageBox::Yes));
    ASSERT_TRUE(waitForEnd());
    EXPECT_TRUE(isWhole(hopeless) && isWhole(left));
    ASSERT_TRUE(reply(QMessageBox::Ok));
    EXPECT_FALSE(button("recoverButton").isEnabled() || part<QCheckBox>("selectAllCheckbox").isEnabled());
}

TEST_F(RecoverDialogTest, SaysWhyNothingIsListed) {
    add("Whole", Damage::None);
    const QString gone = database.folder.path() + "/not there";
    watch(gone + "\n/");
    openDialog();
    ASSERT_TRUE(find());
    EXPECT_EQ(label("statusLabel"), "Found 0 recoverable projects!");
    EXPECT_EQ(
        list().viewport()->findChild<QLabel*>()->text(),
        "None of your projects lacks a file that Stemhaven could restore.");
    EXPECT_TRUE(list().viewport()->findChild<QLabel*>()->isVisible());
    EXPECT_EQ(
        label("noteLabel"), "Projects looked at: 1. Could not be looked at: " + gone + QChar(0xFFFD) + '/');
    EXPECT_TRUE(button("findRecoverableButton").hasFocus());
}

TEST_F(RecoverDialogTest, ASearchIsCancelledOrClosedAtOnce) {
    add("A", Damage::CorruptInformation);
    add("B", Damage::CorruptInformation);
    {
        const Gate gate(searching);
        openDialog();
        button("findRecoverableButton").click();
        ASSERT_TRUE(waitUntil(&Gate::isReached));
        EXPECT_EQ(label("statusLabel"), "Searching for recoverable projects...");
        for (const char* name : {"findRecoverableButton", "recoverButton", "cancelButton"})
            EXPECT_FALSE(button(name).isEnabled()) << name;
        EXPECT_TRUE(button("stopButton").hasFocus());
        QTest::keyClick(&button("stopButton"), Qt::Key_Return);
        Gate::open();
        ASSERT_TRUE(waitForEnd());
        EXPECT_EQ(label("statusLabel"), "Found 1 recoverable projects!");
        EXPECT_EQ(
            label("noteLabel"), "Projects looked at: 1. The search was cancelled, so there may be more.");
    }
    const Gate gate(searching);
    button("findRecoverableButton").click();
    ASSERT_TRUE(waitUntil(&Gate::isReached));
    QTest::keyClick(dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    // It is shown again while it lives.
    const RecoverDialog* closed = dialog;
    openDialog();
    EXPECT_EQ(dialog, closed);
    EXPECT_TRUE(dialog->isVisible());
    dialog->close();
    Gate::open();
    EXPECT_TRUE(isGone());
}

TEST_F(RecoverDialogTest, ARepairEndsAfterTheProjectThatItIsAt) {
    for (const char* name : {"A", "B", "C"})
        add(name, Damage::All);
    const auto untouched = bundles[1]->everything();
    const auto start = [&] {
        button("recoverButton").click();
        return reply(QMessageBox::Yes) && waitUntil(&Gate::isReached);
    };
    openDialog();
    ASSERT_TRUE(find());
    part<QCheckBox>("selectAllCheckbox").click();
    {
        const Gate gate(repairing);
        ASSERT_TRUE(start());
        EXPECT_EQ(button("stopButton").text(), "&Stop");
        button("stopButton").click();
        EXPECT_EQ(label("statusLabel"), "Stopping after this project...");
        Gate::open();
        ASSERT_TRUE(waitForEnd());
        EXPECT_EQ(label("statusLabel"), "Recovered 1/3 projects");
        EXPECT_EQ(box()->informativeText(), "2 project(s) were left as they were.");
        ASSERT_TRUE(reply(QMessageBox::Ok));
    }
    EXPECT_TRUE(isWhole(*bundles[0]));
    EXPECT_EQ(bundles[1]->everything(), untouched);

    // What was not tried is still checked. The end of the program waits for the project, and no longer.
    const Gate gate(repairing);
    ASSERT_TRUE(start());
    dialog->close();
    EXPECT_FALSE(dialog->isVisible());
    std::thread opener([] { Gate::open(); });
    window.reset();
    opener.join();
    EXPECT_TRUE(isWhole(*bundles[1]));
    EXPECT_EQ(bundles[2]->everything(), untouched);
}
