#include "BrowsingFixture.h"

#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QTranslator>

namespace {

/// Menus and dialogs in both languages.
class MnemonicsTest : public BrowsingFixture, public testing::WithParamInterface<bool> {
protected:
    void SetUp() override {
        BrowsingFixture::SetUp();
        if (GetParam()) {
            ASSERT_TRUE(translator.load(":/i18n/Stemhaven_de_DE"));
            QApplication::installTranslator(&translator);
        }
        open();
        select({0});
    }

    void TearDown() override {
        window.reset();
        QApplication::removeTranslator(&translator);
    }

    static void expectNoneTwice(const QStringList& texts) {
        QHash<QKeySequence, QString> known;
        for (const QString& text : texts) {
            const QKeySequence key = QKeySequence::mnemonic(text);
            if (key.isEmpty())
                continue;
            EXPECT_FALSE(known.contains(key)) << qPrintable(known.value(key) + " and " + text);
            known.insert(key, text);
        }
    }

    void expectNoneTwiceIn(const QList<QAction*>& actions) {
        QStringList texts;
        for (QAction* action : actions) {
            texts.append(action->text());
            if (action->menu()) {
                emit action->menu()->aboutToShow();
                expectNoneTwiceIn(action->menu()->actions());
            }
        }
        expectNoneTwice(texts);
    }

    QTranslator translator;
};

INSTANTIATE_TEST_SUITE_P(EnglishAndGerman, MnemonicsTest, testing::Bool());

} // namespace

TEST_P(MnemonicsTest, StandForOneActionOfEachMenu) {
    expectNoneTwiceIn(window->menuBar()->actions());
    emit table().customContextMenuRequested({5, 5});
    auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(popup, nullptr);
    expectNoneTwiceIn(popup->actions());
    popup->close();
}

TEST_P(MnemonicsTest, StandForOneButtonOfEachQuestionInTheUsersLanguage) {
    const std::function<void()> questions[] = {
        [this] { actions().ignore->trigger(); }, [this] { actions().deleteRecord->trigger(); },
        [this] {
            QTest::keyClick(&slider(), Qt::Key_End);
        }};
    for (const auto& ask : questions) {
        ask();
        auto* question = window->findChild<QMessageBox*>();
        ASSERT_NE(question, nullptr);
        QStringList texts;
        for (const auto* button : question->buttons()) {
            texts.append(button->text());
            // The system's own texts are not in the language of the program.
            EXPECT_FALSE(GetParam() && QStringList({"&Yes", "&No", "Cancel"}).contains(button->text()))
                << qPrintable(button->text());
        }
        expectNoneTwice(texts);
        delete question;
    }
}
