#include "ListBytes.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

using Plist::Array;
using Plist::Dictionary;
using Plist::Value;

const std::string data = TEST_DATA_DIR "/plist/";

std::string scratch(const std::string& name) {
    return std::filesystem::temp_directory_path() / name;
}

std::string fileError(const std::string& fileName) {
    Dictionary root;
    try {
        Plist::readPlist(fileName.c_str(), root);
    } catch (const Plist::Error& error) {
        return error.what();
    }
    return "read";
}

TEST(File, BothFormsOfAnotherWriterReadTheSame) {
    Dictionary root;
    Plist::readPlist((data + "types-binary.plist").c_str(), root);
    EXPECT_EQ(binary(root), binary(read(contentsOf(data + "types-xml.plist"))));

    const auto date = std::any_cast<Plist::Date>(root["date before the epoch of the binary form"]);
    EXPECT_EQ(date, Plist::Date(6, 5, 1987, 4, 3, 2, true));
    EXPECT_EQ(std::any_cast<std::string>(root["outside the basic plane"]), "\U0001F3B9 \u20ac");
    EXPECT_EQ(std::any_cast<std::string>(root["\u00fcml\u00e4ut"]), "Gr\u00f6\u00dfe");
    EXPECT_EQ(std::any_cast<Plist::Data>(root["bytes"]).at(255), '\xFF');
    EXPECT_EQ(std::any_cast<std::int64_t>(std::any_cast<Array>(root["integers"]).back()), INT64_MIN);
}

TEST(File, ObjectsSharedByAnotherWriterUnfold) {
    Dictionary root;
    Plist::readPlist((data + "metadata-unsorted.plist").c_str(), root);
    EXPECT_EQ(std::any_cast<double>(root["BeatsPerMinute"]), 92.5);
    auto marker = std::any_cast<Dictionary>(std::any_cast<Array>(root["Markers"]).at(299));
    EXPECT_EQ(std::any_cast<std::int64_t>(marker["Position"]), 38400 * 299);
    const auto name = std::any_cast<std::string>(std::any_cast<Array>(root["Names"]).at(1999));
    EXPECT_EQ(name, "a name that is written once and used often");
}

TEST(File, RefusedAtOnce) {
    const std::string pipe = scratch("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string empty = scratch("empty");
    std::ofstream(empty).close();
    const std::string large = scratch("large");
    std::ofstream(large).close();
    std::filesystem::resize_file(large, (64U << 20U) + 1);

    EXPECT_EQ(fileError(scratch("missing")), "Can't open file.");
    EXPECT_EQ(fileError(empty), "Can't read zero length data");
    EXPECT_EQ(fileError(data + "uid.plist"), "This type is not supported");
    for (const std::string& fileName : {pipe, large, scratch(""), std::string("/dev/zero")})
        EXPECT_NE(fileError(fileName), "read") << fileName;
    EXPECT_NE(fileError(data + "huge-integer.plist"), "read");
}

TEST(File, RootOfAnotherTypeIsABadCast) {
    const std::string fileName = scratch("array.plist");
    Plist::writePlistBinary(fileName.c_str(), Array{true});
    Dictionary root{{"kept", true}};
    EXPECT_THROW(Plist::readPlist(fileName.c_str(), root), std::bad_cast);
    EXPECT_EQ(root.size(), 1U);
}

TEST(File, EveryTargetGetsTheSameBytes) {
    const Value value = Dictionary{{"SUFID", std::string("16777232-99")}, {"project_id", 42}};
    const std::string fileName = scratch("target.plist");
    std::ofstream(fileName) << std::string(9999, 'x');

    std::stringstream stream;
    Plist::writePlistBinary(stream, value);
    EXPECT_EQ(stream.str(), binary(value));
    Plist::writePlistBinary(fileName.c_str(), value);
    EXPECT_EQ(contentsOf(fileName), binary(value));
    Value found;
    Plist::readPlist(stream, found);
    EXPECT_EQ(binary(found), binary(value));

    std::stringstream text;
    Plist::writePlistXML(text, value);
    EXPECT_EQ(text.str(), xml(value));
    Plist::writePlistXML(fileName.c_str(), value);
    EXPECT_EQ(contentsOf(fileName), xml(value));
}

TEST(File, WhatCannotBeOpenedForWritingIsPassedOver) {
    const std::string fileName = scratch("no/such/folder.plist");
    EXPECT_NO_THROW(Plist::writePlistBinary(fileName.c_str(), true));
    EXPECT_NO_THROW(Plist::writePlistXML(fileName.c_str(), true));
    EXPECT_THROW(Plist::writePlistBinary(fileName.c_str(), Value()), Plist::Error);
}

TEST(Stream, EmptyIsRefusedAndChangesNothing) {
    std::istringstream stream;
    Value value = true;
    EXPECT_THROW(Plist::readPlist(stream, value), Plist::Error);
    EXPECT_TRUE(std::any_cast<bool>(value));
}

} // namespace
