#include "ListBytes.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace Plist;

Value dateOf(double appleSeconds) {
    Date date;
    date.setTimeFromAppleEpoch(appleSeconds);
    return date;
}

TEST(Binary, ScalarsAreWrittenAs) {
    const std::pair<Value, std::string> cases[] = {
        {std::int64_t{255}, "\x10\xFF"},
        {std::int64_t{256}, {"\x11\x01\x00", 3}},
        {std::int64_t{4294967295}, "\x12\xFF\xFF\xFF\xFF"},
        {std::int64_t{4294967296}, {"\x13\x00\x00\x00\x01\x00\x00\x00\x00", 9}},
        {-2, "\x13" + std::string(7, '\xFF') + "\xFE"},
        {short{7}, "\x10\x07"},
        {92.5, {"\x23\x40\x57\x20\x00\x00\x00\x00\x00", 9}},
        {dateOf(2.9), {"\x33\x40\x00\x00\x00\x00\x00\x00\x00", 9}},
        {true, "\x09"},
        {Data{'a', '\0'}, {"\x42\x61\x00", 3}},
        {std::string(), "\x50"},
        {std::string(14, 'x'), "\x5E" + std::string(14, 'x')},
        {std::string(15, 'x'), "\x5F\x10\x0F" + std::string(15, 'x')},
        {std::string("Se\u00f1a"), "\x55Se\u00f1a"},
    };

    for (const auto& [value, object] : cases)
        EXPECT_EQ(binary(value), (ListBytes{.objects = {object}}).bytes()) << value.type().name();
}

TEST(Binary, ContainersAreWrittenDepthFirstFromTheRoot) {
    const Value value = Dictionary{{"a", Array{true, true}}, {"b", std::string("a")}};
    const std::vector<std::string> objects = {
        {"\xD2\x01\x05\x02\x06", 5}, "\x51\x61", {"\xA2\x03\x04", 3}, "\x09", "\x09", "\x51\x62", "\x51\x61"};
    EXPECT_EQ(binary(value), (ListBytes{.objects = objects}).bytes());
}

TEST(Binary, SizesOfOffsetsAndReferencesAreTrimmed) {
    const std::tuple<Array, std::string, std::uint64_t> cases[] = {
        {Array(254, true), "\x02\x01", 255},
        {Array(255, true), "\x02\x02", 256},
        {Array(65535, true), "\x03\x03", 65536},
        {Array{Data(70000, 'x'), true}, "\x03\x01", 3},
    };

    for (const auto& [value, sizes, objectCount] : cases) {
        const std::string bytes = binary(value);
        EXPECT_EQ(bytes.substr(bytes.size() - 26, 10), sizes + bigEndian(objectCount, 8));
        EXPECT_TRUE(binary(read(bytes)) == bytes) << objectCount;
    }
}

TEST(Binary, ObjectsOfOtherWritersRead) {
    const struct {
        const char* name;
        ListBytes list;
        Value value;
    } cases[] = {
        {"float", {.objects = {{"\x22\x42\xB9\x00\x00", 5}}}, 92.5},
        {"four bytes stay positive", {.objects = {"\x12\xFF\xFF\xFF\xFF"}}, std::int64_t{4294967295}},
        {"another top object", {.objects = {"\x09", "\x08"}, .topObject = 1}, true},
        {"upper half of the count", {.objects = {"\x09"}, .objectCount = 0xFFFFFFFF00000001}, true},
        {"a key twice",
         {.objects = {"\xD2\x01\x01\x02\x03", "\x51k", "\x08", "\x09"}},
         Dictionary{{"k", true}}},
        {"wide sizes",
         {.objects = {"\xA1" + bigEndian(1, 8), "\x09"}, .offsetSize = 8, .referenceSize = 8},
         Array{true}},
    };

    for (const auto& [name, list, value] : cases) {
        SCOPED_TRACE(name);
        const Value found = read(list.bytes());
        EXPECT_EQ(binary(found), binary(value));
        EXPECT_EQ(found.type(), value.type());
    }
}

TEST(BothForms, ReadBackWhatWasWritten) {
    const Value value = Array{
        std::string(),
        std::string(" \n\t "),
        std::string(" lead and trail "),
        std::string("<![CDATA[]]>&amp;\x01"),
        std::string("\r"),
        std::string("\r\n one \r two\r\r\n "),
        std::string("Gr\u00f6\u00dfe"),
        Data{},
        Data(100, '\xFE'),
        Dictionary{{"", Array{Dictionary{}, Data{}}}, {" ", Dictionary{}}, {"a\rb", true}},
        dateOf(-9e8),
        std::numeric_limits<std::int64_t>::min(),
        -1e-7};
    const std::string bytes = binary(value);
    EXPECT_EQ(binary(read(bytes)), bytes);
    EXPECT_EQ(binary(read(xml(value))), bytes);

    const std::string nul("nul\0inside", 10);
    EXPECT_EQ(std::any_cast<std::string>(read(binary(nul))), nul);
    EXPECT_THROW(xml(nul), Plist::Error);
    EXPECT_THROW(binary(Array{Value()}), Plist::Error);
    EXPECT_THROW(xml(Array{Value("literal")}), Plist::Error);
}

} // namespace
