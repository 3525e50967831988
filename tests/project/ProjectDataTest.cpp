#include "project/ProjectData.h"

#include "app/errors/IOException.h"
#include "support/LogCapture.h"
#include "support/TestBundle.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <sys/stat.h>

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
    EXPECT_THROW(ProjectData{m_path}, IOException);
}

TEST_F(ProjectDataTest, knowsTheFolderOfTheActiveAlternative) {
    const std::pair<std::int64_t, QString> cases[] = {
        {12, "012"}, {999, "999"}, {-1, "-01"}, {1000, "000"}, {INT64_MIN, "000"}};
    const LogCapture logged;
    TestBundle bundle;
    for (const auto& [variant, folder] : cases) {
        bundle.information["ActiveVariant"] = variant;
        bundle.write(m_path.toStdString());
        const ProjectInformation information(m_informationPath);
        EXPECT_EQ(information.getActiveVariant(), QString::number(variant));
        EXPECT_EQ(information.getActiveAlternativeDir(), folder);
    }
    bundle.information.erase("ActiveVariant");
    bundle.write(m_path.toStdString());
    EXPECT_EQ(ProjectInformation(m_informationPath).getActiveAlternativeDir(), "000");
    EXPECT_EQ(logged.count("C: Improper alternative variant."), 2);
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
    TestBundle bundle;
    bundle.metaData.erase("SongKey");
    bundle.metaData["BeatsPerMinute"] = std::string("%1 %3");
    const ProjectData data = readWritten(bundle);
    EXPECT_EQ(data.numberOfTracks(), 8);
    const auto beginsWith = [](const char* text) {
        return ThrowsMessage<IOException>(StartsWith(text));
    };
    EXPECT_THAT(
        [&] { data.songKey(); }, beginsWith("Could not find project meta data field named 'SongKey'"));
    EXPECT_THAT([&] { data.bpm(); }, beginsWith("Could not retrieve project meta data 'BeatsPerMinute'"));
    const std::string longText(1 << 20, 'x');
    bundle.metaData["SongKey"] = longText;
    bundle.metaData["BeatsPerMinute"] = Plist::Array{longText};
    const ProjectData large = readWritten(bundle);
    EXPECT_THAT([&] { large.songKey(); }, beginsWith("Project meta data 'SongKey' is too long"));
    EXPECT_THAT([&] { large.bpm(); }, beginsWith("Could not retrieve project meta data 'BeatsPerMinute'"));
    bundle.information["LastSavedFrom"] = longText;
    EXPECT_THROW(readWritten(bundle), IOException);
    for (const char* key : {"LastSavedFrom", "VariantNamesV2"}) {
        TestBundle other;
        other.information[key] = std::int64_t{10};
        EXPECT_THROW(readWritten(other), IOException);
    }
}

TEST_F(ProjectDataTest, refusesWhatIsNoPlainFile) {
    const auto read = [&] {
        ProjectInformation information(m_informationPath);
    };
    EXPECT_THROW(read(), IOException);
    ASSERT_TRUE(QDir().mkpath(m_path + "/Resources"));
    ASSERT_EQ(mkfifo(m_informationPath.toUtf8(), 0600), 0);
    EXPECT_THROW(read(), IOException);
    ASSERT_TRUE(QFile::remove(m_informationPath) && QFile::link("/dev/zero", m_informationPath));
    EXPECT_THROW(read(), IOException);
}
