#include "project/ProjectData.h"

#include "app/errors/IOException.h"
#include "support/TestBundle.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace Stemhaven;
using testing::ThrowsMessage;

class ProjectDataTest : public testing::Test {
protected:
    ProjectData readWritten(const TestBundle& bundle) const {
        bundle.write(m_path.toStdString());
        return ProjectData(m_path);
    }

    const QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath("My.Mix %2.logicx");
};

TEST_F(ProjectDataTest, readsBothLists) {
    TestBundle bundle;
    bundle.metaData["SongKey"] = std::string("G\u266D");
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
        EXPECT_EQ(data.alternativeCount(), 1);
        EXPECT_EQ(data.logicVersion(), "Logic Pro 10.8.1 (6017)");
        EXPECT_EQ(data.projectExtension(), "logicx");
        EXPECT_TRUE(data.lastModified().isValid());
    }
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

TEST_F(ProjectDataTest, takesTemposOfEitherNumber) {
    TestBundle bundle;
    bundle.metaData["BeatsPerMinute"] = 92.5;
    EXPECT_EQ(readWritten(bundle).bpm(), 92.5);
    bundle.metaData["BeatsPerMinute"] = std::string("120");
    EXPECT_THROW(readWritten(bundle).bpm(), IOException);
}

TEST_F(ProjectDataTest, failsOnlyWhereAnEntryIsAskedFor) {
    TestBundle bundle;
    bundle.metaData["SampleRate"] = std::string("%1 %2");
    bundle.metaData.erase("SongKey");
    const ProjectData data = readWritten(bundle);
    EXPECT_EQ(data.numberOfTracks(), 8);
    const std::string mismatch = std::string("Could not retrieve project meta data 'SampleRate'. ") +
        "Bad any cast to type: " + typeid(std::int64_t).name() + " from " + typeid(std::string).name();
    EXPECT_THAT([&] { data.sampleRate(); }, ThrowsMessage<IOException>(mismatch));
    EXPECT_THAT(
        [&] { data.songKey(); },
        ThrowsMessage<IOException>("Could not find project meta data field named 'SongKey'"));
}
