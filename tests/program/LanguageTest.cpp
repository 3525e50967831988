#include "program/Profile.h"

#include <gtest/gtest.h>

TEST(Language, IsTheUsersWhereThereIsATranslationAndElseEnglish) {
    Profile profile;
    profile.start();
    const std::pair<const char*, const char*> cases[] = {
        {"de", "Stemhaven läuft bereits."},
        {"tr:de", "Stemhaven läuft bereits."},
        {"tr", "Stemhaven is already running."},
        {"ja", "Stemhaven is already running."}};
    for (const auto& [language, text] : cases) {
        profile.setLanguage(language);
        // Refused, and says so, while another start uses the profile.
        EXPECT_EQ(profile.runToEnd({"--screenshot", profile.picture()}), 1);
        EXPECT_TRUE(profile.output().contains(text)) << language << ": " << profile.output().toStdString();
    }
    EXPECT_EQ(profile.terminate(), 0) << profile.output().toStdString();
}
