#include "ListBytes.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using Plist::Array;
using Plist::Data;
using Plist::Date;
using Plist::Dictionary;
using Plist::Value;

Value dateOf(double appleSeconds) {
    Date date;
    date.setTimeFromAppleEpoch(appleSeconds);
    return date;
}

TEST(Binary, ScalarsAreWrittenAs) {
    const struct {
        Value value;
        std::string object;
    } cases[] = {
        {std::int64_t{0}, {"\x10\x00", 2}},
        {std::int64_t{255}, "\x10\xFF"},
        {std::int64_t{256}, {"\x11\x01\x00", 3}},
        {std::int64_t{65536}, {"\x12\x00\x01\x00\x00", 5}},
        {std::int64_t{4294967295}, "\x12\xFF\xFF\xFF\xFF"},
        {std::int64_t{4294967296}, {"\x13\x00\x00\x00\x01\x00\x00\x00\x00", 9}},
        {std::int64_t{-1}, "\x13" + repeated("\xFF", 8)},
        {-2, "\x13" + repeated("\xFF", 7) + "\xFE"},
        {short{7}, "\x10\x07"},
        {7L, "\x10\x07"},
        {7LL, "\x10\x07"},
        {92.5, {"\x23\x40\x57\x20\x00\x00\x00\x00\x00", 9}},
        {92.5F, {"\x23\x40\x57\x20\x00\x00\x00\x00\x00", 9}},
        {dateOf(2.9), {"\x33\x40\x00\x00\x00\x00\x00\x00\x00", 9}},
        {true, "\x09"},
        {false, "\x08"},
        {Data{'a', '\0'}, {"\x42\x61\x00", 3}},
        {std::string(), "\x50"},
        {std::string(14, 'x'), "\x5E" + std::string(14, 'x')},
        {std::string(15, 'x'), "\x5F\x10\x0F" + std::string(15, 'x')},
        {std::string("Se\u00f1a"), "\x55Se\u00f1a"},
        {std::string(300, 'x'), "\x5F\x11\x01\x2C" + std::string(300, 'x')},
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
    Dictionary keys;
    for (int i = 0; i < 300; ++i)
        keys.emplace("key" + std::to_string(i), true);

    const struct {
        Value value;
        int offsetSize;
        int referenceSize;
        std::uint64_t objectCount;
    } cases[] = {
        {Array(254, true), 2, 1, 255},
        {Array(255, true), 2, 2, 256},
        {keys, 2, 2, 601},
        {Array(65535, true), 3, 3, 65536},
        {Array{Data(70000, 'x'), true}, 3, 1, 3},
    };

    for (const auto& [value, offsetSize, referenceSize, objectCount] : cases) {
        const std::string bytes = binary(value);
        const std::string trailer = bytes.substr(bytes.size() - 32);
        EXPECT_EQ(trailer[6], offsetSize);
        EXPECT_EQ(trailer[7], referenceSize);
        EXPECT_EQ(trailer.substr(8, 8), bigEndian(objectCount, 8));
        EXPECT_TRUE(binary(read(bytes)) == bytes) << objectCount;
    }
}

TEST(Binary, WhatWasWrittenReadsBack) {
    const Dictionary nested{{"k", Array{Dictionary{}, Array{}, Data{}, std::string()}}};
    const Value value = Array{
        std::string("nul\0inside", 10),
        std::string("Gr\u00f6\u00dfe"),
        std::numeric_limits<std::int64_t>::min(),
        -0.25,
        dateOf(-1e9),
        Data(20, '\xFF'),
        nested};
    const std::string bytes = binary(value);
    EXPECT_EQ(binary(read(bytes)), bytes);
    EXPECT_EQ(std::any_cast<std::string>(std::any_cast<Array>(read(bytes))[0]).size(), 10U);
}

TEST(Binary, ObjectsOfOtherWritersRead) {
    const struct {
        const char* name;
        ListBytes list;
        Value value;
    } cases[] = {
        {"float", {.objects = {{"\x22\x42\xB9\x00\x00", 5}}}, 92.5},
        {"four bytes stay positive", {.objects = {"\x12\xFF\xFF\xFF\xFF"}}, std::int64_t{4294967295}},
        {"UTF-16", {.objects = {{"\x63\x00\x61\x00\xE9\x20\xAC", 7}}}, std::string("a\u00e9\u20ac")},
        {"surrogates", {.objects = {"\x62\xD8\x3C\xDF\xB9"}}, std::string("\U0001F3B9")},
        {"another top object", {.objects = {"\x09", "\x08"}, .topObject = 1}, true},
        {"upper half of the count", {.objects = {"\x09"}, .objectCount = 0xFFFFFFFF00000001}, true},
        {"a key twice",
         {.objects = {"\xD2\x01\x01\x02\x03", "\x51k", "\x08", "\x09"}},
         Dictionary{{"k", true}}},
        {"wide sizes",
         {.objects = {"\xA1" + bigEndian(1, 8), "\x09"}, .offsetSize = 8, .referenceSize = 8},
         Array{true}},
        {"shared strings",
         {.objects =
              {"\xAF\x11" + bigEndian(0x1000, 2) + repeated("\x01", 0x1000),
               "\x5F\x10\x1E" + std::string(30, 'x')},
          .offsetSize = 2},
         Array(0x1000, std::string(30, 'x'))},
    };

    for (const auto& [name, list, value] : cases) {
        SCOPED_TRACE(name);
        std::string bytes = list.bytes();
        ASSERT_EQ(errorOf(bytes), "read");
        EXPECT_EQ(binary(read(bytes)), binary(value));
        EXPECT_EQ(read(bytes).type(), value.type());
    }
}

TEST(Binary, UnsupportedTypesAreNotWritten) {
    for (const Value& value : {Value(), Value("literal"), Value(1U)}) {
        const std::string message = std::string("Plist Error: Can't serialize type ") + value.type().name();
        for (const auto& write : {binary, xml}) {
            try {
                write(Dictionary{{"k", Array{value}}});
                ADD_FAILURE() << message;
            } catch (const Plist::Error& error) {
                EXPECT_EQ(error.what(), message);
            }
        }
    }
}

} // namespace
