#include "ui/Translation.h"

#include <QTranslator>

#include <gtest/gtest.h>

TEST(TranslationTest, TakesTheFirstLanguageThatThereAreTextsIn) {
    const std::pair<QStringList, bool> cases[] = {
        {{"de-DE", "de"}, true},
        {{"de-AT"}, true},
        {{"de"}, true},
        {{"de-CH", "en"}, true},
        {{"fr-FR", "de"}, true},
        {{"en", "de"}, false},
        {{"en-GB", "de-AT"}, false},
        {{"fr", "en-US", "de"}, false},
        {{"C"}, false},
        {{}, false}};
    for (const auto& [languages, isGerman] : cases) {
        QTranslator translator;
        EXPECT_EQ(loadTranslation(translator, languages), isGerman) << qPrintable(languages.join(':'));
        EXPECT_EQ(translator.translate("ProjectsPane", "Projects") == "Projekte", isGerman);
    }
}
