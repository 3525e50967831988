#include "project/ProjectInformation.h"

#include "app/errors/IOException.h"
#include "plist/PropertyList.h"
#include "project/LoggedLines.h"
#include "support/TestBundle.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <optional>

using namespace Stemhaven;

class ProjectInformationTest : public testing::Test {
protected:
    void write(const Plist::Value& root, TestBundle::Form form = TestBundle::Form::Binary) const {
        TestBundle::writeList(m_path.toStdString(), root, form);
    }

    ProjectInformation read() const { return ProjectInformation(m_path); }

    /// The message of the IOException that reading throws; empty when it throws none.
    std::string failure() const {
        try {
            read();
        } catch (const IOException& error) {
            return error.what();
        }
        return {};
    }

    const QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath("ProjectInformation.plist");
};

TEST_F(ProjectInformationTest, knowsTheActiveAlternative) {
    struct Case {
        std::optional<std::int64_t> held;
        QString variant, folder;
        std::string logged;
    };

    const std::string improper =
        "C Improper alternative variant. Out of expected range 0-999. ActiveVariant:  \"";
    const Case cases[] = {
        {std::nullopt, "0", "000", ""},
        {0, "0", "000", ""},
        {12, "12", "012", ""},
        {999, "999", "999", ""},
        {-1, "-1", "-01", ""},
        {1000, "1000", "000", improper + "1000\""},
        {INT64_MIN, "-9223372036854775808", "000", improper + "-9223372036854775808\""},
    };
    for (const Case& c : cases) {
        for (const auto form : {TestBundle::Form::Binary, TestBundle::Form::Xml}) {
            TestBundle bundle;
            bundle.information.erase("ActiveVariant");
            if (c.held)
                bundle.information["ActiveVariant"] = *c.held;
            write(bundle.information, form);
            const LoggedLines logged;
            const ProjectInformation information = read();
            EXPECT_EQ(information.getActiveVariant(), c.variant);
            EXPECT_EQ(information.getActiveAlternativeDir(), c.folder);
            EXPECT_EQ(logged.text(), c.logged);
        }
    }
}

TEST_F(ProjectInformationTest, countsAlternativesFromOne) {
    TestBundle bundle;
    Plist::Dictionary names;
    for (const qint64 count : {1, 1, 2, 3}) {
        bundle.information["VariantNamesV2"] = names;
        write(bundle.information);
        EXPECT_EQ(read().getAlternativesCount(), count);
        names[std::to_string(names.size())] = std::string("name");
    }
    bundle.information.erase("VariantNamesV2");
    write(bundle.information);
    EXPECT_EQ(read().getAlternativesCount(), 1);
}

TEST_F(ProjectInformationTest, takesTheVersionAndTheTimeOfTheFile) {
    TestBundle bundle;
    bundle.information["LastSavedFrom"] = std::string("L\u00F6gic %1");
    write(bundle.information);
    const auto modified = QDateTime::fromSecsSinceEpoch(1'000'000'000);
    QFile file(m_path);
    ASSERT_TRUE(file.open(QFile::ReadWrite) && file.setFileTime(modified, QFile::FileModificationTime));
    EXPECT_EQ(read().getLastModifiedAt(), modified);
    EXPECT_EQ(read().getLastSavedWithVersion(), QString("L\u00F6gic %1"));
}

TEST_F(ProjectInformationTest, namesTheEntryThatIsMissingOrOfAnotherType) {
    const auto missing = [](const std::string& key) {
        return "Could not find project meta data field named '" + key + "'";
    };
    const auto mismatch = [](const std::string& key, const std::type_info& wanted,
                             const std::type_info& held) {
        return "Could not retrieve project information '" + key +
            "'. Bad any cast to type: " + wanted.name() + " from " + held.name();
    };
    const auto& integer = typeid(std::int64_t);
    const auto& text = typeid(std::string);

    struct Case {
        std::string key;
        Plist::Value value;
        std::string message;
    };

    const Case cases[] = {
        {"LastSavedFrom", {}, missing("LastSavedFrom")},
        {"LastSavedFrom", std::int64_t{10}, mismatch("LastSavedFrom", text, integer)},
        {"ActiveVariant", std::string("%3"), mismatch("ActiveVariant", integer, text)},
        {"ActiveVariant", 1.0, mismatch("ActiveVariant", integer, typeid(double))},
        {"VariantNamesV2", std::string(), mismatch("VariantNamesV2", typeid(Plist::Dictionary), text)},
    };
    for (const Case& c : cases) {
        TestBundle bundle;
        bundle.information.erase(c.key);
        if (c.value.has_value())
            bundle.information[c.key] = c.value;
        write(bundle.information);
        EXPECT_EQ(failure(), c.message);
    }
}

TEST_F(ProjectInformationTest, refusesWhatIsNoPlainFile) {
    EXPECT_EQ(failure(), "File not foundFile: " + m_path.toStdString());

    const std::string couldNotOpen = "Could not open file.File: " + m_path.toStdString();
    const QByteArray path = m_path.toUtf8();
    ASSERT_EQ(mkfifo(path, 0600), 0);
    EXPECT_EQ(failure(), couldNotOpen);
    ASSERT_TRUE(QFile::remove(m_path));
    ASSERT_EQ(mkdir(path, 0700), 0);
    EXPECT_EQ(failure(), couldNotOpen);
    ASSERT_EQ(rmdir(path), 0);
    ASSERT_TRUE(QFile::link("/dev/zero", m_path));
    EXPECT_EQ(failure(), couldNotOpen);
}

TEST_F(ProjectInformationTest, refusesWhatIsNoDictionary) {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("bplist00"), QByteArray("<plist><dict>"), QByteArray(100'000, '<'),
          QByteArray("bplist00") + QByteArray(40, '\xFF')}) {
        QFile file(m_path);
        ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        EXPECT_THROW(read(), Plist::Error) << bytes.left(20).toStdString();
    }
    write(Plist::Array{});
    EXPECT_THROW(read(), std::bad_cast);
}
