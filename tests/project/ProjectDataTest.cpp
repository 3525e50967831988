#include "project/ProjectData.h"

#include "app/errors/IOException.h"
#include "support/LogCapture.h"
#include "support/TestBundle.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <optional>

using namespace Stemhaven;
using testing::StartsWith;
using testing::ThrowsMessage;

class ProjectDataTest : public testing::Test {
protected:
    ProjectData readWritten(const TestBundle& bundle) const {
        bundle.write(m_path.toStdString());
        return ProjectData(m_path);
    }

    const QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath("My.Mix %2.logicx");
    const QString m_informationPath = m_path + "/Resources/ProjectInformation.plist";
};

TEST_F(ProjectDataTest, readsBothLists) {
    TestBundle bundle;
    bundle.metaData["SongKey"] = std::string("G\u266D");
    bundle.information["LastSavedFrom"] = std::string("L\u00F6gic %1");
    for (const auto form : {TestBundle::Form::Binary, TestBundle::Form::Xml}) {
        bundle.form = form;
        const ProjectData data = readWritten(bundle);
        EXPECT_EQ(data.bpm(), 120.0);
        EXPECT_EQ(data.numberOfTracks(), 8);
        EXPECT_EQ(data.sampleRate(), 48000);
        EXPECT_EQ(data.songKey(), QString("G\u266D"));
        EXPECT_EQ(data.songGenderKey(), "minor");
        EXPECT_EQ(data.songSignatureNumerator(), 3);
        EXPECT_EQ(data.songSignatureDenominator(), 4);
        EXPECT_EQ(data.logicVersion(), QString("L\u00F6gic %1"));
        EXPECT_EQ(data.projectExtension(), "logicx");
    }
    bundle.metaData["BeatsPerMinute"] = 92.5;
    EXPECT_EQ(readWritten(bundle).bpm(), 92.5);

    const auto modified = QDateTime::fromSecsSinceEpoch(1'000'000'000);
    QFile file(m_informationPath);
    ASSERT_TRUE(file.open(QFile::ReadWrite) && file.setFileTime(modified, QFile::FileModificationTime));
    EXPECT_EQ(ProjectData(m_path).lastModified(), modified);
}

TEST_F(ProjectDataTest, readsTheActiveAlternative) {
    TestBundle bundle;
    bundle.metaData["NumberOfTracks"] = std::int64_t{1};
    bundle.write(m_path.toStdString());
    bundle.metaData["NumberOfTracks"] = std::int64_t{2};
    bundle.information["ActiveVariant"] = std::int64_t{2};
    bundle.alternative = "002";
    EXPECT_EQ(readWritten(bundle).numberOfTracks(), 2);

    const QString metaData = m_path + "/Alternatives/002/MetaData.plist";
    ASSERT_TRUE(QFile::remove(metaData));
    EXPECT_THAT(
        [&] { ProjectData data(m_path); },
        ThrowsMessage<IOException>("Could not open file.File: " + metaData.toStdString()));
}

TEST_F(ProjectDataTest, knowsTheFolderOfTheActiveAlternative) {
    const QString improper =
        "C: Improper alternative variant. Out of expected range 0-999. ActiveVariant:  \"%1\"";

    const std::tuple<std::optional<std::int64_t>, QString, QString, bool> cases[] = {
        {std::nullopt, "0", "000", false}, {12, "12", "012", false},
        {999, "999", "999", false},        {-1, "-1", "-01", false},
        {1000, "1000", "000", true},       {INT64_MIN, "-9223372036854775808", "000", true},
    };

    for (const auto& [held, variant, folder, isLogged] : cases) {
        SCOPED_TRACE(variant.toStdString());
        TestBundle bundle;
        bundle.information.erase("ActiveVariant");
        if (held)
            bundle.information["ActiveVariant"] = *held;
        bundle.write(m_path.toStdString());
        const LogCapture logged;
        const ProjectInformation information(m_informationPath);
        EXPECT_EQ(information.getActiveVariant(), variant);
        EXPECT_EQ(information.getActiveAlternativeDir(), folder);
        EXPECT_EQ(logged.messages(), isLogged ? QStringList(improper.arg(variant)) : QStringList());
    }
}

TEST_F(ProjectDataTest, countsAlternativesFromOne) {
    TestBundle bundle;
    bundle.information.erase("VariantNamesV2");
    EXPECT_EQ(readWritten(bundle).alternativeCount(), 1);
    Plist::Dictionary names;
    for (const qint64 count : {1, 1, 2, 3}) {
        bundle.information["VariantNamesV2"] = names;
        EXPECT_EQ(readWritten(bundle).alternativeCount(), count);
        names[std::to_string(names.size())] = std::string("name");
    }
}

TEST_F(ProjectDataTest, namesTheEntryThatIsMissingOrOfAnotherTypeWhenItIsAskedFor) {
    const std::string missing = "Could not find project meta data field named ";
    const std::string mismatch = "Could not retrieve project ";
    const std::int64_t integer = 10;
    const std::string text = "%1 %3";
    const auto information = &TestBundle::information;
    const auto metaData = &TestBundle::metaData;

    using List = Plist::Dictionary TestBundle::*;
    const std::tuple<List, std::string, Plist::Value, std::string> cases[] = {
        {information, "LastSavedFrom", {}, missing},
        {information, "LastSavedFrom", integer, mismatch + "information "},
        {information, "ActiveVariant", text, mismatch + "information "},
        {information, "VariantNamesV2", text, mismatch + "information "},
        {metaData, "SongKey", {}, missing},
        {metaData, "SampleRate", text, mismatch + "meta data "},
        {metaData, "BeatsPerMinute", text, mismatch + "meta data "},
    };

    for (const auto& [list, key, value, beginning] : cases) {
        TestBundle bundle;
        (bundle.*list).erase(key);
        if (value.has_value())
            (bundle.*list)[key] = value;
        bundle.write(m_path.toStdString());
        const auto askForAll = [&] {
            const ProjectData data(m_path);
            EXPECT_EQ(data.numberOfTracks(), 8);
            data.songKey();
            data.sampleRate();
            data.bpm();
        };
        EXPECT_THAT(askForAll, ThrowsMessage<IOException>(StartsWith(beginning + "'" + key + "'")));
    }
}

TEST_F(ProjectDataTest, refusesWhatIsNoPlainFileOrNoDictionary) {
    const auto read = [&] {
        ProjectInformation information(m_informationPath);
    };
    const std::string path = m_informationPath.toStdString();
    EXPECT_THAT(read, ThrowsMessage<IOException>("File not foundFile: " + path));

    ASSERT_TRUE(QDir().mkpath(m_path + "/Resources"));
    const auto couldNotOpen = ThrowsMessage<IOException>("Could not open file.File: " + path);
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_THAT(read, couldNotOpen);
    ASSERT_TRUE(QFile::remove(m_informationPath) && QFile::link("/dev/zero", m_informationPath));
    EXPECT_THAT(read, couldNotOpen);

    ASSERT_TRUE(QFile::remove(m_informationPath));
    TestBundle::writeList(path, Plist::Array{});
    EXPECT_THROW(read(), std::bad_cast);
    ASSERT_TRUE(QFile::resize(m_informationPath, 8));
    EXPECT_THROW(read(), Plist::Error);
}
