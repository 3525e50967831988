#include "ListBytes.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <sstream>

namespace {

using namespace Plist;

const std::string data = TEST_DATA_DIR "/plist/";

std::string scratch(const std::string& name) {
    return std::filesystem::temp_directory_path() / name;
}

Dictionary readFile(const std::string& fileName) {
    Dictionary root;
    readPlist(fileName.c_str(), root);
    return root;
}

TEST(File, BothFormsOfAnotherWriterReadTheSame) {
    Dictionary root = readFile(data + "types-binary.plist");
    EXPECT_EQ(binary(root), binary(readFile(data + "types-xml.plist")));

    const auto date = std::any_cast<Date>(root["date before the epoch of the binary form"]);
    EXPECT_EQ(date, Date(6, 5, 1987, 4, 3, 2, true));
    EXPECT_EQ(std::any_cast<std::string>(root["outside the basic plane"]), "\U0001F3B9 \u20ac");
    EXPECT_EQ(std::any_cast<std::string>(root["\u00fcml\u00e4ut"]), "Gr\u00f6\u00dfe");
    EXPECT_EQ(std::any_cast<Data>(root["bytes"]).at(255), '\xFF');
    EXPECT_EQ(std::any_cast<std::int64_t>(std::any_cast<Array>(root["integers"]).back()), INT64_MIN);
}

TEST(File, ObjectsSharedByAnotherWriterUnfold) {
    Dictionary root = readFile(data + "metadata-unsorted.plist");
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
    std::filesystem::resize_file(large, (4U << 20U) + 1);
    const std::string array = scratch("array");
    writePlistBinary(array.c_str(), Array{true});

    EXPECT_EQ(errorOf([&] { readFile(scratch("missing")); }), "Can't open file.");
    EXPECT_EQ(errorOf([&] { readFile(empty); }), "Can't read zero length data");
    EXPECT_EQ(errorOf([&] { readFile(large); }), "Plist: file is too large");
    EXPECT_EQ(errorOf([&] { readFile(data + "uid.plist"); }), "This type is not supported");
    for (const std::string& name : {pipe, scratch(""), std::string("/dev/zero"), data + "huge-integer.plist"})
        EXPECT_THROW(readFile(name), Error) << name;

    Dictionary root{{"kept", true}};
    EXPECT_THROW(readPlist(array.c_str(), root), std::bad_cast);
    EXPECT_EQ(root.size(), 1U);
    std::istringstream stream;
    Value value = true;
    EXPECT_THROW(readPlist(stream, value), Error);
    EXPECT_TRUE(std::any_cast<bool>(value));
}

} // namespace
